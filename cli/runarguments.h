#pragma once

#include <string>
#include <vector>

#include "cli/commandline.h"

/// What `line` asks for as one or more runs of the library, in order. A run searches the directory
/// where its outputs go first, which is that of the source unless -o names another one. So with -o
/// sources of different directories need runs of their own, each with its directory in front of
/// the include path.
std::vector<tCommandLine> runsOf(const tCommandLine& line);

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
  /// Spells what `line` asks for; `shippedHeaders` is searched last, unless it is empty.
  tRunArguments(const tCommandLine& line, const std::string& shippedHeaders);

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
