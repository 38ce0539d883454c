/* entry.prw: the form in which orders are typed in, and what is done at the end of a day. */
#include "orders.ch"
#include "rules.ch"
#include "trace.ch"

#define BACKUP (cFolder + "orders.old")

Function EnterOrder()
	Local cCustomer, cCode, cKey
	Local nQty, nNumber, aWanted := {}

	STORE Space(CODE_SIZE) TO cCustomer, cCode
	STORE 0 TO nQty, nNumber
	SET CONFIRM ON
	SET DATE FORMAT TO "dd/mm/yyyy"
	SET COLOR TO W+/B, N/W

	CLS
	@ 0, 0 TO 20, 79 DOUBLE COLOR "W/B"
	@ 1, 2 SAY COMPANY_NAME
	@ 3, 2 SAY "Customer" GET cCustomer PICTURE "@!" VALID FindCustomer(cCustomer)
	READ
	Do While .Y.
		@ 5, 2 CLEAR TO 6, 78
		@ 5, 2 SAY "Article " GET cCode PICTURE "@!" VALID !Empty(cCode)
		@ 6, 2 SAY "Quantity" GET nQty PICTURE "9999" WHEN FreeStock(cCode) > 0 RANGE 1, 9999
		READ SAVE
		If nQty == 0
			COMPLAIN MSG_NO_STOCK, cCode
		Else
			aAdd(aWanted, {cCode, nQty})
		EndIf
		WAIT "Another article? " TO cKey
		If Upper(cKey) != "Y"
			Exit
		EndIf
	EndDo

	nNumber := TakeOrder(cCustomer, aWanted, NO)
	? COMPANY_NAME, "order", nNumber
	?? If(nNumber == 0, " refused", " taken")
Return nNumber

* The work at the end of the day. Shipped orders become closed ones; closed ones go
* when they are old enough.
Function CloseDay(cFolder, dDay, nDays)
	Local nOpen, nSum, nTax, nMean, nWas

	DEFAULT cFolder TO "", dDay TO Date(), nDays TO LAST_DAY * 2
	TRACING CloseDay WITH dDay
	SET DELETED OFF
	SET FILTER TO
	SET ORDER TO TAG number
	GO TOP
	COUNT TO nOpen FOR ORDER IS OPEN .Or. ORDER IS BLOCKED
	SUM TOTAL, TOTAL * TAX_RATE TO nSum, nTax FOR ORDER IS OPEN
	AVERAGE TOTAL TO nMean WHILE !Eof() REST
	? "Open:", nOpen, nSum, nTax, "on average", nMean

	REPLACE STATE WITH ORDER_CLOSED FOR ORDER IS SHIPPED
	DELETE FOR ORDER IS CLOSED .And. ORDERS->DUE < dDay - nDays
	LOCATE FOR ORDER IS BLOCKED
	Do While Found()
		nWas := ORDERS->TOTAL
		COMPLAIN "Still blocked", ORDERS->CUSTOMER, Str(nWas, 12, 2)
		CONTINUE
	EndDo

	PACK
	INDEX ON CUSTOMER + DToS(DUE) TO bycust TAG bycust FOR !Empty(CUSTOMER) DESCENDING
	UNLOCK ALL
	CLOSE DATABASES
	COPY FILE orders.dat TO BACKUP
	DELETE FILE LOG_FILE
Return nOpen
