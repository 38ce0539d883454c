#command SEND <x> [TO <to>] [VIA <via>] [<now: NOW>] => DoSend(<x>, <to>, <via>,<.now.>)
SEND a
SEND a VIA b TO c
SEND a + b NOW VIA f(TO, 1) TO {NOW}
// Given twice, the first counts outside a clause.
SEND a TO b NOW TO c NOW
// The marker behind the first word of a group may take nothing, unless the statement ends there.
SEND a TO VIA b
SEND a TO
SEND a BY b
#command LINKS <a> [, <b>] => DoLinks(<a>[, <b>])
LINKS 1
LINKS 1,2 , {3, 4}
#command FRAME [WIDTH <w>] [HEIGHT <h>] AT <x> => DoFrame(<x>, <w>, <h>)
FRAME AT 1
FRAME HEIGHT 5 WIDTH 4 + 2 AT a + 1
FRAME AT
FRAME WIDTH 5
// A group that is only a marker takes any words one by one.
#command TELL [<what>] => Told(<what>)
TELL one two
