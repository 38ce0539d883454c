/* depots.prw: depots, and what is on its way between them */
#include "app.ch"
#include "forms.ch"
#include "tables.ch"
#include "errors.ch"

#define DEP_CODE   1
#define DEP_NAME   2

USER FUNCTION Depots()
   LOCAL aDepots := {}
   LOCAL oForm, oGrid, oMove
   LOCAL cItem := Space( 15 ), nQty := 0
   LOCAL cFrom := DefaultDepot, cTo := "  "

   OPEN TABLE "depots" ALIAS DEP SHARED
   DEP->( dbGoTop() )
   DO WHILE ! DEP->( EOF() )
      AAdd( aDepots, { DEP->CODE, DEP->NAME } )
      DEP->( dbSkip() )
   ENDDO
   CLOSE TABLE DEP

   FORM oForm TITLE "Depots" SIZE FORM_WIDTH, FORM_HEIGHT MODAL
   GRID oGrid OF oForm ARRAY aDepots COLUMNS "Code", "Name" ;
      ON CHANGE cTo := oGrid:Row()[ DEP_CODE ]
   FIELD cItem AT 400, 10 OF oForm PICTURE "@!" VALID ! Empty( cItem )
   FIELD cFrom AT 400, 150 OF oForm VALID KnowsDepot( aDepots, cFrom )
   FIELD nQty AT 400, 200 OF oForm PICTURE "99999" VALID nQty > 0 WHEN ! Empty( cTo )
   BUTTON oMove TEXT "Move" AT 400, 300 OF oForm ACTION Transfer( cItem, cFrom, cTo, nQty )
   SHOW oForm
RETURN .T.

STATIC FUNCTION KnowsDepot( aDepots, cCode )
   LOCAL nAt := AScan( aDepots, { |aDepot| aDepot[ DEP_CODE ] == cCode } )
   IF nAt == 0
      Complain( "There is no depot " + cCode )
   ENDIF
RETURN nAt > 0 .AND. ! Empty( aDepots[ nAt ][ DEP_NAME ] )

STATIC FUNCTION Transfer( cItem, cFrom, cTo, nQty )
   IF cFrom == cTo
      RETURN .F.
   ENDIF
   TRY TO MoveBetween( cItem, cFrom, cTo, nQty ) ELSE ErrorText( ERR_NO_STOCK )
RETURN .T.
