#pragma once

#include <string>
#include <vector>

#include "cli/archive.h"
#include "cli/commandline.h"
#include "cli/sourcerun.h"

/// What a run over one source reads, and what becomes of it.
struct tRunRecord : tSourceResult {
  std::vector<tMember> files;  // the source first; by the names that the run looks for
};

/// Preprocesses the source of `line` and writes no file; messages are in English, with details. Of
/// what it reads the texts are collected too when `collects` is set.
tRunRecord recordRun(const tCommandLine& line, bool collects);

/// Carries out `krpre bundle`: writes one archive with the source, all that it includes, the
/// options and the output or messages. Returns an exit status.
int writeBundle(const tCommandLine& given);
/// Writes a bundle of a run with the options of `line` to the file `name`. Returns what went wrong,
/// or an empty text.
std::string storeBundle(const tCommandLine& line, const tRunRecord& record,
                        const std::string& name);
/// Makes `line` the run that its bundle holds. Complains when there is none in it.
void loadBundle(tCommandLine& line);
/// Lets the files in archives of the include path be found. Complains of those that cannot be read.
void addArchives(tCommandLine& line);
