// stock.prw: what is in the warehouse, and for whom it is kept.
#include "company.ch"
#include "orders.ch"
#include "trace.ch"

#define STOCK_ALIAS "STOCK"
#define LOW_STOCK   10

#ifdef OLD_WAREHOUSE
   #error the files of the old warehouse are gone
   #include "a header that nobody has any more.ch"
   Plain words may stand here: they're never read.
   #ifdef DEBUG
      nor are these, "whatever they hold
   #else
      /* a comment ends here: */ and nothing here is read either
   #endif
#else
   #stdout stock of the new warehouse
   #define WAREHOUSE 2
#endif

Static aReserved := {}

/*  What is free of an article: stock less what is reserved.
    The alias is kept in a name, so the fields are reached through it.  */
Function FreeStock(cCode)
	Local cAlias := STOCK_ALIAS
	Local nFree := 0

	If (cAlias)->(dbSeek(Str(WAREHOUSE, 2) + PadR(cCode, CODE_SIZE)))
		nFree := (cAlias)->ON_HAND - ReservedOf(cCode)
		nFree := Max(nFree, 0)
	EndIf
	If nFree < LOW_STOCK
		M->cLastLow := cCode
		Notify("low stock of ", cCode, ' "LOW_STOCK" is ', LOW_STOCK)
	EndIf
Return nFree

Function Reserve(cCode, nQty, nOrder, lUrgent)
	Local nAt := aScan(aReserved, {|aPair| aPair[1] == cCode})

	DEFAULT lUrgent TO .N.
	If nAt == 0
		aAdd(aReserved, {cCode, 0})
		nAt := Len(aReserved)
	EndIf
	aReserved[nAt][2] += nQty
	TRACING Reserve WITH cCode, aReserved[nAt][2], nOrder
Return YES

Static Function ReservedOf(cCode)
	Local nAt, nSum := 0

	For nAt := Len(aReserved) To 1 Step -1
		If aReserved[nAt][1] != cCode
			Loop
		EndIf
		nSum += aReserved[nAt][2]
		Exit
	Next
Return nSum

* Ships what has been reserved and
* empties the list; the count of articles
* goes into nCount, which comes by reference.
Function ShipAll(nCount)
	Local bShip := {|aPair| STOCK->(ShipOne(aPair[1], aPair[2]))}
	Local lDone := YES, nAt := 1

	Do While lDone .And. nAt <= Len(aReserved)
		lDone := Eval(bShip, aReserved[nAt])
		nAt += 1
	EndDo
	nCount := nAt - 1
#ifdef TRACE_LEVEL
	If TRACE_LEVEL >= 1
		LogLine(TRACE_TO, "shipped " + AllTrim(Str(nCount)))
	EndIf
#endif
	aReserved := {}
Return lDone

Function ShipOne(cCode, nQty)
	If !dbSeek(cCode)
		Return NO
	EndIf
	STOCK->ON_HAND -= nQty
	STOCK->MOVED   := Date()
Return .Not. (STOCK->ON_HAND < 0)
