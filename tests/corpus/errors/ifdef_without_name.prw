x := 1
#ifdef
#endif
