// Units of measure
#define UNIT "m"
