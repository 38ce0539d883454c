#pragma once

#include <array>
#include <deque>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "korelpre/lint/suppressions.h"
#include "korelpre/lint/warnings.h"
#include "lib_base/stringz.h"

namespace precomp {

class tProgramFile;

/// A file of the program, as it is kept for warnings.
struct tLintedFile {
  tString name;  // as it was opened
  tString text;
  std::vector<tIncludePlace> includedFrom;  // innermost first
  tSuppressions suppressions;
  mutable std::vector<std::size_t> lineStarts;  // made when a line is asked for

  int mainLine() const { return includedFrom.empty() ? 0 : includedFrom.back().line; }
};

/// What a warning is about: bytes of a line. A column of 0 is not known.
struct tLintPlace {
  std::string_view file;  // as it was opened
  int line = 0;
  int column = 0;
  std::size_t size = 0;
};

/// Collects the warnings about one program.
class tFindings {
 public:
  explicit tFindings(const tWarningSet& wanted) : wanted_(wanted) {}

  bool wants(eWarning warning) const { return wanted_.has(warning); }
  /// Whether the next tell() of the warning is heard: it is wanted, and was not told a thousand
  /// times. Who asks and is refused counts as told.
  bool hears(eWarning warning);
  /// A file whose lines warnings may be about; they may come before it.
  void add(const tProgramFile& file);
  /// Null for a file that was not added.
  const tLintedFile* fileNamed(std::string_view name) const;
  /// The files, in the order in which they were read to their ends; the main file is the last.
  const std::deque<tLintedFile>& files() const { return files_; }

  /// Tells of something that is wanted. Long arguments are cut. `notes` come in front of the
  /// advice.
  void tell(eWarning warning, const tLintPlace& place,
            std::initializer_list<std::string_view> arguments, std::vector<tNote> notes = {});
  /// All that was told and that no comment switches off, in the order in which a reader of the
  /// program comes by. Afterwards there is nothing.
  std::vector<tDiagnosis> take();

 private:
  struct tFinding {
    eWarning warning;
    tDiagnosis diagnosis;
  };

  bool complete(tFinding& finding);

  tWarningSet wanted_;
  std::deque<tLintedFile> files_;
  std::unordered_map<std::string, std::size_t> byName_;
  std::vector<tFinding> found_;
  std::array<int, kWarningCount> told_{};
  // The line that was looked up last.
  const tLintedFile* lastFile_ = nullptr;
  int lastLine_ = 0;
  tString lastText_;
};

/// A line of a file, from 1, without its line end.
std::string_view lineOf(const tLintedFile& file, int line);

}  // namespace precomp
