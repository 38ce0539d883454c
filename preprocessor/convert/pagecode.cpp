#include "preprocessor/convert/pagecode.h"

#include <algorithm>

#include "korelpre/text/cursor.h"
#include "preprocessor/copy/textlines.h"

using precomp::isBlank;
using precomp::isLineEnd;
using precomp::isNameByte;
using precomp::isQuote;
using precomp::skipBlanks;

namespace {

constexpr std::string_view kClose = "%>";

/// Between ";" and the end of its line these leave it a continuation.
bool isBlankOrLineComment(ePiece piece) {
  return piece == ePiece::kBlanks || piece == ePiece::kComment;
}

}  // namespace

ePiece tPageCode::next() {
  begin_ = end_;
  startsLine_ = nextStartsLine_;
  const ePiece piece = read();
  if (!isBlankOrLineComment(piece)) last_ = piece;
  if (piece != ePiece::kBlanks) nextStartsLine_ = piece == ePiece::kLineEnd;
  return piece;
}

ePiece tPageCode::read() {
  if (end_ == page_.size()) return ePiece::kEnd;
  const char c = page_[end_];
  if (isLineEnd(c)) return readLineEnd();
  if (inComment_) return readBlockComment();
  if (isBlank(c)) {
    end_ = skipBlanks(page_, end_);
    return ePiece::kBlanks;
  }
  if (isNameByte(c)) {
    while (end_ < page_.size() && isNameByte(page_[end_])) ++end_;
    return ePiece::kWord;
  }
  if (at(kClose)) {
    end_ += kClose.size();
    return ePiece::kClose;
  }
  const bool starComment = c == '*' && startsLine_ && !continued_ && !sql_ && kind_ == kStatements;
  if (starComment || at("//") || at("&&")) return readComment();
  if (at("/*")) return readBlockComment();
  if (isQuote(c)) return readString();
  ++end_;
  return c == ';' ? ePiece::kSeparator : ePiece::kOther;
}

ePiece tPageCode::readLineEnd() {
  continued_ = last_ == ePiece::kSeparator;
  end_ = behindLineEnd(page_, end_);
  return ePiece::kLineEnd;
}

/// Moves the end to the first `mark` from `from` on, or to the end of the line when it holds none.
/// Reads nothing behind that, for a long line may hold many of these.
bool tPageCode::endAt(std::string_view mark, std::size_t from) {
  const char stops[] = {mark.front(), '\r', '\n', '\0'};
  for (;; ++from) {
    from = std::min(page_.find_first_of(stops, from), page_.size());
    const bool found = page_.substr(from).starts_with(mark);
    if (!found && from < page_.size() && page_[from] == mark.front()) continue;
    end_ = from;
    return found;
  }
}

ePiece tPageCode::readComment() {
  endAt(kClose, end_);
  return ePiece::kComment;
}

ePiece tPageCode::readBlockComment() {
  constexpr std::string_view kMark = "*/";
  inComment_ = !endAt(kMark, inComment_ ? end_ : end_ + kMark.size());
  if (!inComment_) end_ += kMark.size();
  return ePiece::kBlockComment;
}

ePiece tPageCode::readString() {
  const std::size_t start = end_;
  const bool closed = endAt(page_.substr(start, 1), start + 1);
  end_ = closed ? end_ + 1 : start + 1;
  return closed ? ePiece::kString : ePiece::kLoneQuote;
}

ePiece tPageCode::nextStatementPiece(int& lines) {
  for (;;) {
    const ePiece piece = next();
    if (isBlankOrLineComment(piece) || piece == ePiece::kBlockComment) continue;
    if (piece == ePiece::kLineEnd && (kind_ == kExpression || inComment_)) {
      ++lines;
      continue;
    }
    if (piece != ePiece::kSeparator) return piece;
    tPageCode ahead = *this;
    ePiece following = ahead.next();
    while (isBlankOrLineComment(following)) following = ahead.next();
    if (following != ePiece::kLineEnd) return piece;
    *this = ahead;
    ++lines;
  }
}

ePiece tPageCode::peek() const {
  tPageCode ahead = *this;
  int lines = 0;
  return ahead.nextStatementPiece(lines);
}
