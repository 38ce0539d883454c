// log.prw: the log file; only in builds with -D LOGGING
#include "app.ch"

#ifdef LOGGING

#define LOG_FILE   "stock.log"
#define LOG_LIMIT  (1024 * 1024)

Static nHandle := -1

Function WriteLog(cWhere, cText, aValues)
   Local cLine := DToC(Date()) + " " + Time() + " " + cWhere + ": " + cText
   Local n
   For n := 1 To Len(aValues)
      cLine += If(n == 1, " ", ", ") + Shown(aValues[n])
   Next
   If nHandle < 0
      nHandle := FOpen(LOG_FILE, 1)
      FSeek(nHandle, 0, 2)
   EndIf
   If FSeek(nHandle, 0, 1) > LOG_LIMIT
      FClose(nHandle)
      FRename(LOG_FILE, LOG_FILE + ".old")
      nHandle := FCreate(LOG_FILE)
   EndIf
   FWrite(nHandle, cLine + CRLF)
Return Nil

Static Function Shown(xValue)
   Do Case
   Case ValType(xValue) == "C" ; Return '"' + xValue + '"'
   Case ValType(xValue) == "N" ; Return LTrim(Str(xValue))
   Case ValType(xValue) == "D" ; Return DToC(xValue)
   Case ValType(xValue) == "L" ; Return If(xValue, ".T.", ".F.")
   EndCase
Return "(" + ValType(xValue) + ")"

#else

Function WriteLog()
Return Nil

#endif
