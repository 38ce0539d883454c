// What the page and its program share.
#define GROUP_ALL   0
#define ITEM_NAME   1
#define ITEM_PRICE  2
#define WITH_AVERAGE
