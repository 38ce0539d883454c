#command CLS1 => Clear()
cls1
cls1 x
  cls1 ; b := 1
a ; cls1
#command CLS2 =>
cls2
#translate CLS3 => Clear()
x := cls3 + y
#translate CLS4 =>
x  cls4 y
#translate A5 B => C
a5 b a5  B c A5
