// A page is read once, from front to back. Text goes to the writer up to the next block, the code
// of a block of statements goes its own way (pagestatements). A value is written whole on its first
// line, as the preprocessor does with every statement.
//
// Note [lines of blocks]
// A line with nothing but statement blocks, comments and blanks on it gives no text, not even its
// line end, so that blocks can be laid out freely. To know such a line the rest of it is looked
// through when its first text is met.

#include "preprocessor/convert/page.h"

#include <algorithm>
#include <utility>

#include "korelpre/text/cursor.h"
#include "lib_base/pathname.h"
#include "preprocessor/convert/pagecode.h"
#include "preprocessor/convert/pagestatements.h"
#include "preprocessor/convert/sourcekind.h"
#include "preprocessor/copy/textlines.h"

using precomp::isBlank;
using precomp::isDigit;
using precomp::isLineEnd;
using precomp::isWordByte;

namespace {

constexpr std::string_view kOpen = "<%";
constexpr std::string_view kOpenValue = "<%=";
constexpr std::string_view kEscaped = "<%%";
constexpr std::string_view kOpenComment = "<%--";
constexpr std::string_view kCloseComment = "--%>";

/// The walk over a page.
class tPageWalk {
 public:
  tPageWalk(std::string_view page, const tPageForm& form)
      : page_(page), progress_(form), writer_(progress_.writer()), statements_(page, progress_) {}

  /// Goes on to the end of the page or its first error.
  void run();
  const tPageError& error() const { return progress_.error(); }
  tPageWriter& writer() { return writer_; }

 private:
  bool blockAt(std::size_t at) const;
  std::size_t behindBlock(std::size_t at) const;
  bool lineGivesText() const;

  void takeText();
  void putText(std::string_view text);
  void takeBlock();
  void takeComment();
  void takeValue();
  void takeStatements();

  const std::string_view page_;
  tPageProgress progress_;
  tPageWriter& writer_;
  tPageStatements statements_;
  std::size_t at_ = 0;

  // The line, as far as it is text.
  int judgedLine_ = 0;  // givesText_ is known of this one
  bool givesText_ = false;
  int blockLine_ = 0;  // the line on which a block of statements or a comment ended last
};

void tPageWalk::run() {
  while (at_ < page_.size() && !progress_.failed() && !writer_.tooLarge()) {
    blockAt(at_) ? takeBlock() : takeText();
  }
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
  bool blocks = blockLine_ == progress_.line();
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
  if (writer_.onDirective()) return progress_.fail(eMessage::kDirectiveNotAlone);
  writer_.text(text);
  statements_.setExecutable();
}

/// Takes the text up to the next block or behind the end of the line.
void tPageWalk::takeText() {
  writer_.openLine();
  if (judgedLine_ != progress_.line()) givesText_ = lineGivesText();
  judgedLine_ = progress_.line();
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
  if (ends) progress_.endLine();
}

// --- blocks -----------------------------------------------------------------------------------

void tPageWalk::takeBlock() {
  const std::string_view rest = page_.substr(at_, kOpenComment.size());
  if (rest == kOpenComment) return takeComment();
  rest.starts_with(kOpenValue) ? takeValue() : takeStatements();
}

void tPageWalk::takeComment() {
  const int begins = progress_.line();
  at_ += kOpenComment.size();
  while (!page_.substr(at_).starts_with(kCloseComment)) {
    if (at_ == page_.size()) return progress_.fail(begins, eMessage::kCommentNotClosed);
    const bool ends = isLineEnd(page_[at_]);
    at_ = ends ? behindLineEnd(page_, at_) : at_ + 1;
    if (ends) progress_.endLine();
  }
  at_ += kCloseComment.size();
  writer_.openLine();
  blockLine_ = progress_.line();
}

void tPageWalk::takeValue() {
  if (writer_.onDirective()) return progress_.fail(eMessage::kDirectiveNotAlone);
  tPageCode code(page_, at_ + kOpenValue.size(), tPageCode::kExpression);
  writer_.beginValue();
  int lines = 0;
  ePiece piece = code.nextStatementPiece(lines);
  if (piece == ePiece::kClose) return progress_.fail(eMessage::kEmptyValue);
  for (std::size_t end = code.begin(); piece != ePiece::kClose;) {
    if (piece == ePiece::kEnd) return progress_.fail(eMessage::kBlockNotClosed);
    if (piece == ePiece::kLoneQuote) {
      return progress_.fail(progress_.line() + lines, eMessage::kStringNotClosed);
    }
    if (code.begin() != end) writer_.code(" ");
    writer_.code(code.piece());
    end = code.end();
    piece = code.nextStatementPiece(lines);
  }
  writer_.endValue();
  at_ = code.end();
  progress_.endLines(lines);
  writer_.openLine();
  statements_.setExecutable();
  judgedLine_ = progress_.line();
  givesText_ = true;
}

void tPageWalk::takeStatements() {
  at_ = statements_.writeBlock(at_ + kOpen.size());
  blockLine_ = progress_.line();
}

}  // namespace

tString pageFunctionName(std::string_view base) {
  tString name;
  for (const char c : base) {
    if (name.empty() && isDigit(c)) name += '_';
    name += isWordByte(c) ? c : '_';
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
                              bool httpSend, tPageError& error, int& reason) {
  if (sourceKindOf(name).converter != eConverter::kPage) return eConversion::kNone;
  tString text;
  if (!readSourceText(files, name, text, reason)) {
    return reason == 0 ? eConversion::kNone : eConversion::kUnreadable;
  }
  tPathParts parts;
  SplitPath(name, parts);
  const eConversion result =
      HTMLParse(text, {pageFunctionName(parts.base), debugInfo, httpSend}, error);
  if (result == eConversion::kDone) keepConverted(files, name, text);
  return result;
}
