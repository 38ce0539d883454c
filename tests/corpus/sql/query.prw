#include "tables.ch"
Function Open(cFrom)
	Local nSum := 0

	BeginSql Alias SALES   // what was sold
		COLUMN DAY AS DATE
		COLUMN AMOUNT AS NUMERIC(12,2), PAID As Logical
		SELECT  S.DAY, S.AMOUNT,   S.PAID
		  FROM %Table:SAL% S
		 WHERE S.BRANCH = %xFilial:SAL%
		   AND S.DAY >= %Exp:cFrom%
		   AND S.KIND <> "X" AND S.NOTE = 'MAIN'
		   AND S.%NotDel%
		 ORDER BY %Order:SAL%
	EndSql
	nSum := MAIN
Return nSum
