// audit.prw: who has changed what. Written for the auditors, read by nobody else.
#include "app.ch"
#include "tables.ch"

#define AUDIT_INSERT  "I"
#define AUDIT_UPDATE  "U"
#define AUDIT_DELETE  "D"
#define AUDIT_DAYS    3650

#translate AUDITED <alias> FIELD <field> := <value> => ;
   Audit(<"alias">, <"field">, <alias>-><field>, <alias>-><field> := <value>)

Function Audit(cTable, cField, xOld, xNew)
   If xOld == xNew
      Return xNew
   EndIf
   OPEN TABLE "audit" ALIAS AUD SHARED
   AUD->(dbAppend())
   LOCK RECORD OF AUD
   AUD->KIND := If(Empty(xOld), AUDIT_INSERT, If(Empty(xNew), AUDIT_DELETE, AUDIT_UPDATE))
   AUD->TABLE := cTable
   AUD->FIELD := cField
   AUD->BEFORE := ToText(xOld)
   AUD->AFTER := ToText(xNew)
   AUD->DAY := Date()
   AUD->WHO := GetEnv("USER")
   AUD->(dbUnlock())
   CLOSE TABLE AUD
Return xNew

Static Function ToText(xValue)
   Local cType := ValType(xValue)
   If cType == "N"
      Return LTrim(Str(xValue))
   ElseIf cType == "D"
      Return DToS(xValue)
   ElseIf cType == "L"
      Return If(xValue, "yes", "no")
   EndIf
Return AllTrim(xValue)

Function ChangeName(cCode, cName)
   OPEN TABLE "items" ALIAS ITEMS SHARED
   SEEK cCode IN ITEMS INDEX 1
   If FOUND IN ITEMS
      LOCK RECORD OF ITEMS
      AUDITED ITEMS FIELD NAME := cName
      AUDITED ITEMS FIELD CHANGED := Date()
      ITEMS->(dbUnlock())
   EndIf
   CLOSE TABLE ITEMS
Return Nil

Function ForgetAudit()
   Local nGone := 0
   OPEN TABLE "audit" ALIAS AUD
   AUD->(dbGoTop())
   Do While !AUD->(Eof())
      If AUD->DAY < Date() - AUDIT_DAYS
         AUD->(dbDelete())
         nGone++
      EndIf
      AUD->(dbSkip())
   EndDo
   AUD->(dbPack())
   CLOSE TABLE AUD
Return nGone
