#command FETCH <x> INTO <(y)> => Fetched(<"x">, <(y)>, <{x}>)
FETCH price INTO nPrice
FETCH &cField INTO &cTarget.
