x := 1

  #else
