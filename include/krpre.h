/* The native interface of libkrpre, the source preprocessor of Korel. Plain C. */
#ifndef KRPRE_H
#define KRPRE_H

#if defined(__GNUC__)
#define KRPRE_API __attribute__((visibility("default")))
#else
#define KRPRE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* What doPreProc returns. A positive code other than these two comes from the external converter of
 * foreign sources. */
enum {
  KRPRE_OK = 0,            /* every file was preprocessed, or there was none */
  KRPRE_ERROR = 1,         /* a source has an error */
  KRPRE_BAD_SOURCE = 15,   /* a source could not be read, or a line of it is too long */
  KRPRE_OUTPUT_FAILED = -1 /* an output file could not be written, or something failed inside */
};

/* Preprocesses the files that an argument vector names, and writes for each source file one output
 * file.
 *
 *   count    the number of slots in `vector`; less than 1 is an empty run.
 *   vector   zero-terminated byte strings. Slot 0 is the place of the program's name and is not
 *            read; a null slot is skipped. The strings stay the caller's: they are not changed, and
 *            nothing refers to them after the call.
 *
 * Returns one of the codes above. Each failing file prints its message and the rest are still
 * processed; the last file that failed decides the result. Nothing is left to free.
 *
 * The arguments (the letters after each spelling belong to the same argument):
 *
 *   @Fname       a source file; may stand any number of times
 *   @Llist       a file that holds the names of source files, separated by ";"
 *   @Odirectory  where the output files go; without it, beside each source file
 *   @Itag        a tag for the names of temporary files ("0" when not given)
 *   -Idirs       directories for include files, separated by ";"
 *   -T           print what is done
 *   -v           as the only argument: print the version
 *   /Dname=value, /Idirs and others are handed on to the preprocessor
 *
 * An output file appears whole under its name or not at all; after a failure an older output of the
 * same source is gone too.
 *
 * Messages go to standard output. The environment variable INCLUDE may name further include
 * directories, separated by ";".
 *
 * The call uses the calling thread only, and may run in several threads at once as long as calls
 * that write to the same directory have different tags. No C++ exception leaves it. */
KRPRE_API int doPreProc(int count, char** vector);

#ifdef __cplusplus
}
#endif

#endif
