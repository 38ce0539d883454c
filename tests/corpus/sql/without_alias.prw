x := 1
BeginSql
	SELECT 1
EndSql
