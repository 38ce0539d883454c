BeginSql alias "Q"
SELECT * FROM %temp-table: cTemp % %NoParser%
WHERE A = %exp:M->cName + "x"% and B = %EXP:Upper( f(1, "y") )%
  AND C = %XFilial: T1 % AND D LIKE 'a%'
ORDER BY %order:T1,2% %Order: T1 , byName %
EndSql
