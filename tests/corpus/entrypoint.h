#pragma once

/// Calls an entry point of a library, in the process of its own that each run of the corpus is.
///
///   words  The library's path, the name of an entry point of it, and arguments for that.
///
/// The names are those of the functions. "redirectOutPut" runs doPreProc twice, silenced at first
/// and heard after restoreOutPut. Returns the exit status of the process: the entry point's result,
/// or 126 when the library or the function cannot be had.
int callEntryPoint(int count, char** words);
