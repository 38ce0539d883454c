#command CALL <f> WITH <a1> [, <aN>] [ON <o>] => [<o>:]<f>(<a1>[, <aN>])
CALL Go WITH 1
  CALL Go WITH 1, 2, x + 3
  CALL Go WITH 1, 2 ON oWin
// A clause is written once for each repetition; what belongs to no group is repeated with it.
#command ADDTO <var> <x1> [, <xN>] => <var> += <x1> [; <var> += <xN>]
ADDTO n 1, 2, 3
// Without a marker that was given it is never written.
#command PLAIN <x> => DoPlain(<x>[, never][, <y>][, <"x">])
PLAIN a
// Kept on purpose: a clause that hangs on the head of another is written before it.
#command ODD <n> [WITH <a> [, <b>]] => DoOdd(<n>, [<a>[, <b>]])
ODD 1 WITH 2, 3
