Open() ; BeginSql alias A
	SELECT 1
EndSql
BeginSql alias B
	SELECT 2 ;
	     , 3 /* three */
	// nothing

	* nothing either
	FROM T

EndSql // done
Close()
	beginsql alias C
	%noparser%
	endsql
