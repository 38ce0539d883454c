#define FULL
BeginSql alias A
	SELECT a
#ifdef FULL
		, b
#else
		) never => "read
	EndSql
#endif
	FROM t
EndSql
#ifdef NONE
BeginSql alias
#endif
x := 1
