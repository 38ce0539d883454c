Function Block()
  Local a/* one */:=/**/1
  Local b := a /* two */ + /* three */2
/* four */ a := b
  a := b /* spans
  two lines */ + 1
/* spans
*/b := a
/* // */ a := 2 /* * / **/
Return/**/b
