// nightly.prw: what runs every night, from the scheduler. Nobody looks at it, so it tells all.
#include "app.ch"
#include "log.ch"

#define KEEP_ORDERS   90
#define OUT_DIR       "out/"

User Function Nightly()
   Local aSteps := { ;
      {"stock page",   {|| U_ExportPage(OUT_DIR + "stock.html")}}, ;
      {"stock list",   {|| U_ExportList(OUT_DIR + "stock.csv")}}, ;
      {"report",       {|| MonthReport()}}, ;
      {"old orders",   {|| RemoveOrders(KEEP_ORDERS)}}, ;
      {"period",       {|| ConOut(PeriodText())}} ;
   }
   Local n, nBad := 0
   Local nStart

   ForgetStock()
   For n := 1 To Len(aSteps)
      nStart := Seconds()
      If !Guarded(aSteps[n][2])
         nBad++
      EndIf
      ConOut(aSteps[n][1] + ": " + LTrim(Str(Seconds() - nStart, 10, 1)) + " s")
      LOG "nightly" WITH aSteps[n][1], nBad
   Next
   CloseAll()
   If TableCount() > 0
      ConOut("tables left open: " + LTrim(Str(TableCount())))
   EndIf
Return nBad == 0

Static Function MonthReport()
   Local nMonth := Month(Date()) - 1
   Local nYear := Year(Date())
   // Only on the first day of a month.
   If Day(Date()) != 1
      Return .T.
   EndIf
   If nMonth == 0
      nMonth := 12
      nYear--
   EndIf
Return U_Report(OUT_DIR + StrZero(nYear, 4) + StrZero(nMonth, 2) + ".txt", nMonth, nYear)
