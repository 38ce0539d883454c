#define TILDE 1
#define 1a 2
x := TILDE~ + TILDE + 1a
x := 1 // goes on
* with this line
y := 2
#translate "BRACE{" => brace()
x := "BRACE[" + "brace{"
#translate "TWO WORDS" => two()
x := "TWO W" + "TWO X" + "TWO" + "TWO WORDS"
#command DISPLAY <a>, <b> => first(<a>, <b>)
#xcommand DISPLAY <a> => exact(<a>)
#command DISPLAY <a> AND <b> => last(<a>, <b>)
DISPLAY 1, 2
DISPLAY 1
DISPLAY 1 AND 2
DISP 1, 2
DISP 1 AND 2
