x := LEVEL
