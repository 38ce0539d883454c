#command WAKE [( <*call*>] <who> [AT <time>] => WakeUp(<who>, <time>)
WAKE oDog
Wake(oDog)
wake := 7
