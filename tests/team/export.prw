// export.prw: the stock as a page and as a list for other programs
#include "app.ch"
#include "tables.ch"

User Function ExportPage(cFile)
   Local cPage := ""
   Local cRows := ""
   Local cDepot := DefaultDepot
   Local cWhen := DToC(Date())

   OPEN TABLE "items" ALIAS ITEMS SHARED
   ITEMS->(dbGoTop())
   While !ITEMS->(Eof())
      cRows += "<tr><td>" + ITEMS->CODE + "</td><td>" + Html(ITEMS->NAME) + "</td><td>" + ;
         StockText(ITEMS->CODE) + "</td></tr>" + CRLF
      ITEMS->(dbSkip())
   EndDo
   CLOSE TABLE ITEMS

   BEGINCONTENT VAR cPage OPTIMIZE
      <html>
      <head><title>Stock of depot %Exp:cDepot%</title></head>
      <body>
      <!-- It's made anew every night; don't edit. -->
      <h1>Stock on %Exp:cWhen%</h1>
      <table>
      %Exp:cRows%
      </table>
      </body>
      </html>
   ENDCONTENT

Return MemoWrit(cFile, cPage)

Static Function Html(cText)
   cText := StrTran(cText, "&", "&amp;")
   cText := StrTran(cText, "<", "&lt;")
   cText := StrTran(cText, ">", "&gt;")
Return cText

User Function ExportList(cFile)
   Local cList := ""
   OPEN TABLE "items" ALIAS ITEMS SHARED
   ITEMS->(dbGoTop())
   While !ITEMS->(Eof())
      cList += ITEMS->CODE + ";" + LTrim(Str(StockOf(ITEMS->CODE, DefaultDepot))) + CRLF
      ITEMS->(dbSkip())
   EndDo
   CLOSE TABLE ITEMS
Return MemoWrit(cFile, cList)
