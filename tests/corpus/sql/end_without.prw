
EndSql
