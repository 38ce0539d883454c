BeginSql alias A
EndSql
