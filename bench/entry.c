/* Times doPreProc: "entry CALLS ARGUMENT..." makes the calls in batches, after as many to warm up,
 * and prints to standard error what one call of the best batch took of the processor, in
 * nanoseconds. EntryBench.java does the same from Java. */
#define _POSIX_C_SOURCE 199309L
#include <stdio.h>
#include <stdlib.h>
#include <time.h>

#include "include/krpre.h"

enum { BATCHES = 60 };

static double now(void) {
  struct timespec t;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return (double)t.tv_sec * 1e9 + (double)t.tv_nsec;
}

static double batch(int calls, int count, char** vector) {
  const double start = now();
  for (int i = 0; i < calls; ++i) {
    if (doPreProc(count, vector) != KRPRE_OK) exit(1);
    fflush(stdout); /* as the entry point for Java does */
  }
  return (now() - start) / calls;
}

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const int calls = atoi(argv[1]) / BATCHES;
  double best = 1e18;
  /* The calls take the place of the program's name. */
  for (int i = 0; i < BATCHES; ++i) batch(calls, argc - 1, argv + 1);
  for (int i = 0; i < BATCHES; ++i) {
    const double time = batch(calls, argc - 1, argv + 1);
    if (time < best) best = time;
  }
  fprintf(stderr, "%.0f\n", best);
  return 0;
}
