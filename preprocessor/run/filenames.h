#pragma once

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/run/options.h"

/// The names of all files that the run over one source uses.
struct tFileNames {
  tString source;           // as the user knows it
  tString directory;        // for the output
  tString copy;             // the normalised copy, which never leaves the memory
  tString savedCopy;        // where a host may have it kept
  tString temporaryOutput;  // until the output is whole; without directory
  tString output;
  tString temporaryRule;    // until the dependency file is whole; without directory
  tString temporaryErrors;  // for a host that collects error texts
  tString errors;
  bool outputIsNamed = false;  // by the host
};

/// Temporary names contain the run's tag. `chosenOutput` is the output that the host has chosen; if
/// it is empty, the name follows from the source and the options.
tFileNames composeNames(const tRunOptions& options, const tString& source,
                        const tString& chosenOutput = {});

/// Whether the output, `followed` or not if it is a link, would replace the source, which is in the
/// file `readName`, or, if the host has named the output, any source at all.
bool outputIsSource(tDiskMan& disk, const tFileNames& names, const tString& readName,
                    bool followed);
/// Whether a name, `followed` or not if it is a link, has the extension of a source.
bool leadsToSource(tDiskMan& disk, const tString& name, bool followed);
