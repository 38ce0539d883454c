#command MIX <x> [WITH <y> [, <z>]] => Mix2(<x>[, <y>[, <z>]])
#command STIR <x> [WITH <y> [, <z>]] => Stir2(<x>, [<y>[, <z>]])
MIX 1 WITH 2, 3
STIR 1 WITH 2, 3
