#include "database.ch"
USE
USE orders
USE (cPath + "orders") ALIAS sales NEW SHARED
USE orders.dat READONLY INDEX byname, bydate.idx VIA "ISAM" NEW
SELECT orders
SELECT (nArea + 1) ORDER 2
SELE &cAlias
SEEK cName + "x"
SEEK Upper(cName) LAST SOFTSEEK
SKIP -1
SKIP nRows * 2 ALIAS orders
SKIP
// Calls and assignments stay what they are.
Seek(cName)
Seek( "a", Skip(2) ) + 1
skip := 3
seek += 1
select->x := 2
LOCK RECORD
LOCK FILE TIMEOUT 5
SET RELATION TO
SET RELATION TO custno INTO customer
SET RELATION TO a + b INTO (cChild), c INTO &cOther ADDITIVE
COPY TO open FIELDS code, qty FOR qty > 0 DELIMITED
COPY TO open.csv csv
APPEND FROM (cFile) REST SDF FIELDS code
SORT TO sorted ON name, qty DESCENDING WHILE open
TOTAL ON code TO sums FIELDS qty,value NEXT 9
UPDATE FROM news ON code REPLACE qty WITH NEWS->QTY, price WITH 2
UPDATE FROM news ON code RANDOM REPLACE qty WITH 0
JOIN WITH customer TO joined FOR a == CUSTOMER->A FIELDS name, CUSTOMER->CITY
COPY STRUCTURE TO empty
CREATE orders FROM fields.dat
LIST
LIST FIELDS name, qty * 2 TO PRINTER OFF FOR qty > 0
LIST TO FILE list.txt ALL
