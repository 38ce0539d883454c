// service.prw: what other programs ask over the network. JSON in, JSON out.
#include "app.ch"
#include "errors.ch"
#include "log.ch"

#define HTTP_OK          200
#define HTTP_BAD         400
#define HTTP_FORBIDDEN   403

User Function Answer(cPath, cBody)
   Local oRequest := JsonParse(cBody)
   Local aParts := Split(cPath, "/")
   Local nCode := HTTP_OK
   Local cAnswer

   LOG "request" WITH cPath
   Do Case
      Case Len(aParts) < 2
         nCode := HTTP_BAD
         cAnswer := Json("error", "no path")
      Case aParts[2] == "stock" .And. Len(aParts) == 3
         cAnswer := Json("stock", StockOf(aParts[3], DefaultDepot))
      Case aParts[2] == "book" .And. oRequest != Nil
         If !HasRight(RIGHT_BOOK)
            nCode := HTTP_FORBIDDEN
            cAnswer := Json("error", ErrorText(ERR_NO_RIGHT))
         Else
            cAnswer := Json("number", NewMovement(oRequest:item, oRequest:depot, ;
               oRequest:quantity, oRequest:text))
         EndIf
      Otherwise
         nCode := HTTP_BAD
         cAnswer := Json("error", ErrorText(ERR_NOT_FOUND))
   EndCase
Return {nCode, cAnswer}

Static Function Json(cKey, xValue)
   Local cValue
   Do Case
      Case ValType(xValue) == "N"
         cValue := LTrim(Str(xValue))
      Case ValType(xValue) == "C"
         cValue := '"' + StrTran(xValue, '"', '\"') + '"'
      Otherwise
         cValue := "null"
   EndCase
Return '{"' + cKey + '":' + cValue + '}'
