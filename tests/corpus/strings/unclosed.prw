a := "never closed // kept  
b := '
c := 1
