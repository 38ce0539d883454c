// One lexeme is scanned in three steps: find the longest match of the current expression list,
// switch lists if the match requires it, and drop or deliver the text. If nothing matches, the text
// read so far, including the offending character, is passed to error().
//
// Text that is entirely in memory is scanned in place by the dense automaton; any other input is
// read character by character. Both find the same matches.
//
// Note [empty match]
// A start state may accept the empty string. Such a match consumes nothing, so a list that matches
// only the empty string would keep the scanner, or the parser that calls it, in an endless loop.
// Consecutive empty matches at one position are therefore limited to the number of lists in the
// table (each may lead to another list); the next one counts as no match.
#include "ssvp40xpf/sslex.h"

#include <algorithm>
#include <string>

#include "ssvp40xpf/sslexfileconsumer.h"
#include "ssvp40xpf/sstableformat.h"

namespace {

constexpr std::size_t kListCapacity = 16;

/// Ensures that the text after an error is read only once, however error handling ends.
class tErrorText {
 public:
  explicit tErrorText(SSLexConsumer& consumer)
      : consumer_(consumer), start_(consumer.startOffset()) {}
  ~tErrorText() {
    if (consumer_.startOffset() == start_) consumer_.discard();
  }
  tErrorText(const tErrorText&) = delete;
  tErrorText& operator=(const tErrorText&) = delete;

 private:
  SSLexConsumer& consumer_;
  std::size_t start_;
};

std::string printable(const SSLexLexeme& lexeme) {
  if (lexeme.isByteText()) return std::string(lexeme.text(), lexeme.length());
  std::string text;
  for (std::size_t i = 0; i < lexeme.length(); ++i) {
    const char16_t unit = lexeme.wideText()[i];
    text += unit <= 0xFF ? static_cast<char>(unit) : '?';
  }
  return text;
}

}  // namespace

SSLex::SSLex() : SSObject(ssCorrelator("SSLX")), lists_(kListCapacity, kListCapacity) {}

SSLex::SSLex(SSLexConsumer& consumer, const SSLexTable& table) : SSLex() {
  setConsumer(consumer);
  setTable(table);
}

SSLex::SSLex(const char* file, const char* table) : SSLex() {
  ownTable_ = std::make_unique<SSLexTable>(table);
  ownConsumer_ = std::make_unique<SSLexAutoFileConsumer>(file);
  setConsumer(*ownConsumer_);
  setTable(*ownTable_);
}

SSLex::~SSLex() = default;

void SSLex::setConsumer(SSLexConsumer& consumer) {
  consumer_ = &consumer;
  emptyMatches_ = 0;
}

void SSLex::setTable(const SSLexTable& table) {
  table_ = table.listCount() != 0 ? &table : nullptr;
  reset();
}

void SSLex::reset() {
  lists_.clear();
  clearLastException();
  emptyMatches_ = 0;
  current_ = nullptr;
  if (table_ != nullptr) pushExpressionList(*table_->expressionList(0));
}

SSLexLexeme* SSLex::operator++() {
  if (table_ == nullptr || consumer_ == nullptr) {
    raise(SSErrorLexIncomplete);
    return nullptr;
  }
  for (;;) {
    if (current_ == nullptr) {
      raise(SSErrorStackNoTop);
      return nullptr;
    }
    const SSLexFinal* decision = nullptr;
    SSLexMark mark;
    const eScan found = scan(decision, mark);
    if (found == kEndOfInput) return nullptr;
    if (found == kNoMatch) {
      SSLexLexeme* const lexeme = reportError();
      if (lexeme != nullptr || lastException() != nullptr) return lexeme;
      continue;
    }
    if (decision->switchesList() && !switchList(*decision)) return nullptr;
    SSLexLexeme* const lexeme = decision->drops() ? ignore(*consumer_, decision->token, mark)
                                                  : complete(*consumer_, decision->token, mark);
    if (lexeme == nullptr) continue;
    ++lexemeCount_;
    const bool plain = (decision->flags & (sstable::kLexType | sstable::kLexKeyword)) == 0;
    return plain ? lexeme : adjust(lexeme, *decision);
  }
}

SSLex::eScan SSLex::scan(const SSLexFinal*& decision, SSLexMark& mark) {
  const eScan found =
      consumer_->wholeInMemory() ? scanMemory(decision, mark) : scanStream(decision, mark);
  if (found != kMatch) return found;
  if (mark.index != consumer_->start()) {
    emptyMatches_ = 0;
    return kMatch;
  }
  if (++emptyMatches_ <= table_->listCount()) return kMatch;
  emptyMatches_ = 0;  // See note [empty match].
  consumer_->readTo(mark.index + consumer_->unitSize());
  return kNoMatch;
}

SSLex::eScan SSLex::scanMemory(const SSLexFinal*& decision, SSLexMark& mark) {
  const std::size_t start = consumer_->start();
  const std::size_t end = consumer_->dataEnd();
  if (start == end) {
    consumer_->readTo(end);
    return kEndOfInput;
  }
  const char* const text = reinterpret_cast<const char*>(consumer_->buffer());
  const SSLexMatch match = current_->dense().longestMatch(text + start, text + end);
  if (match.final == nullptr) {
    consumer_->readTo(std::min(static_cast<std::size_t>(match.reached - text) + 1, end));
    return kNoMatch;
  }
  decision = match.final;
  const auto index = static_cast<std::size_t>(match.end - text);
  if (decision->lineFeeds) {
    mark = consumer_->markAt(index);
  } else {
    mark = {index, 0, consumer_->startColumn() + static_cast<unsigned>(index - start)};
  }
  return kMatch;
}

SSLex::eScan SSLex::scanStream(const SSLexFinal*& decision, SSLexMark& mark) {
  consumer_->rewind();
  const SSLexIterator& automaton = current_->automaton();
  decision = current_->dense().emptyMatch();
  mark = consumer_->mark();
  mark.index = 0;  // counted from the start of the lexeme, which moves when the buffer shifts
  bool taken = false;
  for (unsigned state = 0; ++*consumer_ != 0;) {
    taken = true;
    state = automaton.next(state, consumer_->current());
    if (state == sstable::kNone) break;
    if (!automaton.final(state).accepts()) continue;
    decision = &automaton.final(state);
    mark = consumer_->mark();
    mark.index -= consumer_->start();
  }
  if (!taken) return kEndOfInput;
  if (decision == nullptr) return kNoMatch;
  const bool givesBack = (decision->flags & sstable::kLexGiveBack) != 0 && mark.index != 0;
  mark.index += consumer_->start();
  if (givesBack) mark = consumer_->markAt(mark.index - consumer_->unitSize());
  return kMatch;
}

bool SSLex::switchList(const SSLexFinal& decision) {
  if (decision.pushes()) return pushExpressionList(*table_->expressionList(decision.list));
  if (decision.replaces()) return gotoExpressionList(*table_->expressionList(decision.list));
  return popExpressionList();
}

SSLexLexeme* SSLex::reportError() {
  const tErrorText readOnce(*consumer_);
  SSLexLexeme* const lexeme = error(*consumer_);
  if (lexeme != nullptr) ++lexemeCount_;
  return lexeme;
}

SSLexLexeme* SSLex::adjust(SSLexLexeme* lexeme, const SSLexFinal& decision) {
  SSRef<SSLexLexeme> held(lexeme);
  if ((decision.flags & sstable::kLexType) != 0) lexeme->setType(decision.type);
  if ((decision.flags & sstable::kLexKeyword) != 0) {
    findKeyword(lexeme, decision.keywordTable, consumer_->type());
  }
  return held.release();
}

bool SSLex::pushExpressionList(const SSLexExpressionList& list) {
  if (!lists_.push(&list)) return false;
  current_ = &list;
  return true;
}

bool SSLex::popExpressionList() {
  if (!lists_.pop()) return false;
  current_ = nullptr;
  const SSLexExpressionList* const* const top = lists_.top();
  if (top == nullptr) return false;
  current_ = *top;
  return true;
}

bool SSLex::gotoExpressionList(const SSLexExpressionList& list) {
  const SSLexExpressionList** const top = lists_.top();
  if (top == nullptr) return false;
  current_ = *top = &list;
  return true;
}

bool SSLex::isCurrentExpressionList(unsigned index) const {
  return current_ != nullptr && current_->index() == index;
}

unsigned SSLex::getCurrentExpressionList() const {
  for (unsigned index = 0; table_ != nullptr && index < table_->listCount(); ++index) {
    if (table_->expressionList(index) == current_) return index;
  }
  raise(SSErrorCurrentList);
  return sstable::kNone;
}

SSLexLexeme* SSLex::makeLexeme(const SSLexConsumer& consumer, unsigned token,
                               const SSLexMark& mark) {
  SSLexLexeme* const lexeme = SSLexLexeme::make(consumer.lexemeText(), consumer.lexemeLength(mark),
                                                token, consumer.startLine(), consumer.startColumn(),
                                                consumer.type() != SSLexConsumer::wideType);
  lexeme->setAbsoluteOffset(consumer.startOffset());
  if (consumer.swapped()) lexeme->swapUnits();
  return lexeme;
}

SSLexLexeme* SSLex::error(SSLexConsumer& consumer) {
  const SSRef<SSLexLexeme> lexeme(makeLexeme(consumer, 0, consumer.mark()));
  raise(SSErrorToken, static_cast<long>(lexeme->line()), static_cast<long>(lexeme->offset()),
        printable(*lexeme).c_str());
  return nullptr;
}

const char* SSLex::tokenToConstChar(unsigned) {
  return "SSLexTokenNotFound";
}

SSLexLexeme* SSLex::ignore(SSLexConsumer& consumer, unsigned, SSLexMark& mark) {
  consumer.acceptTo(mark);
  return nullptr;
}

SSLexLexeme* SSLex::complete(SSLexConsumer& consumer, unsigned token, SSLexMark& mark) {
  SSLexLexeme* const lexeme = makeLexeme(consumer, token, mark);
  consumer.acceptTo(mark);
  return lexeme;
}

void SSLex::findKeyword(SSLexLexeme*, unsigned index, SSLexConsumer::SSLexConsumerType) {
  raise(SSErrorKeywordIndex, static_cast<long>(index));
}
