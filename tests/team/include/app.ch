// Constants of the whole application.
#ifndef APP_CH
#define APP_CH

#define APP_NAME      "Stock keeper"
#define APP_VERSION   "2.4"
#define CRLF          Chr(13) + Chr(10)

// States of a movement.
#define MOV_OPEN      "O"
#define MOV_BOOKED    "B"
#define MOV_REVERSED  "R"

// Access rights.
#define RIGHT_READ    1
#define RIGHT_BOOK    2
#define RIGHT_ADMIN   4

#define MAY(nRights, nRight)    (BitAnd(nRights, nRight) != 0)
#define IN_RANGE(n, lo, hi)     ((n) >= (lo) .And. (n) <= (hi))
#define DefaultDepot            "01"

#xcommand TRY TO <action> ELSE <message> => ;
   If ! (<action>) ; Complain(<message>) ; EndIf
#command UNLESS <condition> COMPLAIN <message> => ;
   If ! (<condition>) ; Complain(<message>) ; EndIf

#endif
