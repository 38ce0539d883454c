#pragma once

#include <cstddef>
#include <deque>
#include <string_view>
#include <vector>

#include "lib_base/stringz.h"

namespace precomp {

struct tNameExpansion;

/// Calls of macros in the text of a statement: their arguments, and the text that replaces them.
class tMacroCalls {
 public:
  /// Reads the arguments of the call whose "(" is at `p`: names, literals and calls with one of
  /// "+", "-", "*", "/" between them. They refer to the text, which ends at `end` with a line end.
  /// Returns what is behind the ")", or null when there is anything else.
  const char* read(const char* p, const char* end);
  /// Forgets the arguments.
  void readNone() { arguments_.clear(); }
  std::size_t arguments() const { return arguments_.size(); }
  /// The text of a use with the arguments read last, as a line: valid until the next text of that
  /// level, from 0. `spacing` is what stands in front of the use.
  const tString& text(const tNameExpansion& expansion, std::string_view spacing, std::size_t level);

 private:
  std::vector<std::string_view> arguments_;
  std::deque<tString> texts_;  // by level
};

}  // namespace precomp
