// A page is read once, from front to back. Text goes to the writer up to the next block; the code
// of a block is copied as it stands, line by line, but for what cannot stand in the middle of a
// function: a LOCAL behind a statement leaves its names to the head, a bare RETURN returns the
// text. A value, and such a LOCAL, is written whole on its first line, as the preprocessor does
// with every statement.
//
// Note [lines of blocks]
// A line with nothing but statement blocks, comments and blanks on it gives no text, not even its
// line end, so that blocks can be laid out freely. To know such a line the rest of it is looked
// through when its first text is met.

#include "preprocessor/convert/page.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "korelpre/text/statementwords.h"
#include "lib_base/misc.h"
#include "lib_base/pathname.h"
#include "preprocessor/convert/pagecode.h"
#include "preprocessor/convert/pagelocals.h"
#include "preprocessor/convert/sourcekind.h"

namespace {

using precomp::eStatementWord;
using precomp::statementWord;

constexpr std::string_view kConditionals[] = {"ifdef", "ifndef", "else", "endif"};

constexpr std::string_view kOpen = "<%";
constexpr std::string_view kOpenValue = "<%=";
constexpr std::string_view kEscaped = "<%%";
constexpr std::string_view kOpenComment = "<%--";
constexpr std::string_view kCloseComment = "--%>";

bool isLineEnd(char c) {
  return c == '\r' || c == '\n';
}

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

template <std::size_t count>
bool holds(const std::string_view (&words)[count], std::string_view word) {
  return std::any_of(std::begin(words), std::end(words),
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

/// The walk over a page.
class tPageWalk {
 public:
  tPageWalk(std::string_view page, const tPageForm& form) : page_(page), writer_(form) {}

  /// Goes on to the end of the page or its first error.
  void run();
  const tPageError& error() const { return error_; }
  tPageWriter& writer() { return writer_; }

 private:
  bool blockAt(std::size_t at) const;
  std::size_t behindBlock(std::size_t at) const;
  bool lineGivesText() const;
  void fail(int line, eMessage what);
  void endLine(bool goesOn = false);
  void endLines(int count);

  void takeText();
  void putText(std::string_view text);
  void takeBlock();
  void takeComment();
  void takeValue();
  void takeStatements();

  ePiece takePiece(tPageCode& code, ePiece piece);
  ePiece takeFirstWord(tPageCode& code);
  ePiece takeLocal(tPageCode& code);
  void noteLocals(tPageCode code);
  void takeDirective(tPageCode code);
  void takeLineEnd(const tPageCode& code);
  void copyCode(std::size_t end);

  const std::string_view page_;
  tPageWriter writer_;
  tPageError error_;
  std::size_t at_ = 0;
  int line_ = 1;
  bool executable_ = false;       // something before this place is executed
  std::set<std::string> locals_;  // declared before this place, in upper case

  // The line, as far as it is text.
  bool judged_ = false;
  bool givesText_ = false;
  bool afterBlock_ = false;  // a block of statements or a comment ends on it before this place

  // The block of statements.
  std::size_t copied_ = 0;       // its code has been written up to here
  std::size_t significant_ = 0;  // behind the last code of its line
  bool startsStatement_ = false;
  bool loneQuote_ = false;  // on its line
};

void tPageWalk::run() {
  while (at_ < page_.size() && error_.line == 0 && !writer_.tooLarge()) {
    blockAt(at_) ? takeBlock() : takeText();
  }
}

void tPageWalk::fail(int line, eMessage what) {
  if (error_.line == 0) error_ = {line, what};
}

void tPageWalk::endLine(bool goesOn) {
  writer_.endLine(goesOn);
  ++line_;
  judged_ = afterBlock_ = false;
}

void tPageWalk::endLines(int count) {
  for (; count > 0; --count) endLine();
}

// --- text -------------------------------------------------------------------------------------

/// "<%%" is no block but stands for the text "<%"; "<%%>" is an empty one.
bool tPageWalk::blockAt(std::size_t at) const {
  const std::string_view rest = page_.substr(at, 4);
  return rest.starts_with(kOpen) && (!rest.starts_with(kEscaped) || rest.ends_with('>'));
}

/// Where the text goes on behind the block that stands at `at`; npos when that is on another line.
std::size_t tPageWalk::behindBlock(std::size_t at) const {
  if (page_.substr(at).starts_with(kOpenComment)) {
    for (at += kOpenComment.size(); at < page_.size() && !isLineEnd(page_[at]); ++at) {
      if (page_.substr(at).starts_with(kCloseComment)) return at + kCloseComment.size();
    }
    return std::string_view::npos;
  }
  tPageCode code(page_, at + kOpen.size(), tPageCode::kStatements);
  for (;;) {
    const ePiece piece = code.next();
    if (piece == ePiece::kClose) return code.end();
    if (piece == ePiece::kLineEnd || piece == ePiece::kEnd) return std::string_view::npos;
  }
}

/// Whether there is text on the rest of the line. See note [lines of blocks].
bool tPageWalk::lineGivesText() const {
  bool blocks = afterBlock_;
  for (std::size_t at = at_; at < page_.size() && !isLineEnd(page_[at]);) {
    if (isBlank(page_[at])) {
      ++at;
      continue;
    }
    if (!blockAt(at) || page_.substr(at).starts_with(kOpenValue)) return true;
    at = behindBlock(at);
    if (at == std::string_view::npos) return false;
    blocks = true;
  }
  return !blocks;
}

void tPageWalk::putText(std::string_view text) {
  if (!givesText_) return;
  if (writer_.onDirective()) return fail(line_, eMessage::kDirectiveNotAlone);
  writer_.text(text);
  executable_ = true;
}

/// Takes the text up to the next block or behind the end of the line.
void tPageWalk::takeText() {
  writer_.openLine();
  if (!judged_) givesText_ = lineGivesText();
  judged_ = true;
  const std::size_t begin = at_;
  while (at_ < page_.size() && !isLineEnd(page_[at_]) && !blockAt(at_)) {
    if (page_.substr(at_).starts_with(kEscaped)) {
      at_ += kEscaped.size();
      return putText(page_.substr(begin, at_ - begin - 1));
    }
    at_ = std::min(page_.find_first_of("<\r\n", at_ + 1), page_.size());
  }
  const bool ends = at_ < page_.size() && isLineEnd(page_[at_]);
  if (ends) at_ = behindLineEnd(page_, at_);
  putText(page_.substr(begin, at_ - begin));
  if (ends) endLine();
}

// --- blocks -----------------------------------------------------------------------------------

void tPageWalk::takeBlock() {
  const std::string_view rest = page_.substr(at_, kOpenComment.size());
  if (rest == kOpenComment) return takeComment();
  rest.starts_with(kOpenValue) ? takeValue() : takeStatements();
}

void tPageWalk::takeComment() {
  const int begins = line_;
  at_ += kOpenComment.size();
  while (!page_.substr(at_).starts_with(kCloseComment)) {
    if (at_ == page_.size()) return fail(begins, eMessage::kCommentNotClosed);
    const bool ends = isLineEnd(page_[at_]);
    at_ = ends ? behindLineEnd(page_, at_) : at_ + 1;
    if (ends) endLine();
  }
  at_ += kCloseComment.size();
  writer_.openLine();
  afterBlock_ = true;
}

void tPageWalk::takeValue() {
  if (writer_.onDirective()) return fail(line_, eMessage::kDirectiveNotAlone);
  tPageCode code(page_, at_ + kOpenValue.size(), tPageCode::kExpression);
  writer_.beginValue();
  int lines = 0;
  ePiece piece = code.nextStatementPiece(lines);
  if (piece == ePiece::kClose) return fail(line_, eMessage::kEmptyValue);
  for (std::size_t end = code.begin(); piece != ePiece::kClose;) {
    if (piece == ePiece::kEnd) return fail(line_, eMessage::kBlockNotClosed);
    if (piece == ePiece::kLoneQuote) return fail(line_ + lines, eMessage::kStringNotClosed);
    if (code.begin() != end) writer_.code(" ");
    writer_.code(code.piece());
    end = code.end();
    piece = code.nextStatementPiece(lines);
  }
  writer_.endValue();
  at_ = code.end();
  endLines(lines);
  writer_.openLine();
  executable_ = judged_ = givesText_ = true;
}

void tPageWalk::takeStatements() {
  const int begins = line_;
  tPageCode code(page_, at_ + kOpen.size(), tPageCode::kStatements);
  if (writer_.onDirective() && code.peek() != ePiece::kClose) {
    return fail(line_, eMessage::kDirectiveNotAlone);
  }
  writer_.beginStatement();
  copied_ = significant_ = code.end();
  startsStatement_ = true;
  loneQuote_ = false;
  ePiece piece = ePiece::kBlanks;
  while (piece != ePiece::kClose && error_.line == 0) {
    piece = takePiece(code, code.next());
    if (piece == ePiece::kEnd) return fail(begins, eMessage::kBlockNotClosed);
  }
  if (loneQuote_ && !writer_.onDirective()) return fail(line_, eMessage::kStringNotClosed);
  copyCode(significant_);
  at_ = code.end();
  writer_.openLine();
  afterBlock_ = true;
}

// --- statements -------------------------------------------------------------------------------

/// Takes a piece, and with it others that belong to it. Returns the last one.
ePiece tPageWalk::takePiece(tPageCode& code, ePiece piece) {
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
void tPageWalk::copyCode(std::size_t end) {
  if (end > copied_) writer_.code(page_.substr(copied_, end - copied_));
  copied_ = std::max(copied_, end);
}

void tPageWalk::takeLineEnd(const tPageCode& code) {
  // A comment alone is left out: behind text of the line, ";" would make it a continuation.
  if (significant_ > copied_) copyCode(code.begin());
  copied_ = significant_ = code.end();
  endLine(code.continues());
  startsStatement_ = !code.continues();
  loneQuote_ = false;
}

ePiece tPageWalk::takeFirstWord(tPageCode& code) {
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
    fail(line_, eMessage::kSecondFunction);
  }
  return ePiece::kWord;
}

/// The names of a LOCAL that stays where it is.
void tPageWalk::noteLocals(tPageCode code) {
  std::vector<tPageLocal> locals;
  int lines = 0;
  readPageLocals(code, locals, lines);
  for (const tPageLocal& local : locals) locals_.emplace(local.name.view());
}

/// Puts the names of a LOCAL into the head and assignments in its place.
ePiece tPageWalk::takeLocal(tPageCode& code) {
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
  endLines(lines);
  copied_ = significant_ = code.begin();
  if (piece != ePiece::kSeparator) return takePiece(code, piece);
  copied_ = significant_ = code.end();
  startsStatement_ = true;
  return piece;
}

/// Makes the line a directive's when the piece of `code`, a "#", begins one.
void tPageWalk::takeDirective(tPageCode code) {
  if (code.next() != ePiece::kWord) return;
  if (!writer_.beginDirective()) return fail(line_, eMessage::kDirectiveNotAlone);
  if (!writer_.hasHead() && holds(kConditionals, code.piece()))
    fail(line_, eMessage::kEarlyConditional);
}

}  // namespace

tString pageFunctionName(std::string_view base) {
  tString name;
  for (const char c : base) {
    const bool digit = c >= '0' && c <= '9';
    const bool letter = upperAscii(c) >= 'A' && upperAscii(c) <= 'Z';
    if (name.empty() && digit) name += '_';
    name += digit || letter ? c : '_';
  }
  return name.empty() ? tString("_") : name;
}

eConversion HTMLParse(tString& text, const tPageForm& form, tPageError& error) {
  tPageWalk walk(text, form);
  walk.run();
  error = walk.error();
  if (error.line != 0) return eConversion::kError;
  tString result = walk.writer().finish();
  if (walk.writer().tooLarge()) return eConversion::kTooLarge;
  text = std::move(result);
  return eConversion::kDone;
}

eConversion DoKRHPreprocessor(tDiskManOverlay& files, const tString& name, bool debugInfo,
                              bool httpSend, tPageError& error) {
  tString text;
  if (sourceKindOf(name).converter != eConverter::kPage || !readSourceText(files, name, text)) {
    return eConversion::kNone;
  }
  tPathParts parts;
  SplitPath(name, parts);
  const eConversion result =
      HTMLParse(text, {pageFunctionName(parts.base), debugInfo, httpSend}, error);
  return result == eConversion::kDone ? keepConverted(files, name, text) : result;
}
