/* The interface of libkrpre, the source preprocessor of Korel. Plain C; C++ may include it too.
 *
 * A source goes in ("area.prw"), its directives are carried out, and what the compiler reads comes
 * out ("area.ppo"). A complete host:
 *
 *     #include <krpre.h>
 *
 *     int main(void) {
 *       char headers[4096];
 *       if (krpre_headers_directory(headers, sizeof headers) >= sizeof headers) return 1;
 *       const char* directories[] = {"include", headers};
 *       static struct krpre_host host;
 *       host.size = sizeof host;
 *       host.includeDirectoryCount = 2;
 *       host.includeDirectories = directories;
 *
 *       char source[] = "@Farea.prw";
 *       char* arguments[] = {NULL, source};
 *       return krpre_run(2, arguments, &host) == KRPRE_OK ? 0 : 1;
 *     }
 *
 * Before the first line of every source the standard header, "std.ch", is read; a run fails if it
 * is not found. It and others come with the library, but the library does not look for them by
 * itself: it is for the host to name their directory among those for include files.
 * krpre_headers_directory tells it.
 *
 * Contents:
 *
 *   1. Results           what a run returns
 *   2. Simple hosts      doPreProc, executeKrpreDll, redirectOutPut, restoreOutPut
 *   3. Hosts             krpre_host, krpre_run, krpre_text
 *   4. Reports           what the callbacks of a host are given
 *   5. Questions         krpre_headers_directory, krpre_output_name, krpre_is_source,
 *                        krpre_warning_at, krpre_translate, krpre_version
 *   6. Shared headers    krpre_headers_new and its companions
 *   7. Packed files      krpre_pack, krpre_unpack
 *   8. Java              the native methods of the class Krpre
 *
 * For all of it: texts are zero-terminated byte strings in no particular encoding, sizes and
 * lengths are in bytes, lines and columns count from 1, and a pointer must not be null unless its
 * description, or that of its section, says so. What a function is given stays the caller's and is
 * not referred to after the call; nothing that it returns is to be freed, krpre_headers_new aside.
 * Functions may be called in several threads at once unless they say otherwise. No C++ exception
 * leaves them, with the one exception that executeKrpreDll names. */
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

/* The version of this header; krpre_version tells that of the library. A host that was built with
 * one works with every later library of the same major version. */
#define KRPRE_VERSION "7.0.240223"
#define KRPRE_VERSION_MAJOR 7
#define KRPRE_VERSION_MINOR 0
#define KRPRE_VERSION_PATCH 240223

/* --- 1. Results -------------------------------------------------------------------------- */

/* What doPreProc, executeKrpreDll, krpre_run and krpre_text return. When several sources fail, the
 * last of them decides. A positive code other than these comes from the external converter of
 * foreign sources. A source must be shorter than 16 MiB, and a line of it than 4,096 bytes. */
enum {
  KRPRE_OK = 0,            /* every source was preprocessed, or there was none */
  KRPRE_ERROR = 1,         /* a source has an error */
  KRPRE_BAD_SOURCE = 15,   /* a source cannot be read, or it or a line of it is too long */
  KRPRE_OUTPUT_FAILED = -1 /* an output could not be written, or something failed inside */
};

/* --- 2. Simple hosts --------------------------------------------------------------------- */

/* Preprocesses the sources that an argument vector names, and writes an output file for each.
 *
 *   count    The number of slots in `vector`; less than 1 is an empty run.
 *   vector   The arguments; may be null. Slot 0 is the place of the program's name and is not read.
 *            A null slot is skipped. The strings are not changed.
 *
 * The arguments, each in a slot of its own with its value right behind the spelling:
 *
 *   @Fname         A source; any number of them.
 *   @Llist         A file that holds the names of sources, separated by ";".
 *   @Odirectory    Where the outputs go. Default: each beside its source.
 *   @Itag          A tag for the names of temporary files. Default: "0".
 *   -Idirectories  Directories for include files, separated by ";". The last -I counts. That of the
 *                  shipped headers is to be one of them: see krpre_headers_directory.
 *   -T             Trace the steps of the run.
 *   -v             As the only argument: print the version.
 *   /Dname=value   A define. This and all other arguments go to the session (docs/options.md).
 *
 * Returns one of the codes above. A source that fails prints its message, and the others are still
 * preprocessed. An output appears whole under its name or not at all; when its source fails, an
 * older one is removed.
 *
 * Messages go to standard output. The environment variable INCLUDE may name further directories,
 * separated by ";", which are searched before those of -I.
 *
 * Calls in several threads must differ in their tags if they write to the same directory. */
KRPRE_API int doPreProc(int count, char** vector);

/* doPreProc for a host that has its arguments in one text, as a shell would.
 *
 *   count        How many arguments are to be read, slot 0 not among them. If there are fewer, the
 *                missing ones are null slots.
 *   commandLine  The arguments, separated by blanks. Blanks between double quotes do not separate;
 *                the quotes stay in the argument.
 *
 * Returns what doPreProc returns. With count 1 and the text "-v" the version is printed.
 *
 * A null commandLine is an error of the caller, and the one case in which a C++ exception leaves
 * the library: std::logic_error. */
KRPRE_API int executeKrpreDll(int count, const char* commandLine);

/* Silences standard output: what the process prints from now on goes to "/dev/null". What was
 * printed before still appears. Concerns the whole process: not for several threads at once.
 *
 *   silencer  Receives the descriptor of "/dev/null", for restoreOutPut; -1 on failure. If null,
 *             nothing is changed.
 *
 * Returns a descriptor of the output as it was, for restoreOutPut; -1 when nothing was changed. */
KRPRE_API int redirectOutPut(int* silencer);

/* Undoes redirectOutPut. What was printed in between is lost.
 *
 *   saved     What redirectOutPut returned. It stays open; the caller closes it.
 *   silencer  What redirectOutPut stored. It is closed.
 *
 * Returns 0. Does nothing after a redirectOutPut that failed. */
KRPRE_API int restoreOutPut(int saved, int silencer);

/* --- 3. Hosts ---------------------------------------------------------------------------- */

struct krpre_headers;    /* section 6 */
struct krpre_rule;       /* section 4 */
struct krpre_step;       /* section 4 */
struct krpre_diagnostic; /* section 4 */

/* Flags of a host. */
enum {
  KRPRE_NO_OUTPUT = 1,      /* write no output file; an older one stays */
  KRPRE_KEEP_UNCHANGED = 2, /* leave an output file alone whose content would not change */
  KRPRE_TAKE_TURNS = 4,     /* wait, up to 10 seconds, while another run with the same tag writes to
                               the same directory; without this flag, fail */
  KRPRE_PHONY_TARGETS = 8,  /* dependency files have an empty rule for each header */
  /* The user has chosen outputName or dependencyName: a link of that name is followed, and a pipe
   * or a device is not replaced but written to. Without this flag, what stands there is replaced.
   */
  KRPRE_OUTPUT_CHOSEN = 16,
  KRPRE_DEPENDENCIES_CHOSEN = 32,
  /* Keep the normalised copy of each source, which is what the session reads, beside its output
   * file: "a.pw_" for "a.ppo". Pages, inline blocks and foreign sources are converted in it. It is
   * kept after an error, too. */
  KRPRE_SAVE_TEMPS = 64,
  /* Read sources and headers from the host's files alone: what else is on disk is not there. */
  KRPRE_ONLY_FILES = 128
};

/* Events of the callback `file`. */
enum {
  KRPRE_FILE_READ = 1,       /* the source, then each file it includes, whenever that is read */
  KRPRE_OUTPUT_WRITTEN = 2,  /* the output of the source; it stands whole under its name */
  KRPRE_OUTPUT_UNCHANGED = 3 /* likewise, but was there already: see KRPRE_KEEP_UNCHANGED */
};

/* The last second of the year 9999, the latest time that a host may give. */
#define KRPRE_LATEST_TIME 253402300799LL

/* A define of a host. */
struct krpre_define {
  const char* name;  /* letters, digits and underscores, at least one */
  const char* value; /* without line ends, taken as one word; null: the name stands for nothing */
};

/* What stands in "#line" instead of the beginning of a file name. */
struct krpre_prefix {
  const char* prefix;
  const char* replacement; /* without line ends and double quotes */
};

/* A file that is there for a run only, whatever stands on disk under its name. */
struct krpre_file {
  const char* name; /* as the run looks for it: a directory of the include path, '/' and the name
                       of the include. There need not be such a directory */
  const char* text; /* may hold any bytes; may be null if `length` is 0 */
  size_t length;    /* less than 16 MiB */
  /* The file on disk that it comes from, such as an archive: dependency files name that. Null: they
   * name the file itself. */
  const char* container;
};

/* What a host wants of a run. Fill it with zeros, then set `size` and what you need; zero and null
 * are the defaults.
 *
 * A callback is called in the thread of the run. What it is given is the library's and valid during
 * the call only; texts are never null, their descriptions aside. It must not throw, and must not
 * start a run with the same tag and output directory. */
struct krpre_host {
  /* sizeof(struct krpre_host). By it the library tells which fields a host knows: one that was
   * built against an older header stays usable. */
  size_t size;
  /* Handed to every callback. */
  void* context;
  /* Any of the flags above. */
  unsigned flags;

  /* Takes the messages piece by piece; a piece need not be a line. `text` has `length` bytes and
   * ends with a zero behind them. Default: standard output. */
  void (*message)(void* context, const char* text, size_t length);
  /* Hears of every rule in force at the end of each source without errors: defines, then
   * translations, then commands, each sorted by key. */
  void (*rule)(void* context, const struct krpre_rule* rule);
  /* Hears of every step in the rewriting of the statements of the sources and of what they include.
   * A run is much slower with it. With mostErrors above 1 it hears of a statement again for each
   * attempt to get past an error. */
  void (*step)(void* context, const struct krpre_step* step);
  /* Hears of files that are read and written; `event` is one of the events above, `source` the
   * source at work, `name` the file. */
  void (*file)(void* context, int event, const char* source, const char* name);

  /* The file for the output; for runs over one source. A name with the extension of a source or a
   * header is refused with KRPRE_BAD_SOURCE. Default: the one that doPreProc would write. */
  const char* outputName;
  /* Takes the output of each source without errors: `length` bytes, which may hold zeros, as its
   * file would hold them. Then no file is written or removed. If memory runs
   * out behind it, the source has failed all the same. Default: outputs go to files. */
  void (*output)(void* context, const char* source, const char* text, size_t length);

  /* Hears of every error, trace and result of a source, in order, each after the message that says
   * the same. */
  void (*diagnostic)(void* context, const struct krpre_diagnostic* diagnostic);
  /* The language of the messages, by the name of a locale: "de", "pt_BR.UTF-8", "de_DE.ISO-8859-1".
   * An unknown language or encoding means English. Default: the translator that the process has
   * installed in Qt, otherwise English. */
  const char* language;
  /* Headers that this run shares with others; see section 6. Default: the sources of this run share
   * theirs. */
  struct krpre_headers* headers;

  /* Directories for include files. They are searched in this order, after those of INCLUDE and of
   * the vector. A name may hold any characters; an empty one is skipped, a null one refused. That
   * of the shipped headers is to be one of them: see krpre_headers_directory. */
  size_t includeDirectoryCount;
  const char* const* includeDirectories;
  /* What is defined before the first line of each source, after the defines of the vector; of
   * several of one name the last counts. A name or value that krpre_define does not allow is
   * refused. */
  size_t defineCount;
  const struct krpre_define* defines;

  /* The dependency file for make or ninja that is written with the output of a source, unless that
   * goes to no file; for runs over one source. It never stands beside an output that is newer than
   * it. Default: none. */
  const char* dependencyName;
  /* The targets of its rule, as they are to stand in it. Default: the output. */
  const char* dependencyTargets;

  /* Which warnings the callback `diagnostic` hears of: "all", or slugs separated by commas. A slug
   * with "no-" before it is left out again, "error=SLUG" makes an error of a warning, and "error"
   * makes errors of all that are wanted; then the source has failed. A later word counts more than
   * an earlier one. An unknown one is refused. Default: none. */
  const char* warnings;
  /* How many errors of a source are told at most. With 0 or 1 the run of a source ends at its first
   * error; with more it goes on behind it, to tell of others, and still fails. Less than 0 is
   * refused. */
  int mostErrors;

  /* The time for __COMPTIMESTAMP__, in seconds since 1970, from 0 to KRPRE_LATEST_TIME; it is told
   * in UTC. Any other is refused. Default: the time of the run, as local time. */
  const long long* timeStamp;

  /* For outputs that do not tell where they were made: of several prefixes that a name in "#line"
   * begins with the last is replaced, once. Messages, dependency files and callbacks have the names
   * as they are. A null text and a replacement that krpre_prefix does not allow are refused. */
  size_t prefixCount;
  const struct krpre_prefix* prefixes;

  /* Files that the run finds beside those on disk, or in their place: the texts of an editor, the
   * contents of an archive. Sources may be among them; the converter of foreign sources does not
   * see them. A null name or text, and a text that is too long, are refused. */
  size_t fileCount;
  const struct krpre_file* files;
};

/* doPreProc with callbacks.
 *
 *   count, vector  As for doPreProc.
 *   host           May be null: then it is doPreProc. Read during the call only.
 *
 * Returns what doPreProc returns. KRPRE_OUTPUT_FAILED before anything has happened if host->size is
 * unknown to this library, or if a directory or define is refused; the latter gives a message and a
 * diagnostic, too. */
KRPRE_API int krpre_run(int count, char** vector, const struct krpre_host* host);

/* krpre_run over a source that is in no file, as an editor holds it.
 *
 *   count, vector  As for doPreProc. Sources in it are preprocessed first.
 *   host           As for krpre_run.
 *   name           The name of the source. It decides the kind of the source, the directory where
 *                  includes are searched for, and what messages and "#line" show. There need not be
 *                  such a file.
 *   text, length   The source, which may hold any bytes. Less than 16 MiB. May be null if the
 *                  length is 0.
 *
 * Returns what krpre_run returns; KRPRE_BAD_SOURCE also if the name is null or empty, or the text
 * null or too long. With host->output and host->message, nothing but headers is read and nothing is
 * written. */
KRPRE_API int krpre_text(int count, char** vector, const struct krpre_host* host, const char* name,
                         const char* text, size_t length);

/* --- 4. Reports -------------------------------------------------------------------------- */

/* Kinds of rules. */
enum { KRPRE_DEFINE = 1, KRPRE_TRANSLATION = 2, KRPRE_COMMAND = 3 };

/* A rule in force. */
struct krpre_rule {
  int kind;              /* one of the kinds above */
  const char* key;       /* the word by which statements find the rule */
  const char* listing;   /* pattern and result, as in a listing of rules */
  const char* directive; /* as its header writes it, on one line; empty if there is none, and for a
                          * rule from a cached header */
  const char* file;      /* where its directive stands; empty for a define of an option or host */
  int line;              /* from 1; 0 if `file` is empty */
  int abbreviates;       /* not 0 if the words of its pattern may be cut to four letters or more */
};

/* What one marker of a pattern matched in a statement. */
struct krpre_capture {
  const char* marker;       /* its name */
  int count;                /* of texts: one for each repetition of its group, else 0 or 1 */
  const char* const* texts; /* null if `count` is 0 */
};

/* Kinds of steps. A statement gives one BEGINS, then for each rewrite any number of TRIED, one
 * MATCHED and one APPLIED, then the TRIED of its final form and one ENDS, which is missing if an
 * error ended the rewriting. After 100,000 TRIED in one statement no more come for it. */
enum {
  KRPRE_STEP_BEGINS = 1,  /* a statement is about to be rewritten */
  KRPRE_STEP_TRIED = 2,   /* a rule with the right key was tried */
  KRPRE_STEP_MATCHED = 3, /* one of the rules tried is about to be applied */
  KRPRE_STEP_APPLIED = 4, /* it has been applied */
  KRPRE_STEP_ENDS = 5     /* no rule applies any more */
};

/* One step on a statement's way to its final form. */
struct krpre_step {
  int kind;              /* one of the kinds above */
  const char* file;      /* of the statement */
  int line;              /* its first line, from 1 */
  int lastLine;          /* the last line of its original form */
  const char* statement; /* as it stands; in APPLIED after the rule, otherwise before it */

  /* In TRIED, MATCHED and APPLIED; null and 0 in the others. */
  const struct krpre_rule* rule;
  int token; /* the index, from 0, of the token where the pattern begins */

  /* In TRIED. How well the pattern matched; if it did not, the score is 0, and the texts tell where
   * it failed. They are empty in all other cases. */
  int score;
  const char* failedMarker; /* as a listing writes it; empty: the statement goes on after it */
  const char* failedToken;  /* the token that did not match; empty: the end of the statement */

  /* In MATCHED: what the markers matched, in the order of the pattern. */
  int captureCount;
  const struct krpre_capture* captures;

  /* In TRIED, if the pattern did not match: the index of failedToken, from 0, that of the end being
   * the number of tokens. Otherwise -1. */
  int failedIndex;
};

/* A directive that includes a file. */
struct krpre_place {
  const char* file;
  int line; /* from 1; 0 for the standard header, which no directive includes */
};

/* Severities of diagnostics. */
enum {
  KRPRE_SEVERITY_ERROR = 1,
  KRPRE_SEVERITY_TRACE = 2,  /* a step of the run; only with the argument -T */
  KRPRE_SEVERITY_RESULT = 3, /* the last word on a source */
  KRPRE_SEVERITY_WARNING = 4
};

/* What is told beside a message: another place that it is about, or what to do. */
struct krpre_note {
  const char* message; /* in English */
  const char* file;    /* empty if the note has no place */
  int line;            /* from 1; 0 if it is not about a line */
  int column;          /* in bytes, from 1; 0 if unknown */
  int endColumn;       /* one behind the last byte; 0 if unknown */
  const char* source;  /* the line, without its line end; empty if unknown */
  size_t sourceLength;
  const char* translated; /* `message` in the language of the run, or itself */
};

/* What is known of one message. File names are as a user knows them, relative to the current
 * directory unless they begin with "/". */
struct krpre_diagnostic {
  int severity;        /* one of the severities above */
  int code;            /* the number of an error, 0 if it has none; of a result, its code */
  const char* slug;    /* a name for the kind of message: "syntax-error"; see docs/errors.md */
  const char* message; /* in English, whatever the language of the run; without a position */
  const char* file;    /* the source or the included file; empty: the run as a whole */
  int line;            /* from 1; 0 if the message is not about a line */
  int column;          /* in bytes, from 1; 0 if unknown */
  const char* source;  /* the line, without its line end; it may hold zero bytes */
  size_t sourceLength; /* of that line */

  /* How `file` was reached: the directive that includes it first, then the one that includes that
   * directive's file, and so on. Null if the count is 0. */
  int includeCount;
  const struct krpre_place* includedFrom;
  /* The rules that made the statement, in the order in which they were applied. Null if the count
   * is 0. */
  int ruleCount;
  const struct krpre_rule* rules;

  int endColumn; /* one behind the last byte of what `column` points at; 0 if unknown */
  /* Null if the count is 0. */
  int noteCount;
  const struct krpre_note* notes;
  const char* translated; /* `message` in the language of the run, or itself */
};

/* --- 5. Questions ------------------------------------------------------------------------ */

/* Of a null `source` or `text` the answer is 0 and an empty text, and a null `name` is none of a
 * source. A null buffer receives nothing, whatever its size. */

/* The directory of the headers that come with the library, "std.ch" among them, as it was installed
 * or built: found from the place of the library's file, and not looked at. A run searches it only
 * if it is among the include directories.
 *
 *   directory, size  Receives the name, cut to size - 1 bytes, and a zero behind it.
 *
 * Returns the full length of the name, without the zero; 0 if memory ran out or the place of the
 * library's file cannot be determined, as when a relative name loaded it from a directory that is
 * no longer the current one. */
KRPRE_API size_t krpre_headers_directory(char* directory, size_t size);

/* The file to which doPreProc would write the output of a source.
 *
 *   source      The name of the source; it need not exist.
 *   directory   The value of @O; null or empty: beside the source.
 *   name, size  Receives the name, cut to size - 1 bytes, and a zero behind it.
 *
 * Returns the full length of the name, without the zero; 0 if memory ran out. */
KRPRE_API size_t krpre_output_name(const char* source, const char* directory, char* name,
                                   size_t size);

/* Returns 1 if `name` has the extension of a source or a header, so that no output should be
 * written there; otherwise 0. There need not be such a file. */
KRPRE_API int krpre_is_source(const char* name);

/* A warning, for krpre_host.warnings. */
struct krpre_warning {
  const char* slug;
  const char* text; /* "%1" and so on stand for what a place gives it */
};

/* Returns the warning with that index, from 0, in the order of docs/warnings.md; null behind the
 * last. */
KRPRE_API const struct krpre_warning* krpre_warning_at(size_t index);

/* The translation of words of a message.
 *
 *   language           The name of a locale, as in krpre_host; may be null.
 *   text               The words in English.
 *   translation, size  Receives the translation, or the text itself if there is none, as
 *                      krpre_output_name does the name.
 *
 * Returns the full length of what there was to receive, without the zero; 0 if memory ran out. */
KRPRE_API size_t krpre_translate(const char* language, const char* text, char* translation,
                                 size_t size);

/* Returns the version of the library, in the form of KRPRE_VERSION. */
KRPRE_API const char* krpre_version(void);

/* --- 6. Shared headers ------------------------------------------------------------------- */

/* Runs that share headers read each of them only once (docs/precompiled.md). Runs in several
 * threads may use the same object at once. It assumes that headers do not change while it lives.
 *
 *   precompiled  Not 0: the standard header is also cached in a file, for later processes.
 *   directory    Where that file is; made, for its user alone, when it is needed and missing. Null,
 *                and with krpre_headers_new: "krpre" in $XDG_CACHE_HOME, or in ~/.cache.
 *
 * Return an object for krpre_host.headers, which the caller frees with krpre_headers_free; null if
 * memory ran out. */
KRPRE_API struct krpre_headers* krpre_headers_new(int precompiled);
KRPRE_API struct krpre_headers* krpre_headers_new_in(const char* directory);

/* Writes to `problem` why a standard header could not be cached in a file, or the file could not be
 * read: the first reason, which may name a file, in English. Outputs are as they would be without
 * the file. As much as fits in `size` bytes is written, and a zero behind it; null and 0 ask for
 * the length.
 *
 * Returns the full length of the reason, without the zero; 0 if there is none, or for null. */
KRPRE_API size_t krpre_headers_problem(const struct krpre_headers* headers, char* problem,
                                       size_t size);

/* Frees the object, which no run may be using. Null is allowed. */
KRPRE_API void krpre_headers_free(struct krpre_headers* headers);

/* Return how often a header was read to be kept, and how often a kept one was used instead; 0 for
 * null. */
KRPRE_API int krpre_headers_read(const struct krpre_headers* headers);
KRPRE_API int krpre_headers_reused(const struct krpre_headers* headers);

/* --- 7. Packed files --------------------------------------------------------------------- */

/* What krpre_pack and krpre_unpack return. */
enum {
  KRPRE_PACKED = 0,     /* done */
  KRPRE_UNCHANGED = 2,  /* already packed, or not packed; a different `out` is a copy now */
  KRPRE_UNREADABLE = 3, /* `in` cannot be read */
  KRPRE_TOO_LARGE = 4,  /* it is larger than 16 MiB, packed or not */
  KRPRE_DAMAGED = 5,    /* it is packed, but damaged */
  KRPRE_NOT_WRITTEN = 6 /* `out` cannot be written, or memory ran out */
};

/* Pack the file `in` into `out`, or restore it from its packed form byte for byte. The preprocessor
 * reads a packed source or header as its text. Nothing is printed.
 *
 *   in   The file to read; null is one that cannot be read.
 *   out  The file to write; null or the same file: `in` is replaced. It appears in one step, with
 *        the permissions of `in`; after a failure it is as it was. A link is followed, and a pipe
 * or a device, "/dev/stdout" among them, is written to.
 *
 * Return one of the codes above. After KRPRE_UNREADABLE and KRPRE_NOT_WRITTEN, errno tells why; 0
 * if it was no failure of the system. */
KRPRE_API int krpre_pack(const char* in, const char* out);
KRPRE_API int krpre_unpack(const char* in, const char* out);

/* --- 8. Java ----------------------------------------------------------------------------- */

/* The native methods of the class Krpre, for those who include jni.h first. java/Krpre.java is the
 * manual for Java hosts. */
#ifdef JNI_VERSION_1_1

/* Krpre.prebuild: doPreProc over the elements of `arguments`.
 *
 *   receiver   Not used.
 *   arguments  May be null and of any length. Element 0 is the place of the program's name and is
 *              not read; a null element is skipped. Strings are passed on in the default encoding
 *              of the virtual machine, or as UTF-8 if that lacks one of their characters.
 *
 * Returns what doPreProc returns; messages have been written by then. An element that cannot be
 * converted is skipped, and an exception is pending when the call returns:
 * java.lang.OutOfMemoryError, or java.lang.IllegalArgumentException for a string that holds the
 * character 0. */
KRPRE_API jint Java_Krpre_prebuild(JNIEnv* environment, jobject receiver, jobjectArray arguments);

/* Krpre.getCH: the text of a header, plain or packed, followed by "\r\n".
 *
 *   receiver  Not used.
 *   fileName  Passed on as UTF-8. The file is read as UTF-8 if it is valid UTF-8, otherwise as
 *             Windows-1252. May be null.
 *
 * Returns a new string, as a local reference. It is empty if `fileName` is null, if the file does
 * not exist or cannot be read, or if it is larger than 16 MiB or is a packed file with impossible
 * lengths. Null if memory ran out; then java.lang.OutOfMemoryError is pending.
 *
 * A packed file whose data is damaged ends the process: an assertion fails, with a message on
 * standard error. */
KRPRE_API jstring Java_Krpre_getCH(JNIEnv* environment, jobject receiver, jstring fileName);

/* Krpre.headers: krpre_headers_directory.
 *
 *   type  Not used.
 *
 * Returns a new string, as a local reference: the name read as UTF-8 if it is valid UTF-8,
 * otherwise as Windows-1252; empty where krpre_headers_directory answers 0. Null if memory ran out;
 * then java.lang.OutOfMemoryError is pending. */
KRPRE_API jstring Java_Krpre_headers(JNIEnv* environment, jclass type);

#endif

#ifdef __cplusplus
}
#endif

#endif
