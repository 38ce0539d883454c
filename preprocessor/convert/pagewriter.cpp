// Text becomes a sum of string literals and of Chr(n) for line ends. A literal is quoted by
// whichever quote does not stand in it; where both do, the text is cut in two. It is also cut where
// it would be so long that a compiler might refuse it, and within the words that other steps of
// the run replace wherever they stand.

#include "preprocessor/convert/pagewriter.h"

#include <algorithm>

#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"
#include "preprocessor/convert/sourcekind.h"
#include "preprocessor/copy/debugsync.h"
#include "preprocessor/copy/normalise.h"

namespace {

constexpr std::size_t kLongestLiteral = 2000;
constexpr std::size_t kLongestSum = 4000;
constexpr std::string_view kJoint = "; ";

/// Words that are replaced in the whole source or the whole result, in strings too: by the
/// normaliser, as markers of the debugger.
constexpr std::string_view kReplaced[] = {kTimeStamp, kDialogBegin, kSynchronizeMarker,
                                          kIgnoreMarker};

/// Cuts `text` within the first occurrence of `word`.
void cutWithin(std::string_view word, std::string_view& text) {
  const std::size_t at = findText(text, word);
  if (at != std::string_view::npos) text = text.substr(0, at + 1);
}

/// How much of `text`, which does not begin with a line end, one literal holds; and its quote.
std::size_t literalSize(std::string_view text, char& quote) {
  text = text.substr(0, kLongestLiteral);
  const std::size_t doubleAt = std::min(text.find('"'), text.size());
  const std::size_t singleAt = std::min(text.find('\''), text.size());
  quote = doubleAt < singleAt ? '\'' : '"';
  text = text.substr(0, std::max(doubleAt, singleAt));
  text = text.substr(0, text.find_first_of("\r\n"));
  for (const std::string_view word : kReplaced) cutWithin(word, text);
  // So is the name of the normalised copy.
  for (const tSourceKind& kind : sourceKinds()) {
    if (kind.converter == eConverter::kPage) cutWithin(kind.temporary, text);
  }
  return text.size();
}

}  // namespace

void tPageWriter::put(std::string_view text) {
  const std::size_t size = output_.size() + line_.size() + declared_.size();
  if (text.size() > tString::maxSize() - std::min(size, tString::maxSize())) tooLarge_ = true;
  if (!tooLarge_) line_ += text;
}

// --- lines ------------------------------------------------------------------------------------

void tPageWriter::endLine(bool goesOn) {
  openLine();
  ended_ = true;
  goesOn_ = goesOn;
}

/// Begins a new line when the last one is complete.
void tPageWriter::openLine() {
  if (ended_) flushLine();
}

void tPageWriter::flushLine() {
  endText();
  if (!headWritten_ && !directive_) writeHead();
  const bool generated = form_.debugInfo && !line_.empty() && !holdsCode_ && !directive_;
  tString before;
  if (lastWasGenerated_ && !generated) {
    before = tString::format("%s%s%d)", kJoint.data(), kSynchronizeMarker.data(), lines_ + 1);
  }
  if (lines_ > 0) before += '\n';
  if (generated) before.append(kIgnoreMarker).append(kJoint);
  line_.insert(0, before);
  if (holdsHead_) headEnd_ += output_.size() + before.size();
  output_ += line_;

  lastWasGenerated_ = generated;
  ++lines_;
  line_.clear();
  ended_ = holdsCode_ = holdsHead_ = newStatement_ = false;
  directive_ = directive_ && goesOn_;
}

void tPageWriter::writeHead() {
  headWritten_ = holdsHead_ = true;
  tString head = tString("Function ") += form_.function;
  head += "()";
  if (!form_.httpSend) head += "; Local __cPage := \"\"";
  put(head);
  headEnd_ = line_.size();
}

void tPageWriter::declare(std::string_view declaration) {
  const bool first = form_.httpSend && declared_.empty();
  declared_.append(first ? "; Local " : ", ").append(declaration);
}

tString tPageWriter::finish() {
  endText();
  if (directive_) flushLine();
  separate();
  put("Return ");
  put(returned());
  flushLine();
  put("\n");
  output_ += line_;
  if (!tooLarge_) output_.insert(headEnd_, declared_);
  return std::move(output_);
}

// --- what stands on a line --------------------------------------------------------------------

/// Makes room for a statement behind what the line holds.
void tPageWriter::separate() {
  endText();
  if (!headWritten_ && !directive_) writeHead();
  if (!line_.empty()) put(kJoint);
  newStatement_ = false;
}

void tPageWriter::beginStatement() {
  openLine();
  newStatement_ = true;
}

void tPageWriter::code(std::string_view code) {
  openLine();
  const std::size_t start = precomp::skipBlanks(code, 0);
  if (start == code.size() && (newStatement_ || line_.empty())) return;
  if (newStatement_ || line_.empty()) {
    const bool fresh = headWritten_ && line_.empty();
    separate();
    if (!fresh) code.remove_prefix(start);
  }
  put(code);
  holdsCode_ = true;
}

bool tPageWriter::beginDirective() {
  openLine();
  if (!line_.empty()) return false;
  directive_ = true;
  return true;
}

bool tPageWriter::onDirective() {
  openLine();
  return directive_;
}

void tPageWriter::beginValue() {
  beginStatement();
  separate();
  put(form_.httpSend ? "HTTPSend(" : "__cPage += (");
  holdsCode_ = true;
}

void tPageWriter::endValue() {
  openLine();
  put(")");
  holdsCode_ = true;
}

void tPageWriter::endText() {
  if (textAt_ > 0 && form_.httpSend) put(")");
  textAt_ = 0;
}

/// Adds a term to the sum of the open statement, or begins one.
void tPageWriter::addTerm(std::string_view term) {
  if (textAt_ > 0 && line_.size() - textAt_ > kLongestSum) endText();
  if (textAt_ > 0) {
    put(" + ");
  } else {
    separate();
    put(form_.httpSend ? "HTTPSend(" : "__cPage += ");
    textAt_ = line_.size();
  }
  put(term);
}

void tPageWriter::text(std::string_view text) {
  openLine();
  tString literal;
  while (!text.empty() && !tooLarge_) {
    if (text[0] == '\r' || text[0] == '\n') {
      addTerm(text[0] == '\r' ? "Chr(13)" : "Chr(10)");
      text.remove_prefix(1);
      continue;
    }
    char quote = '"';
    const std::size_t size = literalSize(text, quote);
    literal.clear();
    literal.append(quote).append(text.substr(0, size)).append(quote);
    addTerm(literal);
    text.remove_prefix(size);
  }
}
