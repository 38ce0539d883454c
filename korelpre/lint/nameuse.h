#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "korelpre/lint/findings.h"
#include "korelpre/lint/foldedword.h"
#include "korelpre/text/words.h"

namespace precomp {

class tBaseXChg;
class tProgramFile;

/// Judges the words of a main file by the defines of its program: used above the #define, or
/// written in another case. A word that the file plainly uses as a variable of its own, a property
/// or a call is left alone.
class tNameUse {
 public:
  /// The file has been compiled, and nothing of it is entered yet. Both must outlive this object.
  tNameUse(tFindings& findings, tProgramFile& file);

  /// False when no word can be of interest.
  bool any() const { return !folded_.empty(); }
  /// A statement begins with this word; the others follow.
  void statementBegins(std::string_view word);
  /// The next word, a part of the file's text, and the line that it stands on.
  void word(std::string_view word, int line) {
    if (gate_[gateOf(word)]) passed(word, line);
  }
  /// A conditional asks for the name.
  void conditional(std::string_view name, int line);
  /// Tells what there is to tell.
  void finish();

 private:
  struct tDefine {
    std::string_view name;
    int line;  // in the main file; 0: it holds from the first line on
    const tBaseXChg* rule;
  };
  struct tUse {
    std::string_view word;
    int line;
    const tDefine* define;
  };

  void add(const tDefine& define);
  void addWaiting();
  void passed(std::string_view word, int line);
  bool declares(std::string_view word) const;
  bool isBlockParameter(std::string_view word) const;
  bool isOwnWord(std::string_view word) const;
  bool isRuleWord(const std::string& folded);
  void tellUse(const tUse& use);

  tFindings& findings_;
  tProgramFile& file_;
  std::bitset<65536> gate_;  // by the first two bytes of words
  std::unordered_map<std::string, std::vector<tDefine>> folded_;
  std::vector<tUse> uses_;
  std::unordered_set<std::string> variables_;  // folded
  std::unordered_set<std::string> ruleWords_;  // likewise
  bool rulesRead_ = false;
  eStatementWord statement_ = eStatementWord::kNone;
  std::string_view first_;
};

}  // namespace precomp
