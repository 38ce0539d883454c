#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

#include "korelpre/text/byteset.h"
#include "lib_base/stringz.h"

namespace precomp {

class tRuleSet;
class tXChgArray;
struct tIndexedName;
struct tNameExpansion;

/// Writes statements that are still spans of their source, without making tokens of them.
///
/// The text written is what the statement's tokens would give: comments and continuations become
/// the blanks between two tokens, blanks at the end vanish, and a name that a plain #define stands
/// for is replaced by what it finally becomes.
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
  bool passResult(tCursor& at);
  bool mayBeInTables(const char* word) const;
  bool passWord(tCursor& at);
  bool passSpecial(tCursor& at);
  void closeGap(tCursor& at);
  void openGap(tCursor& at, const char* gapEnd);
  bool replaceName(tCursor& at, const char* wordEnd, tIndexedName& name);
  const char* readArguments(const char* p, const char* end);
  bool replaceCall(tCursor& at, const char* word, tIndexedName& name);
  const tString& resultOf(const tNameExpansion& expansion, std::string_view spacing,
                          std::size_t level);

  tXChgArray& defines_;
  tXChgArray& translates_;
  tXChgArray& commands_;

  // What the tables' rules can start with, at one generation of them.
  std::uint64_t generation_ = 0;
  std::array<std::uint8_t, 256> bytes_{};
  tByteSet special_;
  std::size_t untouched_ = 0;
  std::vector<std::string_view> arguments_;  // of the call being read
  std::deque<tString> results_;              // of calls, the innermost last
};

}  // namespace precomp
