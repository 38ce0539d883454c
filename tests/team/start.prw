/* start.prw: where the application begins. */
#include "app.ch"
#include "forms.ch"
#include "errors.ch"

Static oMain
Static nRights := 0

/*
 * The entry point. A first argument "import" runs the import without any form.
 */
User Function Start(cMode, cFile)
   Local lDone := .F.

   If !Login()
      Complain(ErrorText(ERR_NO_RIGHT))
      Return .F.
   EndIf

   Do Case
      Case cMode == Nil .Or. Empty(cMode)
         MainForm()
         lDone := .T.
      Case Lower(cMode) == "import"
         lDone := U_Import(cFile)
      Otherwise
         ConOut(APP_NAME + " " + APP_VERSION + ": unknown mode " + cMode)
   EndCase
Return lDone

Static Function Login()
   Local cUser := GetEnv("USER")
   Local aUser := UserRecord(cUser)

   If aUser == Nil
      Return .F.
   EndIf
   nRights := aUser[2]
Return MAY(nRights, RIGHT_READ)

Function HasRight(nRight)
Return MAY(nRights, nRight)

Static Function MainForm()
   Local oButton
   Local nRow := 10

   FORM oMain TITLE APP_NAME + " " + APP_VERSION SIZE FORM_WIDTH, FORM_HEIGHT
   LABEL "Depot " + DefaultDepot AT nRow, 10 OF oMain
   nRow += BTN_HEIGHT * 2

   BUTTON oButton TEXT "Items" AT nRow, 10 OF oMain ACTION U_Items()
   nRow += BTN_HEIGHT + 8
   BUTTON oButton TEXT "Movements" AT nRow, 10 OF oMain ACTION U_Movements()
   nRow += BTN_HEIGHT + 8
   BUTTON oButton TEXT "Counting" AT nRow, 10 OF oMain ACTION U_Counting()
   nRow += BTN_HEIGHT + 8
   If MAY(nRights, RIGHT_ADMIN)
      BUTTON oButton TEXT "Users" AT nRow, 10 OF oMain ACTION U_Users()
   EndIf
   SHOW oMain CENTERED
Return Nil

// The only place that shows a complaint; others call it through COMPLAIN.
Function Complain(cText)
   If oMain == Nil
      ConOut("! " + cText)
   Else
      oMain:Alert(cText, CLR_WARNING)
   EndIf
Return .F.
