#ifndef COMMON_CH
#define COMMON_CH
#define COMMON 100
#endif
