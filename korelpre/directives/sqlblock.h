#pragma once

#include <string_view>

#include "lib_base/list.h"
#include "lib_base/stringz.h"

namespace precomp {

class tSpcString;

/// What is known of the embedded SQL block that is being read.
struct tSqlBlock {
  int line = 0;     // of its BeginSql; 0 when there is none
  tString text;     // the lines so far
  tString columns;  // the column declarations so far
  bool noParser = false;

  /// Whether a line is one of the block's, not the one before it or the one that it begins on.
  bool holds(int ofLine) const { return line != 0 && ofLine > line; }
  /// Adds the tokens of one line to the text. False when the text gets too long.
  bool addLine(const tAutoArray<tSpcString>& tokens);
  /// Adds a column declaration: what stands in its braces. False when they get too long.
  bool addColumn(std::string_view name, std::string_view description);
  /// The call that the block stands for. `alias` is an expression.
  tString call(std::string_view alias) const;

 private:
  bool fits(std::size_t bytes) const;
};

}  // namespace precomp
