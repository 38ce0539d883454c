BeginSql alias A
	SELECT 1
	BeginSql alias B
	EndSql
EndSql
