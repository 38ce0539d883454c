/* The interface of libkrpre, the source preprocessor of Korel. Plain C.
 *
 * A native host calls doPreProc or executeKrpreDll, and redirectOutPut and restoreOutPut around
 * them when nothing shall be printed. A Java host uses the class Krpre, whose native methods are
 * Java_Krpre_prebuild and Java_Krpre_getCH. */
#ifndef KRPRE_H
#define KRPRE_H

#include <stddef.h>

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

/* doPreProc for a host that has its arguments in one text, as a shell would.
 *
 *   count        how many arguments the host wants read, slot 0 not among them. Fewer than the text
 *                holds: the rest is not read. More: the missing ones are as null slots.
 *   commandLine  the arguments, separated by blanks. Blanks between double quotes do not separate;
 *                the quotes stay in the argument. It stays the caller's.
 *
 * Returns what doPreProc returns. With count 1 and the text "-v" the version is printed.
 *
 * A null commandLine is an error of the caller and the one case in which a C++ exception leaves the
 * library: std::logic_error. */
KRPRE_API int executeKrpreDll(int count, const char* commandLine);

/* Silences standard output: from now on what the process prints there goes to "/dev/null". What was
 * printed before still appears.
 *
 *   silencer  receives the descriptor of "/dev/null", for restoreOutPut; -1 when this fails.
 *
 * Returns a descriptor of the output as it was, for restoreOutPut, or -1 when nothing was changed.
 * It concerns the whole process: threads must not call it side by side. */
KRPRE_API int redirectOutPut(int* silencer);

/* Undoes redirectOutPut. What was printed in between is gone.
 *
 *   saved     what redirectOutPut returned. It stays open and the caller's to close.
 *   silencer  what redirectOutPut stored; it is closed.
 *
 * Returns 0. After a redirectOutPut that failed it does nothing. */
KRPRE_API int restoreOutPut(int saved, int silencer);

/* The native methods of the Java class Krpre (java/Krpre.java is their manual for Java hosts), seen
 * by those who include jni.h first. */
#ifdef JNI_VERSION_1_1

/* Krpre.prebuild: doPreProc over the elements of `arguments`, which may be null and of any length.
 *
 * Element 0 is the place of the program's name and is not read, a null element is skipped. Strings
 * are passed on in the virtual machine's default encoding, or as UTF-8 when that lacks one of their
 * characters. `receiver` is not used.
 *
 * Returns what doPreProc returns; messages have been written when it does. An element that cannot
 * be converted is skipped, and the exception is pending when the call returns:
 * java.lang.OutOfMemoryError, or java.lang.IllegalArgumentException for a string with the
 * character 0 in it. */
KRPRE_API jint Java_Krpre_prebuild(JNIEnv* environment, jobject receiver, jobjectArray arguments);

/* Krpre.getCH: the text of a header file, plain or in the packed form, with "\r\n" behind it. The
 * name is passed on as UTF-8. The file is read as UTF-8 when it is valid UTF-8, otherwise as
 * Windows-1252. `receiver` is not used.
 *
 * Returns a new string, as a local reference. It is empty when `fileName` is null, when there is no
 * such file or it cannot be read, and when it is larger than 16 MiB or a packed file whose lengths
 * cannot be true. Null when memory ran out; java.lang.OutOfMemoryError is pending then.
 *
 * A packed file whose data is damaged ends the process: an assertion fails, with a message on
 * standard error. */
KRPRE_API jstring Java_Krpre_getCH(JNIEnv* environment, jobject receiver, jstring fileName);

#endif

/* --- Richer hosts
 * -----------------------------------------------------------------------------------
 *
 * krpre_run is doPreProc for a host that wants to hear what happens. Whatever a callback is given
 * is the library's and valid during the call only; texts are zero-terminated and never null unless
 * it says so. Callbacks come from the calling thread, must not throw and must not call krpre_run
 * for the same output directory with the same tag. */

/* A rule in force: a define, a translation or a command. */
struct krpre_rule {
  int kind;              /* one of KRPRE_DEFINE, KRPRE_TRANSLATION, KRPRE_COMMAND */
  const char* key;       /* the word by which statements find the rule */
  const char* listing;   /* pattern and result, as in a listing of rules */
  const char* directive; /* as its header writes it, on one line; empty when there is none */
  const char* file;      /* where its directive stands; empty for a define of the option /D */
  int line;              /* from 1; 0 where file is empty */
  int abbreviates; /* not 0 when the words of its pattern may be cut to four letters and more */
};
enum { KRPRE_DEFINE = 1, KRPRE_TRANSLATION = 2, KRPRE_COMMAND = 3 };

/* What one marker of a pattern took of a statement. */
struct krpre_capture {
  const char* marker; /* its name */
  int count;          /* of texts: one for each repetition of its group, otherwise one or none */
  const char* const* texts; /* null when count is 0 */
};

/* One step on a statement's way to its final form. */
struct krpre_step {
  int kind;         /* one of the KRPRE_STEP_ values */
  const char* file; /* of the statement */
  int line;         /* its first line, from 1 */
  int lastLine;     /* of its first form */
  const char*
      statement; /* as it stands: before the rule in TRIED and MATCHED, after it in APPLIED */

  /* Null and 0 in BEGINS and ENDS. */
  const struct krpre_rule* rule;
  int token; /* index of the token where the pattern begins, from 0 */

  /* TRIED: how well the pattern matched, 0 when it did not; then where it gave up. */
  int score;
  const char*
      failedMarker; /* as a listing writes it; empty: the statement goes on behind the pattern */
  const char* failedToken; /* the token that it met; empty: the end of the statement */

  /* MATCHED only: what the markers took, in the order of the pattern. */
  int captureCount;
  const struct krpre_capture* captures;
};
enum {
  KRPRE_STEP_BEGINS = 1,  /* a statement is about to be rewritten */
  KRPRE_STEP_TRIED = 2,   /* a rule of the right key was tried */
  KRPRE_STEP_MATCHED = 3, /* this one of the rules just tried is going to be applied */
  KRPRE_STEP_APPLIED = 4, /* it has been */
  KRPRE_STEP_ENDS = 5     /* nothing applies any more */
};

/* A directive that includes a file. */
struct krpre_place {
  const char* file;
  int line; /* from 1; 0 for the standard header, which no directive includes */
};

/* What is known of one message about a source. Names of files are as a user knows them, relative to
 * the current directory unless they begin with "/". */
struct krpre_diagnostic {
  int severity;        /* one of the KRPRE_SEVERITY_ values */
  int code;            /* the number of a numbered error; the result in SEVERITY_RESULT */
  const char* slug;    /* a name for the kind of message: "syntax-error"; see docs/errors.md */
  const char* message; /* in English, whatever the language of the run; without a position */
  const char* file;    /* the source or the included file; empty: the run as a whole */
  int line;            /* from 1; 0 when it is not about a line */
  int column;          /* of the line's bytes, from 1; 0 when it is not known */
  const char* source;  /* the line, without its line end; it may hold zero bytes */
  size_t sourceLength;
  int includeCount; /* how the file was reached, the directive that includes it first */
  const struct krpre_place* includedFrom; /* null when includeCount is 0 */
  int ruleCount; /* what made the statement, in the order in which it was applied */
  const struct krpre_rule* rules; /* null when ruleCount is 0 */
};
enum {
  KRPRE_SEVERITY_ERROR = 1,
  KRPRE_SEVERITY_TRACE = 2, /* a step of the run; only with the argument -T */
  KRPRE_SEVERITY_RESULT = 3 /* the last word on a source file */
};

/* Flags of a host. */
enum {
  KRPRE_NO_OUTPUT = 1,      /* write no output file; an older one stays */
  KRPRE_KEEP_UNCHANGED = 2, /* leave an output file alone that holds just these bytes already */
  KRPRE_TAKE_TURNS = 4      /* wait, 10 seconds at most, while another run with the same tag writes
                               an output to the same directory; without it that is a failure */
};

/* Headers that several runs share, so that each is read once: see docs/precompiled.md. Runs in
 * several threads may use one at the same time. It takes for granted that headers do not change
 * while it lives. `precompiled` not 0: the standard header is also kept in a file beside it, from
 * one process to the next. Null when there is no memory. The caller frees it when no run uses it
 * any more; null is nothing to free. */
struct krpre_headers;
KRPRE_API struct krpre_headers* krpre_headers_new(int precompiled);
KRPRE_API void krpre_headers_free(struct krpre_headers* headers);
/* How often the text of a header was read to be kept, and how often a kept one was used instead. */
KRPRE_API int krpre_headers_read(const struct krpre_headers* headers);
KRPRE_API int krpre_headers_reused(const struct krpre_headers* headers);

/* A define of a host. Of several of one name the last counts. */
struct krpre_define {
  const char* name;  /* letters, digits and "_" */
  const char* value; /* one line, taken as one word; null: the name stands for nothing */
};

/* What a host wants. Fill it with zeros, then set `size` and what you need. */
struct krpre_host {
  size_t size;    /* sizeof(struct krpre_host) */
  void* context;  /* handed to every callback */
  unsigned flags; /* of KRPRE_NO_OUTPUT, ... */

  /* The texts that doPreProc prints, piece by piece; `length` in bytes. Null: standard output. */
  void (*message)(void* context, const char* text, size_t length);
  /* Every rule in force at the end of a source file without errors: defines, then translations,
   * then commands, each by key. Null: not wanted. */
  void (*rule)(void* context, const struct krpre_rule* rule);
  /* The steps of every statement of the source files and of what they include. Null: not wanted,
   * which is faster by far. */
  void (*step)(void* context, const struct krpre_step* step);
  /* What becomes of files; `event` is one of the values below. `source` is the source file at work,
   * `name` the file. Null: not wanted. */
  void (*file)(void* context, int event, const char* source, const char* name);

  /* The file that the output goes to; for runs over one source. Null: the one that doPreProc would
   * write. One with the extension of a source or a header is refused. */
  const char* outputName;
  /* Takes the output of each source without errors, `length` bytes as its file would hold them. No
   * file is written then, and none removed. Null: outputs go to files. */
  void (*output)(void* context, const char* source, const char* text, size_t length);

  /* Every error, trace and result of a source file, in order, each after the message that says the
   * same. Null: not wanted. */
  void (*diagnostic)(void* context, const struct krpre_diagnostic* diagnostic);
  /* The language of the messages, by the name of a locale: "de", "pt_BR.UTF-8", "de_DE.ISO-8859-1".
   * Null: whatever translator the process has installed in Qt, English without one. A language or
   * encoding that the library does not have is English. */
  const char* language;
  /* Headers that this run shares with others. Null: the sources of this run share theirs. */
  struct krpre_headers* headers;

  /* Directories for include files, searched in this order behind those that the vector and the
   * variable INCLUDE name. A name may hold any character; an empty one names no directory. */
  size_t includeDirectoryCount;
  const char* const* includeDirectories;
  /* What is defined before the first line of each source, behind the defines of the vector. */
  size_t defineCount;
  const struct krpre_define* defines;
};
enum {
  KRPRE_FILE_READ = 1,       /* the source, then each file that it includes, whenever it is read */
  KRPRE_OUTPUT_WRITTEN = 2,  /* the output of the source; it stands whole under its name */
  KRPRE_OUTPUT_UNCHANGED = 3 /* likewise, and stood there already: see KRPRE_KEEP_UNCHANGED */
};

/* As doPreProc. `host` may be null and is read during the call only. KRPRE_OUTPUT_FAILED when
 * host->size is not one that this library knows; nothing else has happened then. */
KRPRE_API int krpre_run(int count, char** vector, const struct krpre_host* host);

/* --- Packed files
 * -----------------------------------------------------------------------------------
 *
 * Sources and headers may be packed; the preprocessor reads them as their text. krpre_pack packs
 * the file `in` into `out`, krpre_unpack reverses that, byte for byte. `out` may be null or the
 * same file: it is then replaced. It is replaced in one step, keeps the permissions of `in`, and
 * stays as it was after a failure. Nothing is printed. */
enum {
  KRPRE_PACKED = 0, /* done */
  KRPRE_UNCHANGED =
      2, /* it was packed already, or is not packed; a different `out` is a copy now */
  KRPRE_UNREADABLE = 3, /* `in` cannot be read */
  KRPRE_TOO_LARGE = 4,  /* it is larger than 16 MiB, packed or not */
  KRPRE_DAMAGED = 5,    /* it is packed, but not whole */
  KRPRE_NOT_WRITTEN = 6 /* `out` cannot be written */
};
KRPRE_API int krpre_pack(const char* in, const char* out);
KRPRE_API int krpre_unpack(const char* in, const char* out);

/* As krpre_run over a source that stands in no file, as an editor holds it: `text` of `length`
 * bytes, which may be any, takes the place of the file `name`. The name decides the kind of the
 * source, the directory where includes are looked for, and what messages and "#line" show; there
 * need not be such a file. Sources in the vector are preprocessed before it. With host->output and
 * host->message nothing is read but headers and nothing is written.
 *
 * KRPRE_BAD_SOURCE also when the name is null or empty or the text has 16 MiB or more. */
KRPRE_API int krpre_text(int count, char** vector, const struct krpre_host* host, const char* name,
                         const char* text, size_t length);

/* The name of the file to which doPreProc writes the output of `source`, given @Odirectory; a null
 * or empty directory: beside the source. Puts it into `name`, cut to size - 1 bytes and ended by a
 * zero (nothing when size is 0). Returns its full length. */
KRPRE_API size_t krpre_output_name(const char* source, const char* directory, char* name,
                                   size_t size);

/* Not 0 when the extension of `name` is one of a source or a header: no output should be written
 * there. */
KRPRE_API int krpre_is_source(const char* name);

/* The translation of `text`, words of a message, in a language named as in krpre_host; the text
 * itself when the language does not have it. Puts it into `translation`, cut to size - 1 bytes and
 * ended by a zero (nothing when size is 0). Returns its full length. */
KRPRE_API size_t krpre_translate(const char* language, const char* text, char* translation,
                                 size_t size);

#ifdef __cplusplus
}
#endif

#endif
