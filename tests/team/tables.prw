/* tables.prw: opening tables, locking and seeking. Everything else goes through here. */
#include "app.ch"
#include "tables.ch"
#include "log.ch"

#define LOCK_TRIES   20
#define LOCK_PAUSE   250   // milliseconds

Static aOpen := {}

FUNCTION OpenTable( cTable, cAlias, lShared )
   LOCAL nAt
   LOCAL cName := If( cAlias == NIL, cTable, cAlias )

   nAt := aScan( aOpen, { |x| x[1] == cName } )
   IF nAt > 0
      aOpen[nAt][2]++
      RETURN .T.
   ENDIF
   IF ! dbOpen( cTable + ".dat", cName, lShared )
      LOG "cannot open" WITH cTable, cName
      RETURN .F.
   ENDIF
   aAdd( aOpen, { cName, 1, lShared } )
RETURN .T.

FUNCTION RecLock()
   LOCAL n
   FOR n := 1 TO LOCK_TRIES
      IF dbRLock()
         RETURN .T.
      ENDIF
      Sleep( LOCK_PAUSE )
   NEXT
   LOG "not locked" WITH Alias(), RecNo()
RETURN .F.

FUNCTION SeekBy( xKey, nIndex )
   IF nIndex != NIL
      dbSetOrder( nIndex )
   ENDIF
RETURN dbSeek( xKey, .F. )

FUNCTION CloseAll()
   LOCAL n
   FOR n := Len( aOpen ) TO 1 STEP -1
      ( aOpen[n][1] )->( dbCloseArea() )
      aDel( aOpen, n )
   NEXT
   aSize( aOpen, 0 )
RETURN NIL

FUNCTION TableCount()
   LOCAL nCount := 0
   aEval( aOpen, { |x, i| nCount += x[2], i } )
RETURN nCount
