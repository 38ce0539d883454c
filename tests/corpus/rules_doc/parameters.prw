#define BETWEEN(x, low, high) ((x) >= (low) .And. (x) <= (high))
#define DOUBLE(x) x + x
lOk := BETWEEN(nDay, 1, Last(nMonth, nYear))
nSum := 3 * DOUBLE(2)
lOk := Between(nDay, 1, 31)
