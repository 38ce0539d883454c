// The checks of a statement that is given by its tokens, part by part where ";" separates
// statements: brackets nest, quotes are closed, "@" stands where a reference may be passed.
//
// Note [strings of rules]
// A rule that quotes what it took writes the quotes as tokens of their own. From one such token to
// the next of the same text everything is a string: nothing in it is judged.

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "korelpre/statements/check.h"
#include "korelpre/text/linescan.h"
#include "korelpre/text/tokenise.h"
#include "korelpre/text/tokenkinds.h"

namespace precomp {

namespace {

bool startsWithQuote(std::string_view text) {
  return text[0] == '"' || text[0] == '\'';
}

// See note [strings of rules].
bool isQuoteOfRule(const tSpcString& token) {
  return token.size() == 1 && startsWithQuote(token) && token.kind() != kKindNullString;
}

// A string literal whose line ended before its closing quote.
bool isUnclosed(const tSpcString& token) {
  const std::string_view text = token;
  if (!startsWithQuote(text)) return false;
  return text.size() == 1 || text.back() != text.front();
}

// The tokens of a statement that are not empty. A token made from bare text, such as the value of a
// name on the command line, may hold several; it is taken apart.
class tTokenList {
 public:
  /// `tokens` becomes the list.
  tTokenList(const tTknString& statement, std::vector<const tSpcString*>& tokens)
      : tokens_(tokens) {
    tokens_.clear();
    tokens_.reserve(static_cast<std::size_t>(statement.count()));
    for (int i = 0; i < statement.count(); ++i) {
      const tSpcString& token = statement.tokens()[i];
      if (token.empty() || takeApart(token)) continue;
      tokens_.push_back(&token);
    }
  }
  std::size_t size() const { return tokens_.size(); }
  const tSpcString& operator[](std::size_t index) const { return *tokens_[index]; }

 private:
  struct tBareText {
    tString text;
    tTknString tokens;
  };

  bool takeApart(const tSpcString& token) {
    if (token.kind() != 0 || token.size() == 1 || isName(token)) return false;
    // Behind an opening only brackets, quotes, "@" and ";" have a bearing: not ".T." or "{|| ".
    const std::string_view bearing = "()[]\"'@;";
    if (!inOpening() && token.view().find_first_of(bearing) == std::string_view::npos) return false;
    auto bare = std::make_unique<tBareText>();
    bare->text.append(token).append("\r\n");
    const char* const start = bare->text.data();
    const char* const end = start + bare->text.size();
    const tScannedLine scanned = scanLine(start, end);
    if (scanned.kind != eLineKind::kPlain || scanned.end != end) return false;
    tokenisePlain(start, end, 0, bare->tokens);
    for (int i = 0; i < bare->tokens.count(); ++i) tokens_.push_back(&bare->tokens.getToken(i));
    bareTexts_.push_back(std::move(bare));
    return true;
  }

  // Whether the next token is one of the first three of its part.
  bool inOpening() const {
    constexpr std::size_t kOpening = 3;
    if (tokens_.size() < kOpening) return true;
    return std::any_of(tokens_.end() - kOpening, tokens_.end(),
                       [](const tSpcString* token) { return *token == ";"; });
  }

  std::vector<const tSpcString*>& tokens_;
  std::vector<std::unique_ptr<tBareText>> bareTexts_;
};

// "M->" and "FIELD->" are one token, but mean the same as a name and an arrow.
constexpr std::string_view kArrow = "->";
constexpr std::string_view kBlockCall = "__execSql";

// The column of a token if it stands on the given line of the file, otherwise 0.
int columnOn(int line, const tSpcString& token, const tSourceFile& file) {
  return static_cast<int>(token.line()) == line ? file.columnOf(token) : 0;
}

[[noreturn]] void raise(eSourceError error, int line, const tSpcString& token, tSourceFile& file) {
  tStatementPlace place = file.placeOf(line);
  place.column = columnOn(line, token, file);
  file.raise(error, place, nullptr);
}

}  // namespace

struct tStatementCheck::tPart {
  const tTokenList& tokens;
  std::size_t at;  // the next token
  int line;        // of the token before it
  tOpening opening{};
  tIfGroup group{};
  bool inGroup = false;       // the tokens belong to what follows an IF
  std::string_view before{};  // the token before; empty at the start of the part
  bool ended = false;

  std::string_view token(std::size_t index) const {
    return index < tokens.size() && tokens[index] != ";" ? tokens[index].view()
                                                         : std::string_view();
  }
  void readOpening();
  // Passes the rest of a string that a rule quoted; false when it does not end.
  bool passString(const tSpcString& quote);
};

void tStatementCheck::tPart::readOpening() {
  const tSpcString& first = tokens[at];
  if (first.kind() == kKindSql) {
    opening.word = kBlockCall;
    opening.next = "(";
    return;
  }
  opening.word = first;
  std::size_t next = at + 1;
  if (opening.word.size() > kArrow.size() && opening.word.ends_with(kArrow)) {
    opening.word.remove_suffix(kArrow.size());
    opening.next = kArrow;
  } else {
    opening.next = token(next++);
  }
  opening.third = opening.next.empty() ? std::string_view() : token(next);
  if (!isName(opening.word)) opening = {};
}

bool tStatementCheck::tPart::passString(const tSpcString& quote) {
  while (at < tokens.size()) {
    const tSpcString& token = tokens[at++];
    if (token == quote && isQuoteOfRule(token)) return true;
  }
  return false;
}

void tStatementCheck::check(const tTknString& statement, tSourceFile& file) {
  const tTokenList tokens(statement, tokens_);
  int line = statement.origin();
  for (std::size_t at = 0; at < tokens.size();) {
    tPart part{.tokens = tokens, .at = at, .line = line};
    checkPart(part, file);
    at = part.at;
    line = part.line;
  }
}

void tStatementCheck::checkPart(tPart& part, tSourceFile& file) {
  const tTokenList& tokens = part.tokens;
  if (tokens[part.at] == ";") {
    ++part.at;
    return;
  }
  part.readOpening();
  part.line = std::max(part.line, static_cast<int>(tokens[part.at].line()));
  tStatementPlace place = file.placeOf(part.line);
  if (part.at > 0) place.column = columnOn(part.line, tokens[part.at], file);
  const eStatementWord word = statementWord(part.opening.word);
  const bool judged = word != eStatementWord::kDebugMarker;
  const bool group = word == eStatementWord::kIf && part.opening.next == "(";
  brackets_.clear();
  while (part.at < tokens.size() && !part.ended) {
    const tSpcString& token = tokens[part.at++];
    part.line = std::max(part.line, static_cast<int>(token.line()));
    if (judged) {
      takeToken(part, token, file);
    } else {
      part.ended = token == ";";
    }
    part.inGroup = group;
  }
  if (!brackets_.empty())
    raise(eSourceError::kUnterminated, brackets_.back().line, *brackets_.back().token, file);
  judge(part.opening, word, group && part.group.isFunction(), place);
}

void tStatementCheck::takeToken(tPart& part, const tSpcString& token, tSourceFile& file) {
  const std::string_view text = token;
  part.ended = text == ";";
  if (part.ended) return;
  if (part.inGroup) part.group.take(text[0]);
  const std::string_view before = std::exchange(part.before, text);
  const int line = part.line;
  if (isQuoteOfRule(token) ? !part.passString(token) : isUnclosed(token)) {
    raise(eSourceError::kUnterminated, line, token, file);
  }
  if (text.size() != 1) return;
  switch (text[0]) {
    case '(':
    case '[':
      brackets_.push_back({&token, line});
      break;
    case ')':
    case ']':
      if (brackets_.empty() || *brackets_.back().token != (text[0] == ')' ? "(" : "[")) {
        raise(eSourceError::kUnterminated, line, token, file);
      }
      brackets_.pop_back();
      break;
    case '@': {
      const bool passed = before == "(" || before == "," || before == "{";
      const bool begins = before.empty() && file.isExtendedSource();
      if (!passed && !begins) raise(eSourceError::kInvalidReference, line, token, file);
      break;
    }
    default:
      break;
  }
}

}  // namespace precomp
