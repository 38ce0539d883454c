#pragma once

#include <string_view>
#include <vector>

#include "korelpre/errors/blockstack.h"
#include "korelpre/text/cursor.h"
#include "korelpre/text/statementopening.h"
#include "korelpre/text/words.h"

namespace precomp {

class tSpcString;
class tTknString;

/// Checks the statements of a program in their final form, in the order in which they are written:
/// control structures, function bodies and what may stand where. One checker goes over a main file
/// and all that it includes. A finding leaves as the numbered error of the file and line.
class tStatementCheck {
 public:
  /// Forgets everything; to be called before a program.
  void begin();
  /// The structures that are open, outermost first.
  const std::vector<tBlockCmd>& openBlocks() const { return structures_.open(); }
  /// To be called behind the last statement of a program.
  void finish();

  /// Checks a statement that is written out: `text` begins with it and ends with a line feed. Its
  /// brackets nest, its quotes are closed, and it holds no "@" that could be wrong and no ";" that
  /// separates statements. Behind the first `untouched` bytes tokens may look like one although
  /// they are two. False when that has a bearing, and only check() can tell.
  bool checkPlain(std::string_view text, std::size_t untouched, tSourceFile& file, int line);
  /// Checks a statement by its tokens. `line` is that of tokens that have none.
  void check(const tTknString& statement, tSourceFile& file);

 private:
  // `ifFunction`: an IF is the function of that name.
  void judge(const tOpening& opening, eStatementWord word, bool ifFunction,
             const tStatementPlace& place);
  bool judgePlain(std::string_view text, const char* first, std::size_t untouched,
                  tSourceFile& file, int line);
  bool startsBody(eStatementWord word, const tOpening& opening, const tStatementPlace& place) const;
  bool declares(eStatementWord word, const tOpening& opening, const tStatementPlace& place);
  bool useStructures(eStatementWord word, const tOpening& opening, const tStatementPlace& place);
  void noteExecutable(bool needsBody, const tStatementPlace& place);
  void openBody(const tStatementPlace& place);
  // `next`: the function in front of which all must be closed; null: there is none.
  void raiseUnclosed(const tStatementPlace* next) const;
  [[noreturn]] void raiseMisfit(eSourceError error, bool leaves,
                                const tStatementPlace& place) const;
  [[noreturn]] void raiseInBody(eSourceError error, const tStatementPlace& place) const;

  // One part of a statement that is given by its tokens.
  struct tPart;
  void checkPart(tPart& part, tSourceFile& file);
  void takeToken(tPart& part, const tSpcString& token, tSourceFile& file);

  tPrgStack structures_;
  tPrgStack bodies_;             // at most one: a body ends where the next begins
  bool executableSeen_ = false;  // in the body
  tStatementPlace misplaced_;    // the first statement before all bodies that belongs into one
  // Whether a statement that begins with a word of no meaning is just an executable one more.
  bool settled_ = false;
  struct tOpenBracket {
    const tSpcString* token;
    int line;
  };
  std::vector<tOpenBracket> brackets_;     // of a part
  std::vector<const tSpcString*> tokens_;  // of the last statement that was given by them
};

inline bool tStatementCheck::checkPlain(std::string_view text, std::size_t untouched,
                                        tSourceFile& file, int line) {
  const char* const p = skipBlanks(text.data());
  if (*p == '\n') return true;
  if (settled_ && !mayBeStatementWord(p[0], p[1])) {
    executableSeen_ = true;
    return true;
  }
  return judgePlain(text, p, untouched, file, line);
}

}  // namespace precomp
