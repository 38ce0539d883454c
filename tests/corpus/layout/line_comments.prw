// opening
Function Comments()   // after a statement
  && a whole line
  Local n := 8 / 2  && trailing
* a star line
	 * an indented star line
  n := n * 2
  // one
  * goes on
  n := 10 // 2
Return n//close
