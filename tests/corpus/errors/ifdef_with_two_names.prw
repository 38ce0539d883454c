#ifdef A B
#endif
