#ifndef TRACE_CH
#define TRACE_CH

// Tracing is for tests: -D DEBUG, and -D VERBOSE for every step.
#ifdef DEBUG
   #stdout tracing to the log file
   #define TRACE_TO    LOG_FILE
   #ifdef VERBOSE
      #define TRACE_LEVEL 2
   #else
      #define TRACE_LEVEL 1
   #endif
   #xcommand TRACING <place> [WITH <values,...>] => Trace(<(place)>[, <values>])
#else
   #define TRACE_TO    ""
   #define TRACE_LEVEL 0
   #xcommand TRACING <place> [WITH <values,...>] =>
   #ifdef VERBOSE
      #error VERBOSE has no meaning without DEBUG
   #endif
#endif

#endif
