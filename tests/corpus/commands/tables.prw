INDEX ON name TO custname
INDEX ON Upper(name) + Str(n, 6) TO names.idx FOR !Deleted() DESCENDING UNIQUE
INDEX ON a + "x" TO (cFile) TAG byname
SET INDEX TO
SET INDEX TO byname
SET INDEX TO a, b.idx, (cThird), &cFourth, "e f"
SET ORDER TO
SET ORDER TO nOrder + 1
SET ORDER TO TAG byname
SET FILTER TO
SET FILTER TO qty > 5 .And. name = "M"
REINDEX
PACK
ZAP
COMMIT
UNLOCK
UNLOCK ALL
CLOSE
clos data
CLOSE AREA orders
CLOSE AREA &cAlias
