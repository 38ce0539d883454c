#translate A <x => B
