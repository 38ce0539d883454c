#command LEND <what> TO <who> => Lent(<what>, <who>)
LEND aBooks[1] + Title("A", 2) TO f(TO, 1)
LEND nOne, nTwo TO cFriend
LEND my book TO cFriend
