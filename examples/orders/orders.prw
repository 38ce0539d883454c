/*
   orders.prw: takes the order of a customer, prices it and saves it.
*/
#include "orders.ch"
#include "rules.ch"
#include "trace.ch"

#ifndef COMPANY_CH
   #error company.ch is missing
#endif

Static nTaken := 0

// Takes one order. aWanted holds {code, quantity} pairs; the order's number
// comes back, or 0 when it could not be taken.
Function TakeOrder(cCustomer, aWanted, lExport)
	Local nNumber := 0, nTotal := 0.00
	Local aLines := {}
	Local oFault
	Local bBlock := {|oError| Break(oError)}

	DEFAULT lExport TO NO, aWanted TO {}
	TRACING TakeOrder WITH cCustomer, Len(aWanted)
#ifdef VERBOSE
	aEval(aWanted, {|aPair| Trace("wanted", aPair[1], aPair[2])})
#endif

	If !FindCustomer(cCustomer)
		COMPLAIN MSG_NO_CUSTOMER, cCustomer
		Return 0
	EndIf

	Begin Sequence
		aLines := PriceLines(aWanted)
		nTotal := OrderTotal(aLines, lExport)

		If nTotal > CUSTOMER->CREDIT - CUSTOMER->BALANCE
			Warn(MSG_NO_CREDIT)
			Break Fault("credit", nTotal)
		ElseIf Len(aLines) == 0 .Or. Len(aLines) > MAX_LINES
			Warn(MSG_WORDS[2])
			Break Fault("lines", Len(aLines))
		EndIf

		nNumber := SaveOrder(cCustomer, aLines, nTotal)
		nTaken++
	Recover Using oFault
		nNumber := 0
		oFault:Report(bBlock, TRACE_TO)
	End Sequence

	If nNumber > 0
		Inform(MSG_SAVED + AllTrim(Str(nNumber)))
	EndIf
Return nNumber

/* Turns wanted pairs into priced lines; what is not in stock is left out. */
Static Function PriceLines(aWanted)
	Local aLines := {}, aLine, aPair
	Local nAt, nFree

	FOR EACH aPair IN aWanted AT nAt
		nFree := FreeStock(aPair[1])
		If nFree < aPair[2]
			COMPLAIN MSG_NO_STOCK, aPair[1], "free: " + Str(nFree)
			Loop
		EndIf
		aLine := LINE_EMPTY
		aLine[LINE_CODE] := PadR(aPair[1], CODE_SIZE)
		aLine[LINE_QTY] := aPair[2]
		aLine[LINE_PRICE] := CustomerPrice( ;
			aLine[LINE_CODE], ;
			CUSTOMER->CLASS)       && the customer's own price
		aAdd(aLines, aLine)
	Next nAt
Return aLines

* The total with discount and tax.
* Exported goods carry no tax.
Function OrderTotal(aLines, lExport)
	Local nSum := 0.00, nRate

	aEval(aLines, {|aLine| nSum += aLine[LINE_QTY] * aLine[LINE_PRICE]})
	If nSum >= DISCOUNT_FROM
		nSum -= PERCENT(DISCOUNT_RATE, nSum)
	EndIf
	nRate := If(lExport, 0, TAX_RATE)
Return Round(nSum * (1 + nRate), 2)

Function CustomerPrice(cCode, cClass)
	Local nPrice := PRICES->NET

	Do Case
		Case cClass == "A" ; nPrice *= 0.90
		Case cClass == "B" .And. cCode != 'GIFT'
			nPrice *= 0.95
		Case Empty(cClass)
			nPrice := PRICES->(ListPrice(cCode))
		Otherwise
			nPrice := PRICES->NET
	EndCase
Return nPrice

Static Function SaveOrder(cCustomer, aLines, nTotal)
	Local nNumber := NextNumber("ORDERS"), nAt := 0

	APPEND BLANK
	REPLACE NUMBER WITH nNumber, CUSTOMER WITH cCustomer, ;
		STATE WITH If(nTotal > 0, ORDER_OPEN, ORDER_BLOCKED), ;
		CURRENCY WITH HOME_CURRENCY, ;       // the one of today
		DUE WITH Date() + LAST_DAY, TOTAL WITH nTotal

	While ++nAt <= Len(aLines)
		TAKE aLines[nAt][LINE_QTY] OF aLines[nAt][LINE_CODE] FROM STOCK FOR nNumber
		LINES->(dbAppend())
		LINES->NUMBER := nNumber ; LINES->CODE := aLines[nAt][LINE_CODE]
		LINES->QTY    := aLines[nAt][LINE_QTY]
		LINES->AMOUNT := aLines[nAt][LINE_QTY] * ; // no discount here:
			aLines[nAt][LINE_PRICE]                 // it belongs to the total
	EndDo
	COMMIT
Return nNumber
