// errors.prw: texts of errors, and what to do when something was thrown.
#include "app.ch"
#include "errors.ch"

Static aTexts := { ;
   {ERR_NOT_FOUND, "The record was not found."}, ;
   {ERR_NO_STOCK,  "There is not enough in stock."}, ;
   {ERR_LOCKED,    "Somebody else is working on the record."}, ;
   {ERR_NO_RIGHT,  "You may not do this."}, ;
   {ERR_BAD_DATE,  "The date is not one of the open period."}, ;
   {ERR_IMPORT,    "The file could not be imported."} ;
}

Function ErrorText(nError)
   Local nAt := aScan(aTexts, {|aText| aText[1] == nError})
   If nAt == 0
      Return "Error " + LTrim(Str(nError))
   EndIf
Return aTexts[nAt][2]

/* Runs a code block; what it throws is told and becomes .F. */
Function Guarded(bAction)
   Local lDone := .F.
   Local oError
   Begin Sequence
      Eval(bAction)
      lDone := .T.
   Recover Using oError
      Complain(oError:Description)
      If oError:GenCode > 100 .And. oError:GenCode < 200
         Complain(ErrorText(oError:GenCode))
      EndIf
   End Sequence
Return lDone

Function Stack()
   Local nLevel := 1
   Local cText := ""
   While !Empty(ProcName(nLevel))
      cText += ProcName(nLevel) + "(" + LTrim(Str(ProcLine(nLevel))) + ")" + CRLF
      nLevel++
   EndDo
Return cText
