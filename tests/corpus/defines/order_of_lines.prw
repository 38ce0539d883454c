x := LATER
#define LATER 1
x := LATER
#define LATER 2
x := LATER
#undef LATER
x := LATER
#define LATER
x := LATER "gone"
