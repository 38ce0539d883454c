/* mail.prw: mail to those who have to know. */
#include "app.ch"
#include "errors.ch"
#include "log.ch"

#define MAIL_HOST     "mail.example.com"
#define MAIL_PORT     25
#define MAIL_FROM     "stock@example.com"
#define MAIL_TIMEOUT  30
#define IS_CODE(cReply, nCode)  (Val(Left(cReply, 3)) == nCode)

Static aQueue := {}

Function Notify(cTo, cSubject, cText)
   aAdd(aQueue, {cTo, cSubject, cText, 0})
Return Len(aQueue)

Function SendQueue()
   Local n, lSent
   For n := Len(aQueue) To 1 Step -1
      lSent := SendMail(aQueue[n][1], aQueue[n][2], aQueue[n][3])
      aQueue[n][4]++
      If lSent .Or. aQueue[n][4] > 3
         LOG "mail" WITH aQueue[n][1], lSent
         aDel(aQueue, n)
         aSize(aQueue, Len(aQueue) - 1)
      EndIf
   Next
Return Empty(aQueue)

Static Function SendMail(cTo, cSubject, cText)
   Local oSocket := TSocket():New(MAIL_HOST, MAIL_PORT, MAIL_TIMEOUT)
   Local aSteps := { ;
      {"HELO stock", 250}, ;
      {"MAIL FROM:<" + MAIL_FROM + ">", 250}, ;
      {"RCPT TO:<" + cTo + ">", 250}, ;
      {"DATA", 354}, ;
      {Message(cTo, cSubject, cText) + CRLF + ".", 250}, ;
      {"QUIT", 221} ;
   }
   Local n, cReply

   If !oSocket:Connect()
      Return .F.
   EndIf
   cReply := oSocket:Receive()
   For n := 1 To Len(aSteps)
      oSocket:Send(aSteps[n][1] + CRLF)
      cReply := oSocket:Receive()
      If !IS_CODE(cReply, aSteps[n][2])
         oSocket:Close()
         Return .F.
      EndIf
   Next
   oSocket:Close()
Return .T.

Static Function Message(cTo, cSubject, cText)
   Local cMessage
   BEGINCONTENT VAR cMessage
      From: %Exp:MAIL_FROM%
      To: %Exp:cTo%
      Subject: %Exp:cSubject%

      %Exp:cText%
   ENDCONTENT
Return StrTran(cMessage, Chr(10), CRLF)
