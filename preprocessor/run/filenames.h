#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/run/options.h"

/// The names of the files of one source's run.
struct tFileNames {
  tString source;           // as the user knows it
  tString directory;        // where the output goes
  tString copy;             // the normalised copy, which never leaves the memory
  tString temporaryOutput;  // until the output is whole
  tString output;
  tString temporaryErrors;  // of a host that collects error texts
  tString errors;
  bool outputIsChosen = false;  // by the host
};

/// The temporary names are made from the run's tag. `chosenOutput` is the output that the host has
/// chosen; empty: it follows from the source and the options.
tFileNames composeNames(const tRunOptions& options, const tString& source,
                        const tString& chosenOutput = {});

/// Whether the output would take the place of the source, or of any source when the host has chosen
/// it. The source stands in the file `readName`.
bool outputIsSource(tDiskMan& disk, const tFileNames& names, const tString& readName);
