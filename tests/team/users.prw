/* users.prw: users and their rights */
#include "app.ch"
#include "forms.ch"
#include "tables.ch"
#include "errors.ch"

#define USER_NAME    1
#define USER_RIGHTS  2

User Function Users()
   Local aUsers, oForm, oGrid, oButton
   If !HasRight(RIGHT_ADMIN)
      Return Complain(ErrorText(ERR_NO_RIGHT))
   EndIf
   aUsers := AllUsers()
   FORM oForm TITLE "Users" SIZE 400, 300 MODAL
   GRID oGrid OF oForm ARRAY aUsers COLUMNS "Name", "Rights"
   BUTTON oButton TEXT "May book" AT 260, 10 OF oForm ;
      ACTION Toggle(aUsers[oGrid:RowNumber()], RIGHT_BOOK)
   BUTTON oButton TEXT "Is admin" AT 260, 110 OF oForm ;
      ACTION Toggle(aUsers[oGrid:RowNumber()], RIGHT_ADMIN)
   SHOW oForm CENTERED
Return .T.

Static Function AllUsers()
   Local aUsers := {}
   OPEN TABLE "users" ALIAS USR SHARED
   USR->(dbGoTop())
   While !USR->(Eof())
      aAdd(aUsers, {USR->NAME, USR->RIGHTS})
      USR->(dbSkip())
   EndDo
   CLOSE TABLE USR
Return aUsers

Static Function Toggle(aUser, nRight)
   If MAY(aUser[USER_RIGHTS], nRight)
      aUser[USER_RIGHTS] -= nRight
   Else
      aUser[USER_RIGHTS] += nRight
   EndIf
   OPEN TABLE "users" ALIAS USR SHARED
   SEEK aUser[USER_NAME] IN USR
   If FOUND IN USR
      LOCK RECORD OF USR
      USR->RIGHTS := aUser[USER_RIGHTS]
      USR->(dbUnlock())
   EndIf
   CLOSE TABLE USR
Return .T.

Function UserRecord(cName)
   Local aUsers := AllUsers()
   Local nAt := aScan(aUsers, {|aUser| Upper(AllTrim(aUser[USER_NAME])) == Upper(cName)})
Return If(nAt == 0, Nil, aUsers[nAt])
