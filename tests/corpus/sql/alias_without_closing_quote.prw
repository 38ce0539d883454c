x := 1
BeginSql alias 'X
select 1
EndSql
