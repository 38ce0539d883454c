a := "one" + ;
"two"
b := "three;"
c := 'four' ; // a note
 + "five"
