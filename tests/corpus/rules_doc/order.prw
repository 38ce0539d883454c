#define RATE 20
#translate TAXED(<x>) => (<x> * (100 + RATE) / 100)
#command BILL <x> => AddBill(TAXED(<x>), RATE)
BILL nPrice
#command LABEL <*text*> => AddLabel(#<text>)
LABEL the RATE is RATE %
