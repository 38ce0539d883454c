// A rule that fits only when a name behind it has become its last word: what it makes is rewritten.
#define DONE end
#define call f
#xtranslate take <x> end => call(<x>)
y := take a + DONE
y := take b DONE + call
y := take take c DONE DONE
