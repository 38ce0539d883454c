// Tracing; it costs nothing unless LOGGING is defined.
#ifdef LOGGING
   #command LOG <cText> [WITH <values,...>] => WriteLog(ProcName(), <cText>, { <values> })
#else
   #command LOG <cText> [WITH <values,...>] =>
#endif
