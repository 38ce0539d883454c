Function Café()
  nTotal := 1 + `2
  c := "café ` "
  d := "x" + "y"
Return nTotal // €
