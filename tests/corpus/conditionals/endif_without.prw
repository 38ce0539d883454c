#ifdef A
#endif
#endif
