Function Spacing( nValue )
    Local   nA:=1,nB   :=  2
	Local	cTab	:= "a	b"
  nA+=nB ;nB++
	
Return(nA*nB)   	
