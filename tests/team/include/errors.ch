// Numbers of the errors that are shown to users.
#define ERR_NOT_FOUND    101
#define ERR_NO_STOCK     102
#define ERR_LOCKED       103
#define ERR_NO_RIGHT     104
#define ERR_BAD_DATE     105
#define ERR_IMPORT       106
