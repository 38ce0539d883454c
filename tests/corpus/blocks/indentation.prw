	 BeginContent	var  c	x  OPTIMIZ
	x
     y
		
 EndContents
