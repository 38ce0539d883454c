Class A From B
Data x
Method New()
Method Go(a) Class A
Local b
Return b
