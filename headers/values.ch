// Translations for questions about values, and commands that change them. Their names are taken in
// the whole program: a function that is called as one of them is never reached, and cannot be
// declared below the include.

#ifndef VALUES_CH
#define VALUES_CH

// ---- questions ---------------------------------------------------------------------------------

#xtranslate IsNil(<x>)                  => (<x> == NIL)
#xtranslate IfNil(<x>, <instead>)       => If(<x> == NIL, <instead>, <x>)
#xtranslate Between(<x>, <low>, <high>) => (<x> >= <low> .And. <x> <= <high>)
#xtranslate OneOf(<x>, <values,...>)    => (AScan({<values>}, <x>) > 0)
#xtranslate Even(<n>)                   => ((<n>) % 2 == 0)

// A piece of program as a text, or to be evaluated later.
#xtranslate TextOf(<x>)    => (#<x>)
#xtranslate NamesOf(<x,...>) => {<"x">}
#xtranslate BlockOf(<x>)   => (<{x}>)

// ---- changes -----------------------------------------------------------------------------------

#command ADD <amount> TO <var1> [, <varN>] => <var1> += <amount> [; <varN> += <amount>]
#command SUBTRACT <amount> FROM <var1> [, <varN>] => <var1> -= <amount> [; <varN> -= <amount>]
#command SWAP <a> AND <b> => __Swap(@<a>, @<b>)
#command COLLECT <value1> [, <valueN>] INTO <array> => ;
   AAdd(<array>, <value1>) [; AAdd(<array>, <valueN>)]

#endif
