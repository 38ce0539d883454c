#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "korelpre/errors/blockstack.h"
#include "korelpre/errors/diagnostic.h"

/// What is done to a line of a text so that the run gets over an error.
struct tLineRepair {
  std::string before;                  // put in front of the line
  std::optional<std::string> instead;  // stands in the place of the line
};

/// A text whose lines are repaired while their number stays. A line behind the last one may be
/// repaired too.
class tRepairedText {
 public:
  using tRepairs = std::map<int, tLineRepair>;  // by line, from 1

  explicit tRepairedText(std::string text);

  int count() const { return static_cast<int>(starts_.size()) - 1; }
  /// A line as it was, without its line end; empty where there is none.
  std::string_view original(int line) const;
  /// The line as it is now, without what was put in front of it.
  std::string_view line(int line) const;
  /// How many bytes were put in front of the line.
  int shift(int line) const;
  std::string text() const;

  const tRepairs& repairs() const { return repairs_; }
  void setRepairs(const tRepairs& repairs) { repairs_ = repairs; }
  void add(int line, const tLineRepair& repair);
  bool isRepaired() const { return !repairs_.empty(); }

 private:
  std::string text_;
  std::vector<std::size_t> starts_;  // of each line, and the size of the text
  tRepairs repairs_;
};

/// Lines of one text, and what is done to them.
using tRepair = std::vector<std::pair<int, tLineRepair>>;

/// The first and the last line of the statement or directive that a line belongs to.
struct tLineRange {
  int first;
  int last;
};
tLineRange statementAt(const tRepairedText& text, int line);

/// The lines of the body (function, method) around a line.
tLineRange bodyAt(const tRepairedText& text, int line);

/// Whether the line may be a command of a header: a word that no statement of the language begins
/// with, and a word or a value behind it; or "@".
bool mayBeCommand(std::string_view line);

/// What may get a run over an error in `text`, the likeliest first: what the statement opens is
/// kept, the statement goes, structures that are open get closed. Empty when nothing can.
/// `open` are the structures at the error, outermost first.
std::vector<tRepair> repairsOf(const precomp::tDiagnosis& error, const tRepairedText& text,
                               const std::vector<precomp::tBlockCmd>& open);
