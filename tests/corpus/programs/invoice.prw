// Prints the invoice of one order.
#include "invoice.ch"

#define COL_ITEM   1
#define COL_PRICE  2
#define COL_COUNT  3

/* aItems is an array of { item, price, count }. */
Function Invoice( cOrder, ;
                  aItems )   // returns the gross sum
   Local nSum := 0
   Local nI

#ifdef TEST_RUN
   LogLine( LOG_FILE, "order " + cOrder )
#endif
   PrintLine( TITLE )

   For nI := 1 To Len( aItems )
      nSum += aItems[nI][COL_PRICE] * ;  // price times
              aItems[nI][COL_COUNT]      // count
      PrintLine( aItems[nI][COL_ITEM] + ": " + Str( nSum, 10, 2 ) )
   Next

#ifndef WITHOUT_TAX
   nSum := nSum * (1 + TAX_RATE)
#else
   nSum := Round( nSum, 2 )
#endif

   PrintLine( 'Total ' + CURRENCY + " " + Str( nSum, 10, 2 ) )
Return nSum
