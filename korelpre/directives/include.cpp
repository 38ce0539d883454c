#include "korelpre/directives/include.h"

#include <algorithm>

#include "korelpre/directives/headerreader.h"
#include "korelpre/directives/programfile.h"

namespace precomp {

void carryOutInclude(tProgramFile& file, const tString& name, int line) {
  if (file.hasIncluded(name)) return;
  file.currentLine = std::max(line, 1);
  auto* const record = new tInclude(line, name, file);
  file.includes.add(record);
  if (tHeaderReader(file).include(*record)) {
    file.lines.entry(line).include = record;
    file.noteIncluded(name);
  } else {
    file.includes.removeAt(file.includes.indexOf(record));
  }
}

}  // namespace precomp
