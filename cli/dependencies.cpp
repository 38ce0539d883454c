#include "cli/dependencies.h"

#include <cstddef>

namespace {

constexpr std::size_t kLineWidth = 76;

// Before a blank, make and ninja read two backslashes as one and an odd one as escaping the blank.
std::size_t backslashesBefore(const std::string& name, std::size_t at) {
  std::size_t count = 0;
  while (count < at && name[at - 1 - count] == '\\') ++count;
  return count;
}

}  // namespace

void tDependencies::add(const std::string& name) {
  if (known_.insert(name).second) names_.push_back(name);
}

std::string tDependencies::rule(const std::string& targets, bool phony) const {
  std::string text = targets + ':';
  std::size_t column = text.size();
  for (const std::string& name : names_) {
    const std::string written = nameInRule(name);
    if (column + 1 + written.size() > kLineWidth) {
      text += " \\\n";
      column = 0;
    }
    text += ' ' + written;
    column += 1 + written.size();
  }
  text += '\n';
  for (std::size_t i = 1; phony && i < names_.size(); ++i) text += nameInRule(names_[i]) + ":\n";
  return text;
}

const std::string* tDependencies::nameWithLineBreak() const {
  for (const std::string& name : names_) {
    if (name.find_first_of("\r\n") != std::string::npos) return &name;
  }
  return nullptr;
}

std::string nameInRule(const std::string& name) {
  std::string text;
  for (std::size_t i = 0; i < name.size(); ++i) {
    switch (name[i]) {
      case ' ':
      case '\t':
        text.append(backslashesBefore(name, i) + 1, '\\');
        break;
      case '#':
      case ':':
        text += '\\';
        break;
      case '$':
        text += '$';
        break;
      default:
        break;
    }
    text += name[i];
  }
  return text;
}
