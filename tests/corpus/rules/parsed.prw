#command ADD <item> [TO <list>] => AAdd( <list>, <item> )
#xcommand STORE <v> TO <x1> [, <xn>] => <x1> := <v> [; <xn> := <v>]
#translate PAIR( <a>, <b> ) => { <a>, #<b> }
#xtranslate NOTHING <x> =>
#Command SORT [<order: ASCENDING, DESCENDING>] BY <keys,...> [<*rest*>] => ;
   Sort( <"order">, ;
      {<{keys}>}, <.order.>, <(rest)> )
  #command OPEN <(file)> => Open( <(file)> ) // a note
#command LESS <a> \< <b> => <a> \< <b>
#define SQUARE(x) ((x)*(x))
#define PAIR_OF( a , b ) { a, b }
x := 1
