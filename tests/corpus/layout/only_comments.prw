// nothing
/* at
all */

