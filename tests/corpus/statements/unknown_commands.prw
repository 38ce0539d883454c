Function A()
End Transaction
Begin Report x
Do Something With x
Set Function 2 To y
Set Procedure To p
Store 1 To a
? x
Use \data\x.dbf
End Class x
Data n As Numeric
