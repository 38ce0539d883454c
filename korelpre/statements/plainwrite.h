#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "korelpre/statements/macrocall.h"
#include "korelpre/text/byteset.h"
#include "lib_base/stringz.h"

namespace precomp {

class tRuleSet;
class tXChgArray;
struct tIndexedName;

/// Writes statements that are still spans of their source, without making tokens of them.
///
/// The text written is what the statement's tokens would give: comments and continuations become
/// the blanks between two tokens, blanks at the end vanish, and names with a #define, calls of
/// macros among them, are replaced by what they finally become.
class tPlainWriter {
 public:
  /// `rules` must outlive the writer.
  explicit tPlainWriter(tRuleSet& rules);

  /// Appends the statement that starts at `start` (a logical line that scanLine called plain) and a
  /// line feed to `output`. Returns false, with `output` as it was, when a rule may apply that only
  /// the token by token rewriting can judge.
  bool write(const char* start, const char* end, tString& output);
  /// How much of the last statement, from its beginning, was written as it stands in the source. A
  /// name that was replaced behind that may have made tokens look like one although they are two.
  std::size_t untouched() const { return untouched_; }

 private:
  struct tText {
    const char* start;
    const char* end;
  };
  struct tCursor;

  void learnRules();
  bool mayOpenArguments(const char* p, const tCursor& at);
  bool mayStartCommand(const char* start, const char* end);
  bool pass(tCursor& at);
  bool mayBeInTables(const char* word) const;
  bool passWord(tCursor& at);
  bool passSpecial(tCursor& at);
  void closeGap(tCursor& at);
  bool openGap(tCursor& at, const char* gapEnd);
  bool replaceUse(tCursor& at, const char* word, tIndexedName& name);
  bool passResult(tCursor& at, std::string_view result);

  tXChgArray& defines_;
  tXChgArray& translates_;
  tXChgArray& commands_;

  // What the tables' rules can start with, at one generation of them.
  std::uint64_t generation_ = 0;
  std::array<std::uint8_t, 256> bytes_{};
  tByteSet special_;
  std::size_t untouched_ = 0;
  tMacroCalls calls_;
};

}  // namespace precomp
