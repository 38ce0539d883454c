#ifdef NO
/*
#endif
*/
// #endif
* #endif
#else /*
#endif */
x := 1
#endif
x := 2
