Function Open()
If a
While b
EndDo

Function Next()
