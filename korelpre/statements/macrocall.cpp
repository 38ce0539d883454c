#include "korelpre/statements/macrocall.h"

#include <cstring>

#include "korelpre/tables/ruleindex.h"
#include "korelpre/text/cursor.h"

namespace precomp {

namespace {

// Behind the name, number or string at `p`; null when there is none.
const char* behindTerm(const char* p, const char* end) {
  if (isNameStart(*p)) return behindWord(p);
  if (isQuote(*p)) return behindClosedString(p, end);
  if (!isDigit(*p)) return nullptr;
  p = behindDigits(p);
  return *p == '.' && isDigit(p[1]) ? behindDigits(p + 1) : p;
}

}  // namespace

const char* tMacroCalls::read(const char* p, const char* end) {
  arguments_.clear();
  int depth = 0;
  for (const char* begin = nullptr;;) {
    p = skipBlanks(p + 1);
    if (begin == nullptr) begin = p;
    const bool name = isNameStart(*p);
    p = behindTerm(p, end);
    if (p == nullptr) return nullptr;
    const char* behind = p;
    p = skipBlanks(p);
    if (name && *p == '(') {
      ++depth;
      continue;
    }
    for (; *p == ')' && depth > 0; --depth) {
      behind = p + 1;
      p = skipBlanks(behind);
    }
    if (depth == 0 && (*p == ',' || *p == ')')) {
      arguments_.emplace_back(begin, behind);
      if (*p == ')') return p + 1;
      begin = nullptr;
    } else if (std::strchr("+-*/,", *p) == nullptr) {
      return nullptr;
    }
  }
}

const tString& tMacroCalls::text(const tNameExpansion& expansion, std::string_view spacing,
                                 std::size_t level) {
  if (texts_.size() == level) texts_.emplace_back();
  tString& made = texts_[level];
  made.clear();
  const std::string_view text = expansion.text;
  std::size_t from = 0;
  for (const tExpansionHole& hole : expansion.holes) {
    const bool argument = hole.argument != tExpansionHole::kSpacing;
    made.append(text.substr(from, hole.at - from));
    made.append(argument ? arguments_[hole.argument] : spacing);
    from = hole.at;
  }
  return made.append(text.substr(from)).append('\n');
}

}  // namespace precomp
