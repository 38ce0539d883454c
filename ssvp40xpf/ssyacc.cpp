#include "ssvp40xpf/ssyacc.h"

#include <algorithm>
#include <utility>

#include "ssvp40xpf/sstableformat.h"

namespace {

constexpr const char* kEndText = "eof";
constexpr unsigned kNowhere = 0xFFFFFFFFu;

// Note [runaway reductions]
// Between two shifts, a valid table reduces symbols on the stack or pushes empty symbols, whose
// number the grammar bounds. A table that is damaged or made from a cyclic grammar may reduce
// endlessly. Reductions that shrink the stack to a new low since the last shift count as progress;
// the number of all others is limited.
constexpr std::size_t kReductionsBase = 4096;
constexpr std::size_t kReductionsPerState = 64;

}  // namespace

SSYacc::SSYacc()
    : SSObject(ssCorrelator("SSYC")),
      endOfInput_(SSLexLexeme::make(kEndText, 3, sstable::kTokenEof, kNowhere, kNowhere)),
      stack_(kStackCapacity, kStackCapacity) {}

SSYacc::SSYacc(SSLex& lex, const SSYaccTable& table) : SSYacc() {
  setLex(lex);
  setTable(table);
}

SSYacc::SSYacc(SSLex& lex, const char* table) : SSYacc(table) {
  setLex(lex);
}

SSYacc::SSYacc(const char* table) : SSYacc() {
  ownTable_ = std::make_unique<SSYaccTable>(table);
  setTable(*ownTable_);
}

SSYacc::~SSYacc() = default;

void SSYacc::setTable(const SSYaccTable& table) {
  table_ = table.stateCount() != 0 ? &table : nullptr;
  started_ = false;
}

void SSYacc::reset() {
  lookahead_.reset();
  cache_.clear();
  last_.reset();
  stack_.clear();
  state_ = 0;
  action_ = 0;
  reducing_ = 0;
  shiftedSinceError_ = 0;
  endMet_ = error_ = abort_ = paused_ = false;
  lowest_ = reductions_ = 0;
  clearLastException();
  started_ = true;
  last_.reset(stackElement());
  if (last_) stack_.push(last_);
  init();
}

int SSYacc::parse() {
  if (table_ == nullptr) {
    raise(SSErrorTableMissing);
    return kParseFailed;
  }
  if (!started_) reset();
  const bool begins = !std::exchange(paused_, false);
  if (begins && (!readLookahead() || abort_)) return kParseFailed;
  for (;;) {
    const eStep result = step();
    if (result == kAccepted) return _accept();
    if (result == kFailed || abort_) return kParseFailed;
    if (paused_) return kParsePaused;
  }
}

SSYacc::eStep SSYacc::step() {
  switch (action_ & ~sstable::kActionOperand) {
    case sstable::kActionShift:
      return doShift();
    case sstable::kActionReduce:
      return doReduce();
    case sstable::kActionAccept:
      return kAccepted;
    case 0:
      return doError();
    default:
      raise(SSErrorParseTable);
      return kFailed;
  }
}

SSYacc::eStep SSYacc::doShift() {
  SSRef<SSYaccStackElement> element(shift(*lookahead_));
  if (!element) return kFailed;
  state_ = action_ & sstable::kActionOperand;
  element->setLexeme(lookahead_.get());
  element->setState(state_);
  last_ = element;
  if (!stack_.push(std::move(element))) return kFailed;
  lowest_ = stack_.depth();
  reductions_ = 0;
  if (!readLookahead()) return kFailed;
  ++shiftedSinceError_;
  return kContinue;
}

SSYacc::eStep SSYacc::doReduce() {
  const unsigned number = action_ & sstable::kActionOperand;
  const SSYaccProduction production = table_->production(number);
  if (production.size > stack_.depth()) {  // a damaged table, or no reset after an error
    raise(SSErrorStackPop);
    return kFailed;
  }
  reducing_ = production.size;
  SSRef<SSYaccStackElement> element(reduce(number, production.size));
  reducing_ = 0;
  if (!element) return kFailed;
  last_ = element;
  if (!stack_.pop(production.size)) return kFailed;
  const SSRef<SSYaccStackElement>* const top = stack_.top();
  if (top == nullptr) return kFailed;
  const unsigned base = stateOf(*top);
  const unsigned target = base == sstable::kNone ? base : table_->gotoState(base, production.left);
  if (target == sstable::kNone) {
    raise(SSErrorGoto, static_cast<long>(production.left));
    return kFailed;
  }
  state_ = target;
  element->setState(target);
  if (!stack_.push(std::move(element)) || reductionsRunAway()) return kFailed;
  lookUpAction();
  return kContinue;
}

bool SSYacc::reductionsRunAway() {
  if (stack_.depth() < lowest_) {
    lowest_ = stack_.depth();
    reductions_ = 0;
    return false;
  }
  if (++reductions_ <= kReductionsBase + kReductionsPerState * table_->stateCount()) return false;
  raise(SSErrorParseTable);  // See note [runaway reductions].
  return true;
}

SSYacc::eStep SSYacc::doError() {
  error_ = true;
  ClearprintCmdList();
  // Kept on purpose: the slots keep their references, so the elements stay alive until later pushes
  // overwrite them or the parser is reset or destroyed.
  while (SSRef<SSYaccStackElement>* const slot = stack_.takeOff()) (*slot)->deleteInstr();
  const SSRef<SSLexLexeme> met = lookahead_;
  if (error(state_, *met) != 0) return kFailed;
  shiftedSinceError_ = 0;
  lowest_ = stack_.depth();
  reductions_ = 0;
  return kContinue;
}

bool SSYacc::readLookahead() {
  SSRef<SSLexLexeme> lexeme = cache_.take();
  if (lexeme) {
    larLookahead(*lexeme);
  } else if (endMet_) {
    raise(SSErrorPastEof);
    return false;
  } else {
    lexeme.reset(nextLexeme());
    if (!lexeme) {
      endMet_ = true;
      lexeme = endOfInput_;
    }
  }
  lookahead_ = std::move(lexeme);
  lookUpAction();
  return true;
}

unsigned SSYacc::stateOf(const SSRef<SSYaccStackElement>& element) const {
  return element->state() < table_->stateCount() ? element->state() : sstable::kNone;
}

SSYaccStackElement* SSYacc::elementFromProduction(long index) {
  if (index < 0 || index >= static_cast<long>(reducing_) || reducing_ > stack_.depth()) {
    raise(SSErrorProductionIndex, index);
    return nullptr;
  }
  return stack_.fromTop(reducing_ - 1 - static_cast<std::size_t>(index))->get();
}

SSYaccStackElement* SSYacc::elementFromStack(unsigned depth) {
  const SSRef<SSYaccStackElement>* const slot = stack_.fromTop(depth);
  return slot == nullptr ? nullptr : slot->get();
}

unsigned* SSYacc::validLookaheads(unsigned state, unsigned& count) {
  count = 0;
  if (table_ == nullptr || state >= table_->stateCount()) {
    raise(SSErrorState, static_cast<long>(state));
    return nullptr;
  }
  auto* const tokens = new unsigned[table_->actionCount(state)];
  for (unsigned i = 0; i < table_->actionCount(state); ++i) {
    const unsigned token = table_->actionToken(state, i);
    if (table_->action(state, token) != 0) tokens[count++] = token;
  }
  return tokens;
}

bool SSYacc::wouldTake(unsigned token) {
  std::vector<unsigned> states;
  for (std::size_t depth = stack_.depth(); depth > 0; --depth) {
    states.push_back(stateOf(*stack_.fromTop(depth - 1)));
  }
  for (unsigned reductions = 0; reductions < table_->stateCount(); ++reductions) {
    if (states.empty() || states.back() >= table_->stateCount()) return false;
    const std::uint32_t action = table_->action(states.back(), token);
    if ((action & sstable::kActionReduce) == 0) return action != 0;
    const SSYaccProduction production = table_->production(action & sstable::kActionOperand);
    if (production.size >= states.size()) return false;
    states.resize(states.size() - production.size);
    states.push_back(table_->gotoState(states.back(), production.left));
  }
  return false;
}

bool SSYacc::pushStackElement(SSYaccStackElement* element) {
  SSRef<SSYaccStackElement> adopted(element);
  if (!adopted) return false;
  if (table_ == nullptr || element->state() >= table_->stateCount()) {
    raise(SSErrorState, static_cast<long>(element->state()));
    return false;
  }
  state_ = element->state();
  return stack_.push(std::move(adopted));
}

bool SSYacc::popStackElement() {
  if (!stack_.pop()) return false;
  const SSRef<SSYaccStackElement>* const top = stack_.top();
  if (top == nullptr || stateOf(*top) == sstable::kNone) return false;
  state_ = (*top)->state();
  return true;
}

void SSYacc::setReduceHandler(unsigned production, tReduceHandler handler) {
  const auto at =
      std::lower_bound(handlers_.begin(), handlers_.end(), production,
                       [](const auto& entry, unsigned number) { return entry.first < number; });
  if (at != handlers_.end() && at->first == production) {
    at->second = std::move(handler);
  } else {
    handlers_.emplace(at, production, std::move(handler));
  }
}

SSLexLexeme* SSYacc::nextLexeme() {
  if (lex_ != nullptr) return ++*lex_;
  abort_ = true;  // not the end of the input: the parse fails even with exceptions disabled
  raise(SSErrorLexMissing);
  return nullptr;
}

SSYaccStackElement* SSYacc::stackElement() {
  return new SSYaccStackElement;
}

SSYaccStackElement* SSYacc::shift(SSLexLexeme&) {
  return stackElement();
}

void SSYacc::larLookahead(SSLexLexeme&) {}

int SSYacc::error(unsigned, SSLexLexeme&) {
  return errorToken();
}

SSYaccStackElement* SSYacc::reduce(unsigned production, unsigned size) {
  const auto at =
      std::lower_bound(handlers_.begin(), handlers_.end(), production,
                       [](const auto& entry, unsigned number) { return entry.first < number; });
  if (at != handlers_.end() && at->first == production) return at->second(*this, size);
  raise(SSErrorReduceMissing);
  return nullptr;
}

int SSYacc::larError(unsigned, SSLexLexeme&, SSLexLexeme&) {
  return kParseFailed;
}
