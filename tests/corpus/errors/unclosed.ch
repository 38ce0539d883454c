
#ifdef A

