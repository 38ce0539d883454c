// period.prw: months that are open for booking
#include "app.ch"

#define FIRST_MONTH  1
#define LAST_MONTH   12
#define DAYS_OF_GRACE 5

Static dFirst, dLast

function InPeriod(dDate)
   if dFirst == nil
      readPeriod()
   endif
return dDate >= dFirst .and. dDate <= dLast

static function readPeriod()
   local nMonth := month(date())
   local nYear  := year(date())

   // In the first days of a month the one before it is open, too.
   if day(date()) <= DAYS_OF_GRACE
      nMonth--
      if nMonth < FIRST_MONTH
         nMonth := LAST_MONTH
         nYear--
      endif
   endif
   dFirst := sToD(strZero(nYear, 4) + strZero(nMonth, 2) + "01")
   dLast  := monthEnd(date())
return nil

static function monthEnd(dDate)
   local nMonth := month(dDate)
   while month(dDate) == nMonth
      dDate++
   enddo
return dDate - 1

function periodText()
   if dFirst == nil
      readPeriod()
   endif
return dToC(dFirst) + " - " + dToC(dLast)

function nextPeriod(nMonths)
   local n
   default nMonths to 1
   if dLast == nil
      readPeriod()
   endif
   for n := 1 to nMonths
      dLast := monthEnd(dLast + 1)
   next
return dLast
