x C:\
y C:\d\
x \;
y C:\d\;
\
x C:\d\" + \d\/* + \\//
z
x C:\d\\;
y (\d\)
#define P C:\
x P y
#undef P
