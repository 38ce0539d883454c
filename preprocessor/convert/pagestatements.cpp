// The code of a block is copied as it stands, line by line, but for what cannot stand in the middle
// of a function: a LOCAL behind a statement leaves its names to the head, a bare RETURN returns the
// text. Such a LOCAL is written whole on its first line, as the preprocessor does with every
// statement.

#include "preprocessor/convert/pagestatements.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "korelpre/text/words.h"
#include "lib_base/misc.h"
#include "preprocessor/convert/pagelocals.h"

namespace {

using precomp::eStatementWord;
using precomp::statementWord;

constexpr std::string_view kConditionals[] = {"ifdef", "ifndef", "else", "endif"};

bool isConditional(std::string_view word) {
  return std::any_of(std::begin(kConditionals), std::end(kConditionals),
                     [&](std::string_view one) { return equalNoCase(one, word); });
}

bool declares(eStatementWord word) {
  return word == eStatementWord::kLocal || word == eStatementWord::kStatic ||
         word == eStatementWord::kDeclaration;
}

bool isFunction(eStatementWord word) {
  return word == eStatementWord::kFunction || word == eStatementWord::kMainFunction;
}

/// Whether the statement that begins with the piece of `code` is the head of a function.
bool opensFunction(tPageCode code) {
  int lines = 0;
  eStatementWord word = statementWord(code.piece());
  if (word == eStatementWord::kStatic || word == eStatementWord::kModifier) {
    if (code.nextStatementPiece(lines) != ePiece::kWord) return false;
    word = statementWord(code.piece());
  }
  return isFunction(word) && code.peek() == ePiece::kWord;
}

}  // namespace

std::size_t tPageStatements::writeBlock(std::size_t at) {
  const int begins = progress_.line();
  tPageCode code(page_, at, tPageCode::kStatements);
  if (writer_.onDirective() && code.peek() != ePiece::kClose) {
    progress_.fail(eMessage::kDirectiveNotAlone);
    return at;
  }
  writer_.beginStatement();
  copied_ = significant_ = code.end();
  startsStatement_ = true;
  loneQuote_ = false;
  ePiece piece = ePiece::kBlanks;
  while (piece != ePiece::kClose && !progress_.failed()) {
    piece = takePiece(code, code.next());
    if (piece == ePiece::kEnd) progress_.fail(begins, eMessage::kBlockNotClosed);
  }
  if (loneQuote_ && !writer_.onDirective()) progress_.fail(eMessage::kStringNotClosed);
  copyCode(significant_);
  writer_.openLine();
  return code.end();
}

/// Takes a piece, and with it others that belong to it. Returns the last one.
ePiece tPageStatements::takePiece(tPageCode& code, ePiece piece) {
  switch (piece) {
    case ePiece::kEnd:
    case ePiece::kClose:
    case ePiece::kBlanks:
    case ePiece::kComment:
      return piece;
    case ePiece::kLineEnd:
      takeLineEnd(code);
      return piece;
    case ePiece::kSeparator:
      startsStatement_ = !writer_.onDirective();
      return piece;
    case ePiece::kBlockComment:
      significant_ = code.end();
      return piece;
    case ePiece::kWord:
      if (startsStatement_) return takeFirstWord(code);
      break;
    case ePiece::kOther:
      if (startsStatement_ && code.startsLine() && code.piece() == "#") takeDirective(code);
      break;
    case ePiece::kString:
    case ePiece::kLoneQuote:
      loneQuote_ = loneQuote_ || piece == ePiece::kLoneQuote;
      break;
  }
  if (startsStatement_ && !writer_.onDirective()) executable_ = true;
  startsStatement_ = false;
  significant_ = code.end();
  return piece;
}

/// Copies code as it stands up to `end`.
void tPageStatements::copyCode(std::size_t end) {
  if (end > copied_) writer_.code(page_.substr(copied_, end - copied_));
  copied_ = std::max(copied_, end);
}

void tPageStatements::takeLineEnd(const tPageCode& code) {
  // A comment alone is left out: behind text of the line, ";" would make it a continuation.
  if (significant_ > copied_) copyCode(code.begin());
  copied_ = significant_ = code.end();
  progress_.endLine(code.continues());
  startsStatement_ = !code.continues();
  loneQuote_ = false;
}

ePiece tPageStatements::takeFirstWord(tPageCode& code) {
  const std::string_view word = code.piece();
  const eStatementWord meaning = statementWord(word);
  const bool wasExecutable = std::exchange(executable_, executable_ || !declares(meaning));
  const ePiece next = code.peek();
  startsStatement_ = false;
  if (meaning == eStatementWord::kLocal && next == ePiece::kWord && !code.sql()) {
    if (wasExecutable) return takeLocal(code);
    noteLocals(code);
  }
  significant_ = code.end();
  if (code.sql()) {
    code.setSql(!equalNoCase(word, "EndSql"));
  } else if (equalNoCase(word, "BeginSql")) {
    code.setSql(true);
  } else if (meaning == eStatementWord::kReturn && endsStatement(next)) {
    copyCode(code.end());
    writer_.code(" ");
    writer_.code(writer_.returned());
  } else if (opensFunction(code)) {
    progress_.fail(eMessage::kSecondFunction);
  }
  return ePiece::kWord;
}

/// The names of a LOCAL that stays where it is.
void tPageStatements::noteLocals(tPageCode code) {
  std::vector<tPageLocal> locals;
  int lines = 0;
  readPageLocals(code, locals, lines);
  for (const tPageLocal& local : locals) locals_.emplace(local.name.view());
}

/// Puts the names of a LOCAL into the head and assignments in its place.
ePiece tPageStatements::takeLocal(tPageCode& code) {
  copyCode(significant_);
  std::vector<tPageLocal> locals;
  int lines = 0;
  const ePiece piece = readPageLocals(code, locals, lines);
  for (const tPageLocal& local : locals) {
    if (locals_.emplace(local.name.view()).second) writer_.declare(local.declaration);
    if (local.value.empty()) continue;
    writer_.beginStatement();
    writer_.code(local.declaration.view().substr(0, local.name.size()));
    writer_.code(" := ");
    writer_.code(local.value);
  }
  writer_.beginStatement();
  progress_.endLines(lines);
  copied_ = significant_ = code.begin();
  if (piece != ePiece::kSeparator) return takePiece(code, piece);
  copied_ = significant_ = code.end();
  startsStatement_ = true;
  return piece;
}

/// Makes the line a directive's when the piece of `code`, a "#", begins one.
void tPageStatements::takeDirective(tPageCode code) {
  if (code.next() != ePiece::kWord) return;
  if (!writer_.beginDirective()) return progress_.fail(eMessage::kDirectiveNotAlone);
  if (!writer_.hasHead() && isConditional(code.piece())) {
    progress_.fail(eMessage::kEarlyConditional);
  }
}
