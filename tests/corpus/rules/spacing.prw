#translate PLUS(<a>, <b>) => <a> + <b>
x :=PLUS(1,2)
x :=  PLUS( 1, 2 )*3
#translate PAIR(<a>, <b>) => {<a>,<b> }
x :=   PAIR( 1  ,  2 )
#command KEEP <x> => <x> kept
    KEEP   a  +  1
#command DROP <x> =>
  DROP everything
  DROP this ;  y := 1
#translate VOID =>
x := VOID + 1
