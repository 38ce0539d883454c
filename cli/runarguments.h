#pragma once

#include <string>
#include <vector>

#include "cli/commandline.h"

/// The name by which the library knows the file that is called `name` on the command line.
std::string nameInRun(const std::string& name);

/// The argument vector of one run of the library.
///
/// The library tells its arguments apart by what they begin with and looks for its session options
/// anywhere in an argument, cuts some at blanks or semicolons and trims others. So each value is
/// written in a spelling that the library reads back unchanged, and where there is none the value
/// is refused: nothing is ever lost on the way.
class tRunArguments {
 public:
  /// Spells the sources of `line`, the last ones in the vector, and what decides about their text;
  /// `shippedHeaders` is searched last, unless it is empty. `tag` makes the names of temporary
  /// files differ.
  tRunArguments(const tCommandLine& line, const std::string& shippedHeaders,
                const std::string& tag = {});

  /// Empty, or why one of the values cannot be handed to the library.
  const std::string& refusal() const { return refusal_; }

  int count() const { return static_cast<int>(slots_.size()); }
  /// Valid as long as this object; slot 0 is the program's name.
  char** vector() { return slots_.data(); }

 private:
  void addFile(const std::string& name);
  void addDefine(const std::string& definition);
  void addIncludePath(const std::vector<std::string>& directories, const std::string& last);
  void refuse(const std::string& value, const char* reason);

  std::vector<std::string> texts_;
  std::vector<char*> slots_;
  std::string refusal_;
};
