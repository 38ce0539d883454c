x := 1
  #include "Missing.ch"
