#include "preprocessor/run/dependencies.h"

#include <cstddef>

namespace {

constexpr std::size_t kLineWidth = 76;

// Before a blank, make and ninja read two backslashes as one and an odd one as escaping the blank.
std::size_t backslashesBefore(std::string_view name, std::size_t at) {
  std::size_t count = 0;
  while (count < at && name[at - 1 - count] == '\\') ++count;
  return count;
}

// The name as a rule spells it.
std::string nameInRule(std::string_view name) {
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

}  // namespace

void tDependencies::begin(std::string_view source) {
  names_.clear();
  known_.clear();
  add(source);
}

void tDependencies::add(std::string_view name) {
  const auto [known, isNew] = known_.emplace(name);
  if (!isNew) return;
  try {
    names_.push_back(*known);
  } catch (...) {
    known_.erase(known);  // or a header that is read once more would be missing in the rule
    throw;
  }
}

std::string tDependencies::rule(std::string_view output) const {
  std::string text = file_.targets.empty() ? nameInRule(output) : std::string(file_.targets.view());
  text += ':';
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
  for (std::size_t i = 1; file_.phony && i < names_.size(); ++i)
    text += nameInRule(names_[i]) + ":\n";
  return text;
}

const std::string* tDependencies::nameWithLineBreak() const {
  for (const std::string& name : names_) {
    if (name.find_first_of("\r\n") != std::string::npos) return &name;
  }
  return nullptr;
}
