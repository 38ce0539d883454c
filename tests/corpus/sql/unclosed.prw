x := 1

BeginSql alias A
	SELECT 1
Return
