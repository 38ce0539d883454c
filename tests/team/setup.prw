/*
 * setup.prw: settings of one machine, kept in a file of lines "name = value".
 */
#include "app.ch"
#include "forms.ch"

#define SETUP_FILE   "stock.ini"
#define SET_NAME     1
#define SET_VALUE    2

Static aSettings

Function Setting(cName, xDefault)
   Local nAt
   If aSettings == Nil
      ReadSettings()
   EndIf
   nAt := aScan(aSettings, {|aOne| Lower(aOne[SET_NAME]) == Lower(cName)})
   If nAt == 0
      Return xDefault
   EndIf
   Do Case
      Case ValType(xDefault) == "N"
         Return Val(aSettings[nAt][SET_VALUE])
      Case ValType(xDefault) == "L"
         Return aSettings[nAt][SET_VALUE] $ "1yYtT"
   EndCase
Return aSettings[nAt][SET_VALUE]

Static Function ReadSettings()
   Local aLines, n, nEqual
   aSettings := {}
   If !File(SETUP_FILE)
      Return Nil
   EndIf
   aLines := ReadLines(SETUP_FILE)
   For n := 1 To Len(aLines)
      nEqual := At("=", aLines[n])
      If nEqual == 0 .Or. Left(LTrim(aLines[n]), 1) == ";"
         Loop
      EndIf
      aAdd(aSettings, {AllTrim(Left(aLines[n], nEqual - 1)), ;
         AllTrim(SubStr(aLines[n], nEqual + 1))})
   Next
Return Nil

Function ChangeSetting(cName, cValue)
   Local nAt
   If aSettings == Nil
      ReadSettings()
   EndIf
   nAt := aScan(aSettings, {|aOne| Lower(aOne[SET_NAME]) == Lower(cName)})
   If nAt == 0
      aAdd(aSettings, {cName, cValue})
   Else
      aSettings[nAt][SET_VALUE] := cValue
   EndIf
Return MemoWrit(SETUP_FILE, AllSettings())

Static Function AllSettings()
   Local cText := "; " + APP_NAME + " " + APP_VERSION + CRLF
   aEval(aSettings, {|aOne| cText += aOne[SET_NAME] + " = " + aOne[SET_VALUE] + CRLF})
Return cText

User Function Setup()
   Local oForm, oOk
   Local cDepot := Setting("depot", DefaultDepot)
   Local nLabels := Setting("labels", 4)
   Local lSound := Setting("sound", .T.)

   FORM oForm TITLE "Settings" SIZE 300, 200 MODAL
   LABEL "Depot" AT 10, 10 OF oForm
   FIELD cDepot AT 10, 100 OF oForm PICTURE "99"
   LABEL "Labels in a row" AT 40, 10 OF oForm
   FIELD nLabels AT 40, 100 OF oForm PICTURE "9" VALID nLabels > 0
   LABEL "Sound" AT 70, 10 OF oForm
   FIELD lSound AT 70, 100 OF oForm
   BUTTON oOk TEXT "Save" AT 150, 10 OF oForm ;
      ACTION (ChangeSetting("depot", cDepot), ChangeSetting("labels", Str(nLabels)), ;
         ChangeSetting("sound", If(lSound, "y", "n")))
   SHOW oForm CENTERED
Return .T.
