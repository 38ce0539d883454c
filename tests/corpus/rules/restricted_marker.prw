#command MODE <m: FAST, VERY SLOW, ;
      SLOW> <n> => DoMode(<"m">, <n>)
MODE fast 3
MODE Very slow 3
mode SLOW x
MODE VERY FAST 3
MODE FASTER 3
MODE 3
// The words may be abbreviated where the rule's own may.
#command STYLE <s: UNDERLINED, BOLD> => DoStyle(#<s>)
#xcommand XSTYLE <s: UNDERLINED, BOLD> => DoStyle(#<s>)
STYLE unde
STYLE und
XSTYLE bold
XSTYLE unde
#command LOOK <how: UP,&> <what> => DoLook(<"how">, <what>)
LOOK up a
LOOK &a
