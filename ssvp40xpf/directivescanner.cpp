#include "ssvp40xpf/directivescanner.h"

#include <algorithm>
#include <iterator>

#include "ssvp40xpf/builtintables.h"

namespace {

using namespace korelpre;

// What may follow the backslash at the end of a file name, and means nothing there.
constexpr unsigned char kBehindBackslash[] = {';', '"', '\'', '/', '&'};

void cut(const SSLexConsumer& consumer, SSLexMark& mark, std::size_t characters) {
  mark = consumer.markAt(consumer.start() + characters * consumer.unitSize());
}

/// Whether the character at a buffer index is `c`, in either byte order.
bool standsAt(const SSLexConsumer& consumer, std::size_t index, unsigned char c) {
  if (index + consumer.unitSize() > consumer.dataEnd()) return false;
  const unsigned char* unit = consumer.buffer() + index;
  if (consumer.unitSize() == 1) return unit[0] == c;
  return (unit[0] == c && unit[1] == 0) || (unit[0] == 0 && unit[1] == c);
}

/// Gives back what is no part of a file name: the line end behind a lone backslash, or a character
/// behind the name, together with the backslash before it unless that is the second of a pair.
void cutFileName(const SSLexConsumer& consumer, SSLexMark& mark) {
  if (mark.lineFeeds > 0) return cut(consumer, mark, 1);
  const std::size_t unit = consumer.unitSize();
  std::size_t end = mark.index - unit;
  if (std::none_of(std::begin(kBehindBackslash), std::end(kBehindBackslash),
                   [&](unsigned char c) { return standsAt(consumer, end, c); })) {
    return;
  }
  std::size_t backslashes = 0;
  while (standsAt(consumer, end - (backslashes + 1) * unit, '\\')) ++backslashes;
  if (backslashes % 2 != 0) end -= unit;
  mark = consumer.markAt(end);
}

}  // namespace

const SSLexTable& KorelPreLexClass::builtinTable() {
  static const SSLexTable table(builtin::korelpreDfa.lists, builtin::korelpreDfa.name);
  return table;
}

const char* KorelPreLexClass::tokenToConstChar(unsigned token) {
  if (token == sstable::kTokenEof) return "eof";
  if (token == sstable::kTokenError) return "%error";
  const char* spelling = tokenSpelling(token);
  return spelling != nullptr ? spelling : "SSLexTokenNotFound";
}

SSLexLexeme* KorelPreLexClass::complete(SSLexConsumer& consumer, unsigned token, SSLexMark& mark) {
  switch (token) {
    case kTokArrow:
      cut(consumer, mark, kArrowLength);
      break;
    case kTokNullStr:
      if (mark.lineFeeds > 0) cut(consumer, mark, kQuoteLength);
      break;
    case kTokFileName:
      cutFileName(consumer, mark);
      break;
    case kTokSpc:
    case kTokStar:
    case kTokStarAssign:
      if (opensStarComment(consumer, token, mark)) {
        pushExpressionList(*table()->expressionList(kListLineComment));
        return ignore(consumer, kTokDropStarComment, mark);
      }
      break;
    default:
      break;
  }
  followsComment_ = commentDropped_;
  commentDropped_ = false;
  return SSLex::complete(consumer, token, mark);
}

// The table recognises a comment line by the preceding line feed, which the first line lacks.
bool KorelPreLexClass::opensStarComment(const SSLexConsumer& consumer, unsigned token,
                                        SSLexMark& mark) const {
  if (consumer.startOffset() != 0 || consumer.startLine() != 1) return false;
  const std::size_t star = token == kTokSpc ? mark.index : consumer.start();
  if (!standsAt(consumer, star, '*')) return false;
  mark = consumer.markAt(star + consumer.unitSize());
  return true;
}

SSLexLexeme* KorelPreLexClass::ignore(SSLexConsumer& consumer, unsigned token, SSLexMark& mark) {
  if (token == kTokDropBlockClose) commentDropped_ = true;
  return SSLex::ignore(consumer, token, mark);
}
