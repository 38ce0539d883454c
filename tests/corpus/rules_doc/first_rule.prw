#command PAY <amount> TO <who> => Transfer(<who>, <amount>)
PAY 100 TO cClient
If nOpen > 0
   pay nOpen * 1.1 to Owner(cClient)
EndIf
