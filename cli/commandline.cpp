#include "cli/commandline.h"

#include <algorithm>
#include <utility>

void tCommandLine::complain(std::string text) {
  if (complaint.empty()) complaint = std::move(text);
}

bool namesStandardOutput(const std::string& name) {
  return name == "-" || name == kStandardOutput;
}

bool tCommandLine::writesStandardOutput() const {
  if (writesNothing()) return false;
  return namesStandardOutput(output) || (output.empty() && readsStandardInput());
}

bool tCommandLine::readsStandardInput() const {
  return std::find(files.begin(), files.end(), "-") != files.end();
}
