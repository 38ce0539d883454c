#define MAX_ITEMS 100
#define GREETING  "hello"
#define EMPTY
Function Plain()
  Local a[MAX_ITEMS], c:=GREETING
  Local d := EMPTY 5
  If a[ MAX_ITEMS ] > MAX_ITEMS
  EndIf
  max_items := Max_Items
  x->MAX_ITEMS := MAX_ITEMS2 + "MAX_ITEMS" + 'MAX_ITEMS' // MAX_ITEMS
Return MAX_ITEMS
