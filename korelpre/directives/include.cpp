#include "korelpre/directives/include.h"

#include <algorithm>

#include "korelpre/directives/headerreader.h"
#include "korelpre/directives/programfile.h"

namespace precomp {

tInclude* beginInclude(tProgramFile& file, const tString& name, int line) {
  if (file.hasIncluded(name)) {
    tSourceWatcher* const watcher = file.shared().watcher;
    if (watcher != nullptr) watcher->includeSkipped(file, name, line);
    return nullptr;
  }
  file.currentLine = std::max(line, 1);
  auto* const record = new tInclude(line, name, file);
  file.includes.add(record);
  return record;
}

void endInclude(tProgramFile& file, tInclude& record, bool done) {
  if (done) {
    file.lines.entry(record.line()).include = &record;
    file.noteIncluded(record.name());
  } else {
    file.includes.removeAt(file.includes.indexOf(&record));
  }
}

void carryOutInclude(tProgramFile& file, const tString& name, int line) {
  tInclude* const record = beginInclude(file, name, line);
  if (record != nullptr) endInclude(file, *record, tHeaderReader(file).include(*record));
}

}  // namespace precomp
