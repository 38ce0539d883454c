/* report.prw: the list of open orders, page by page. */
#include "trace.ch"
#include "messages.ch"
#include "orders.ch"

#define PAGE_WIDTH   72
#define PAGE_LINES   60
#define RULER        Replicate("-", PAGE_WIDTH)

#ifdef SHORT_PAGES
   #undef PAGE_LINES
   #define PAGE_LINES 20
#endif

#ifndef RELEASE
   #error for tests only: RELEASE is not defined
#endif

Function OpenOrders(oPrinter, cFilter)
	Local nLine := 0, nPage := 0
	Local nTotal := 0.00, nCount := 0
	Local cTitle := "Open orders" + If(Empty(cFilter), "", " (" + cFilter + ")")

	ORDERS->(dbGoTop())
	While !ORDERS->(Eof())
		If ORDERS->STATE == ORDER_OPEN .And. (Empty(cFilter) .Or. &(cFilter))
			If nLine == 0 .Or. nLine >= PAGE_LINES - 2
				nPage++
				nLine := PrintHead(oPrinter, cTitle, nPage)
			EndIf
			oPrinter:Say(nLine, 0, OrderText())
			nLine  += 1
			nTotal += ORDERS->TOTAL
			nCount += 1
		EndIf
		ORDERS->(dbSkip())
	EndDo

	If nCount > 0
		oPrinter:Say(nLine + 1, 0, RULER)
		oPrinter:Say(nLine + 2, 0, PadL(HOME_CURRENCY + " " + Transform(nTotal, "@E 999,999.99"), PAGE_WIDTH))
	Else
		oPrinter:Say(1, 0, "That's all: no 'open' orders")
	EndIf
	oPrinter:Close()
Return nCount

* The rule below a heading is a double one.
#undef RULER
#define RULER        Replicate("=", PAGE_WIDTH)

Static Function PrintHead(oPrinter, cTitle, nPage)
	If nPage > 1
		oPrinter:NewPage()
	EndIf
	oPrinter:Say(0, 0, COMPANY_NAME + ", " + COMPANY_CITY)
	oPrinter:Say(1, 0, PadR(cTitle, PAGE_WIDTH - 10) + "Page " + Str(nPage, 4))
	oPrinter:Say(2, 0, RULER)
	oPrinter:Font():SetBold(NO)
Return 3

* One order as a line. "Preço" is the price.
Static Function OrderText()
	Local cState := StateName(ORDERS->STATE)
	Local cText  := ""

	CUSTOMER->(dbSeek(ORDERS->CUSTOMER))
	cText += Str(ORDERS->NUMBER, 6) + " "
	cText += PadR(CUSTOMER->NAME, 30) ; cText += PadR(cState, 10)
	cText += "Preço: " + HOME_CURRENCY + Str(ORDERS->TOTAL, 12, 2)
#ifdef VERBOSE
	cText += " due " + DToC(ORDERS->DUE)    // MAX_LINES and YES stay words in a comment
#else
	#ifdef DEBUG
	cText += " [" + ORDERS->STATE + "]"
	#else
	cText += If(ORDERS->DUE < Date(), " late", "")
	#endif
#endif
Return cText

Function StateName(cState)
	Do Case
		Case cState == ORDER_OPEN
			Return "open"
		Case cState == ORDER_BLOCKED
			Return "blocked"
		Case cState $ ORDER_SHIPPED + ORDER_CLOSED
			Return If(cState == ORDER_SHIPPED, "shipped", "closed")
	EndCase
Return "unknown"

/* The open orders of a customer, read from the database server in one go. The block is one
   statement: no define reaches into it. */
Function OrdersOf(cCustomer)
	Local aOrders := {}

	BeginSql alias "OPEN"
		COLUMN DUE AS DATE
		COLUMN TOTAL AS NUMERIC(12, 2)
		SELECT NUMBER, DUE, TOTAL
		FROM %TABLE:ORDERS%
		WHERE CUSTOMER = %EXP:cCustomer% AND STATE = 'O' AND %NOTDEL%
		ORDER BY DUE
	EndSql
	Do While !OPEN->(Eof())
		aAdd(aOrders, {OPEN->NUMBER, OPEN->DUE, OPEN->TOTAL})
		OPEN->(dbSkip())
	EndDo
	CLOSE AREA OPEN
Return aOrders
