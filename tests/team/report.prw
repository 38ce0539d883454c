/* report.prw: the monthly report. */
#include "app.ch"
#include "tables.ch"
#include "errors.ch"

#define PAGE_LINES   60
#define PAGE_WIDTH   80
#define RULER        Replicate("-", PAGE_WIDTH)
#define HEAD(cText)  PadC(cText, PAGE_WIDTH)

Static nLine, nPage, cOut

User Function Report(cFile, nMonth, nYear)
	Local nTotal := 0
	Local cItem := "", nSum := 0

	If !IN_RANGE(nMonth, 1, 12)
		Return Complain(ErrorText(ERR_BAD_DATE))
	EndIf
	nLine := nPage := 0
	cOut := ""
	BeginSql alias REP
		COLUMN MOV_DATE AS DATE
		%noparser%
		SELECT MOV_ITEM, MOV_DATE, MOV_QTY, ITEM_PRICE
		FROM %table:MOV% MOV, %table:ITM% ITM
		WHERE MOV_ITEM = ITEM_CODE
		  AND MOV_FILIAL = %xfilial:MOV%
		  AND MOV_MONTH = %exp:nMonth% AND MOV_YEAR = %exp:nYear%
		  AND MOV_STATE <> 'R'
		  AND MOV.%notdel% AND ITM.%notdel%
		ORDER BY %order:MOV,2%
	EndSql
	While !REP->(Eof())
		If REP->MOV_ITEM != cItem
			If !Empty(cItem)
				Put(Space(40) + Transform(nSum, "@E 999,999,999.99"))
			EndIf
			cItem := REP->MOV_ITEM
			nSum := 0
			Put(cItem)
		EndIf
		nSum += REP->MOV_QTY * REP->ITEM_PRICE
		nTotal += REP->MOV_QTY * REP->ITEM_PRICE
		Put("   " + DToC(REP->MOV_DATE) + Str(REP->MOV_QTY, 12, 3))
		REP->(dbSkip())
	End
	REP->(dbCloseArea())
	Put(RULER)
	Put("Total" + Space(35) + Transform(nTotal, "@E 999,999,999.99"))
Return MemoWrit(cFile, cOut)

Static Function Put(cText)
	If nLine == 0 .Or. nLine >= PAGE_LINES
		nPage++
		cOut += If(nPage > 1, Chr(12), "")
		cOut += HEAD(APP_NAME + " - page " + LTrim(Str(nPage))) + CRLF + RULER + CRLF
		nLine := 2
	EndIf
	cOut += cText + CRLF
	nLine++
Return Nil
