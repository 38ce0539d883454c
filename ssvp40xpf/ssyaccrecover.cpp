// Two ways to recover from a syntax error. Error token: the states on the stack that can shift it
// determine which tokens may follow; lookaheads are discarded up to the first such token, and
// states are popped until one accepts it. Panic mode: the same with a set of tokens given by the
// caller and states that have an action for one of them. Both terminate, because each step discards
// a lookahead or pops a state.
//
// parse() empties the stack before it calls error(), so recovery started from there finds states
// only if the override has pushed some.
#include "ssvp40xpf/sstableformat.h"
#include "ssvp40xpf/ssyacc.h"

namespace {

constexpr const char* kErrorText = "%error";

}  // namespace

int SSYacc::errorToken() {
  SSSetArray tokens(kErrorTokens);
  if (!collectErrorTokens(tokens)) return kParseFailed;
  if (tokens.empty()) {
    raise(SSErrorTokenNone);
    return kParseFailed;
  }
  if (!discardUntil(tokens, SSErrorTokenEof)) return kParseFailed;
  for (; !stack_.empty(); stack_.pop()) {
    const unsigned state = stateOf(*stack_.top());
    if (state == sstable::kNone) continue;
    const unsigned entry = table_->errorEntry(state);
    if (entry != sstable::kNone && table_->action(entry, lookahead_->symbol()) != 0) {
      return shiftErrorToken(entry) ? 0 : kParseFailed;
    }
    if (resumesIn(state)) {
      resumeIn(state);
      return 0;
    }
  }
  raise(SSErrorTokenNone);
  return kParseFailed;
}

int SSYacc::errorPanic(const unsigned* tokens, unsigned count) {
  SSSetArray wanted(count);
  for (unsigned i = 0; i < count; ++i) wanted.add(tokens[i]);
  if (!discardUntil(wanted, SSErrorPanic)) return kParseFailed;
  for (; !stack_.empty(); stack_.pop()) {
    const unsigned state = stateOf(*stack_.top());
    if (state == sstable::kNone || table_->action(state, lookahead_->symbol()) == 0) continue;
    resumeIn(state);
    return 0;
  }
  raise(SSErrorPanic);
  return kParseFailed;
}

bool SSYacc::collectErrorTokens(SSSetArray& tokens) {
  for (std::size_t depth = 0; depth < stack_.depth(); ++depth) {
    const unsigned state = stateOf(*stack_.fromTop(depth));
    const unsigned entry = state == sstable::kNone ? state : table_->errorEntry(state);
    if (entry == sstable::kNone) continue;
    for (unsigned i = 0; i < table_->actionCount(entry); ++i) {
      const unsigned token = table_->actionToken(entry, i);
      if (table_->action(entry, token) != 0 && !tokens.add(token)) return false;
    }
  }
  return true;
}

bool SSYacc::discardUntil(const SSSetArray& tokens, eSSError atEnd) {
  while (!tokens.holds(lookahead_->symbol())) {
    if (lookahead_->token() == sstable::kTokenEof) {
      raise(atEnd);
      return false;
    }
    if (!readLookahead()) return false;
  }
  return true;
}

bool SSYacc::resumesIn(unsigned state) const {
  const unsigned symbol = lookahead_->symbol();
  const std::uint32_t flags = table_->rowFlags(state);
  if ((flags & sstable::kRowAcceptAny) != 0 && table_->action(state, symbol) != 0) return true;
  if ((flags & sstable::kRowScanOnError) == 0) return false;
  for (unsigned i = 0; i < table_->actionCount(state); ++i) {
    if (table_->actionToken(state, i) == symbol) return true;
  }
  return false;
}

void SSYacc::resumeIn(unsigned state) {
  state_ = state;
  lookUpAction();
}

bool SSYacc::shiftErrorToken(unsigned entry) {
  const SSRef<SSLexLexeme> lexeme(new SSLexLexeme(6, sstable::kTokenError, kErrorText, 0, 0));
  SSRef<SSYaccStackElement> element(stackElement());
  if (!element) return false;
  element->setLexeme(lexeme.get());
  element->setState(entry);
  last_ = element;
  if (!stack_.push(std::move(element))) return false;
  resumeIn(entry);
  return true;
}
