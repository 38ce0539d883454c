

#endif
