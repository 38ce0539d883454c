#command SEND <what> [TO <who>] [COPY <copy>] [<now: NOW>] => Mail(<what>, <who>, <copy>, <.now.>)
SEND cText
SEND cText NOW COPY cBoss TO cClient
