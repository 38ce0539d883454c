#translate PING(<x>) => PONG(<x>)
#translate PONG(<x>) => PING(<x>)
x := "PING(1)"
x := PING(1)
