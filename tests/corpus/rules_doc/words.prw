#command PRINT ON <paper: PLAIN, LETTER HEAD, LABEL> => SetPaper(<"paper">)
PRINT ON letter head
PRINT ON plai
PRINT ON silk
