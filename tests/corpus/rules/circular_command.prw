#command AGAIN <x> => AGAIN <x> + 1
x := 1
  AGAIN 1
