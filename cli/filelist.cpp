#include "cli/filelist.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "cli/inputtext.h"

namespace {

std::string faultOfListed(const std::string& name) {
  if (name.find('\0') != std::string::npos) {
    return "a file name holds a zero byte; use -0 if these separate the names";
  }
  if (name == "-") return "- (standard input) cannot be listed; write ./- for a file of that name";
  return faultOfName(name);
}

}  // namespace

std::string faultOfName(const std::string& name) {
  constexpr const char* kWhiteSpace = " \t\n\v\f\r";
  if (name.empty()) return "a file name is empty";
  // The library would trim it.
  if (name.find_last_not_of(kWhiteSpace) == name.size() - 1) return {};
  return "'" + name + "': a file name must not end in white space";
}

void addListedFiles(tCommandLine& line) {
  const std::string& list = line.fileList;
  if (list.empty()) return;
  if (list == "-" && line.readsStandardInput()) {
    return line.complain("standard input cannot be both the list of files and a source");
  }
  std::string text;
  constexpr const char* kWhat = "a list of files";
  const std::string trouble = list == "-" ? readToEnd(STDIN_FILENO, kStandardInput, kWhat, text)
                                          : readFile(list, kWhat, text);
  if (!trouble.empty()) return line.complain("--files-from: " + trouble);
  const char separator = line.zeroSeparated ? '\0' : '\n';
  int number = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find(separator, at), text.size());
    std::string name = text.substr(at, end - at);
    at = end + 1;
    ++number;
    const std::string fault = faultOfListed(name);
    if (!fault.empty()) {
      return line.complain((list == "-" ? kStandardInput : list) + ":" + std::to_string(number) +
                           ": " + fault);
    }
    line.files.push_back(std::move(name));
  }
}
