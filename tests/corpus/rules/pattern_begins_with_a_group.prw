x := 1
#command [VERY] LOUD => Loud()
