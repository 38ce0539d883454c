#translate A => B
#translate <x> PERCENT => (<x> / 100)
