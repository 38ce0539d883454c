#include "korelpre/expansion.h"
#include "korelpre/korelprecls.h"

namespace precomp {

namespace {

// A statement may not grow past these while it is rewritten.
constexpr int kMostTokens = 100000;
constexpr std::size_t kLargestStatement = std::size_t{1} << 20;

bool tooLarge(const tTknString& statement) {
  return statement.count() > kMostTokens || statement.textSize() > kLargestStatement;
}

}  // namespace

void KorelPreYaccClass::processLine(tTknString& statement, tString& output) {
  for (int rewrites = 0; rewriteOnce(statement);) {
    if (++rewrites > kMostRewrites || tooLarge(statement)) {
      exceptionAt(2078, statement.origin(), nullptr);
    }
  }
  statement.appendText(output);
  output.append('\n');
}

// Applies the first rule that matches anywhere. False when none does.
bool KorelPreYaccClass::rewriteOnce(tTknString& statement) {
  for (int i = 0; i < statement.count(); ++i) {
    if (applyAt(*defines(), statement, i)) return true;
  }
  return false;
}

bool KorelPreYaccClass::applyAt(tXChgArray& table, tTknString& statement, int index) {
  const tString& word = statement.getToken(index);
  if (word.empty() || table.index().find(word) == nullptr) return false;
  int first = 0;
  int last = 0;
  return table.Find(word, first, last, 0) != 0 &&
         table.replace(this, first, last, index, &statement);
}

}  // namespace precomp
