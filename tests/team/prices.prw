// prices.prw: prices and taxes. Rates are those of 2024.
#include "app.ch"
#include "tables.ch"

#define TAX_FULL      0.19
#define TAX_REDUCED   0.07
#define TAX_NONE      0
#define ROUND2(n)     Round(n, 2)
#define WITH_TAX(nNet, nTax)  ROUND2((nNet) * (1 + (nTax)))

function taxOf( cClass )
   local nTax
   do case
   case cClass == "F" ; nTax := TAX_FULL
   case cClass == "R" ; nTax := TAX_REDUCED
   otherwise          ; nTax := TAX_NONE
   endcase
return nTax

function gross( nNet, cClass )
return WITH_TAX( nNet, taxOf( cClass ) )

function discount( nQty, nPrice )
   local aSteps := { { 10, 0.02 }, { 50, 0.05 }, { 100, 0.08 } }
   local n, nRate := 0
   for n := 1 to len( aSteps )
      if nQty >= aSteps[ n, 1 ]
         nRate := aSteps[ n, 2 ]
      endif
   next
return ROUND2( nQty * nPrice * nRate )

function raisePrices( nPercent )
   local nCount := 0
   OPEN TABLE "items" ALIAS ITEMS
   ITEMS->( dbGoTop() )
   while ! ITEMS->( eof() )
      LOCK RECORD OF ITEMS
      ITEMS->PRICE := ROUND2( ITEMS->PRICE * ( 1 + nPercent / 100 ) )
      ITEMS->( dbUnlock() )
      nCount ++
      ITEMS->( dbSkip() )
   enddo
   CLOSE TABLE ITEMS
return nCount

function priceText( nPrice )
   local cText := allTrim( transform( nPrice, "@E 999,999.99" ) )
return cText + " " + CHR( 8364 )
