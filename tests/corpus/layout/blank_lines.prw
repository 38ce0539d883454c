
   
	
Function Blank()

  
Return 1

  

