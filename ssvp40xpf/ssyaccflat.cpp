#include <cstddef>
#include <memory>
#include <vector>

#include "ssvp40xpf/ssflatguard.h"
#include "ssvp40xpf/ssyacc.h"

namespace {

constexpr std::uint32_t kYacc = ssCorrelator("SSYC");
constexpr std::uint32_t kTable = ssCorrelator("SSYT");
constexpr std::uint32_t kElement = ssCorrelator("SSSE");
constexpr std::uint32_t kLex = ssCorrelator("SSLX");
constexpr std::uint32_t kLexeme = ssCorrelator("SSLM");

/// An element with room for caller-defined data.
class tFlatElement : public SSYaccStackElement {
 public:
  explicit tFlatElement(std::size_t extra)
      : extra_((extra + sizeof(std::max_align_t) - 1) / sizeof(std::max_align_t)) {}

  void* extra() { return extra_.empty() ? nullptr : extra_.data(); }

 private:
  std::vector<std::max_align_t> extra_;
};

/// A parser whose virtual functions forward to callbacks.
class tFlatYacc : public SSYacc {
 public:
  tFlatYacc(const SSYaccTable& by, std::size_t extra) : extra_(extra) { setTable(by); }

  using SSYacc::errorToken;

  SSLexLexeme* nextLexeme() override {
    if (onNext == nullptr) return SSYacc::nextLexeme();
    SSObject* const lexeme = onNext(this, nextUser);
    return lexeme == nullptr ? nullptr : ssflat::object<SSLexLexeme>(lexeme, kLexeme);
  }

  SSYaccStackElement* stackElement() override { return new tFlatElement(extra_); }

  SSYaccStackElement* shift(SSLexLexeme& from) override {
    return onShift == nullptr ? stackElement() : element(onShift(this, &from, shiftUser));
  }

  SSYaccStackElement* reduce(unsigned production, unsigned size) override {
    if (onReduce == nullptr) return SSYacc::reduce(production, size);
    return element(onReduce(this, production, size, reduceUser));
  }

  int error(unsigned state, SSLexLexeme& at) override {
    return onError == nullptr ? errorToken() : onError(this, state, &at, errorUser);
  }

  SSYaccNextLexemeCallback onNext = nullptr;
  void* nextUser = nullptr;
  SSYaccShiftCallback onShift = nullptr;
  void* shiftUser = nullptr;
  SSYaccReduceCallback onReduce = nullptr;
  void* reduceUser = nullptr;
  SSYaccErrorCallback onError = nullptr;
  void* errorUser = nullptr;

 private:
  static SSYaccStackElement* element(SSObject* handle) {
    return handle == nullptr ? nullptr : ssflat::object<SSYaccStackElement>(handle, kElement);
  }

  std::size_t extra_;
};

SSYacc* yaccOf(SSObject* handle) {
  return ssflat::object<SSYacc>(handle, kYacc);
}
tFlatYacc* flatYaccOf(SSObject* handle) {
  return ssflat::flatObject<tFlatYacc, SSYacc>(handle, kYacc);
}
SSYaccStackElement* elementOf(SSObject* handle) {
  return ssflat::object<SSYaccStackElement>(handle, kElement);
}

}  // namespace

extern "C" {

SSObject* SSYaccTableCreate(const void* image, size_t size, const char* name) {
  return ssflat::created([&]() -> SSObject* {
    auto table = image != nullptr ? std::make_unique<SSYaccTable>(image, size, name)
                                  : std::make_unique<SSYaccTable>(name);
    return table->stateCount() != 0 ? table.release() : nullptr;
  });
}

void SSYaccTableDestroy(SSObject* table) {
  delete ssflat::object<SSYaccTable>(table, kTable);
}

SSObject* SSYaccCreate(SSObject* lex, SSObject* table, SSYaccReduceCallback reduce, void* user,
                       size_t extra) {
  SSLex* const scanner = lex == nullptr ? nullptr : ssflat::object<SSLex>(lex, kLex);
  const auto* const by = ssflat::object<SSYaccTable>(table, kTable);
  if (by == nullptr || (lex != nullptr && scanner == nullptr)) return nullptr;
  return ssflat::created([&]() -> SSObject* {
    auto* const parser = new tFlatYacc(*by, extra);
    if (scanner != nullptr) parser->setLex(*scanner);
    parser->onReduce = reduce;
    parser->reduceUser = user;
    return parser;
  });
}

void SSYaccDestroy(SSObject* yacc) {
  delete yaccOf(yacc);
}

int SSYaccParse(SSObject* yacc) {
  SSYacc* const parser = yaccOf(yacc);
  if (parser == nullptr) return 1;
  return ssflat::guarded<int>(*parser, 1, [&] { return parser->parse(); });
}

void SSYaccReset(SSObject* yacc) {
  SSYacc* const parser = yaccOf(yacc);
  if (parser == nullptr) return;
  ssflat::guarded<int>(*parser, 0, [&] {
    parser->reset();
    return 0;
  });
}

SSObject* SSYaccGetElementFromProduction(SSObject* yacc, long index) {
  SSYacc* const parser = yaccOf(yacc);
  if (parser == nullptr) return nullptr;
  return ssflat::guarded<SSObject*>(*parser, nullptr,
                                    [&] { return parser->elementFromProduction(index); });
}

SSObject* SSYaccGetElementFromStack(SSObject* yacc, unsigned depth) {
  SSYacc* const parser = yaccOf(yacc);
  if (parser == nullptr) return nullptr;
  return ssflat::guarded<SSObject*>(*parser, nullptr,
                                    [&] { return parser->elementFromStack(depth); });
}

unsigned* SSYaccGetValidLookaheads(SSObject* yacc, unsigned state, unsigned* count) {
  *count = 0;
  SSYacc* const parser = yaccOf(yacc);
  if (parser == nullptr) return nullptr;
  return ssflat::guarded<unsigned*>(*parser, nullptr,
                                    [&] { return parser->validLookaheads(state, *count); });
}

void SSYaccFreeValidLookaheads(unsigned* tokens) {
  delete[] tokens;
}

int SSYaccPushStackElement(SSObject* yacc, SSObject* element) {
  SSYaccStackElement* const pushed = elementOf(element);
  SSYacc* const parser = yaccOf(yacc);
  if (pushed == nullptr) return 0;
  if (parser == nullptr) {
    pushed->refDec(1);
    return 0;
  }
  return ssflat::guarded<int>(*parser, 0, [&] { return parser->pushStackElement(pushed); });
}

int SSYaccPopStackElement(SSObject* yacc) {
  SSYacc* const parser = yaccOf(yacc);
  if (parser == nullptr) return 0;
  return ssflat::guarded<int>(*parser, 0, [&] { return parser->popStackElement(); });
}

void SSYaccSetAbort(SSObject* yacc, int abort) {
  if (SSYacc* const parser = yaccOf(yacc)) parser->setAbort(abort != 0);
}

int SSYaccGetAbort(SSObject* yacc) {
  const SSYacc* const parser = yaccOf(yacc);
  return parser != nullptr && parser->aborted();
}

int SSYaccGetError(SSObject* yacc) {
  const SSYacc* const parser = yaccOf(yacc);
  return parser != nullptr && parser->errorMet();
}

unsigned SSYaccGetShiftedSinceError(SSObject* yacc) {
  const SSYacc* const parser = yaccOf(yacc);
  return parser == nullptr ? 0 : parser->shiftedSinceError();
}

int SSYaccProcessError(SSObject* yacc) {
  tFlatYacc* const parser = flatYaccOf(yacc);
  if (parser == nullptr) return 1;
  return ssflat::guarded<int>(*parser, 1, [&] { return parser->errorToken(); });
}

void SSYaccSetNextLexemeCallback(SSObject* yacc, SSYaccNextLexemeCallback callback, void* user) {
  if (tFlatYacc* const parser = flatYaccOf(yacc)) {
    parser->onNext = callback;
    parser->nextUser = user;
  }
}

void SSYaccSetShiftCallback(SSObject* yacc, SSYaccShiftCallback callback, void* user) {
  if (tFlatYacc* const parser = flatYaccOf(yacc)) {
    parser->onShift = callback;
    parser->shiftUser = user;
  }
}

void SSYaccSetErrorCallback(SSObject* yacc, SSYaccErrorCallback callback, void* user) {
  if (tFlatYacc* const parser = flatYaccOf(yacc)) {
    parser->onError = callback;
    parser->errorUser = user;
  }
}

SSExceptionObject* SSYaccGetLastException(SSObject* yacc) {
  const SSYacc* const parser = yaccOf(yacc);
  return parser == nullptr ? nullptr : ssflat::handOut(*parser);
}

void SSYaccClearLastException(SSObject* yacc) {
  if (const SSYacc* const parser = yaccOf(yacc)) parser->clearLastException();
}

SSObject* SSYaccStackElementCreate(size_t extra) {
  return ssflat::created([&]() -> SSObject* { return new tFlatElement(extra); });
}

unsigned SSYaccStackElementGetState(SSObject* element) {
  const SSYaccStackElement* const held = elementOf(element);
  return held == nullptr ? 0 : held->state();
}

void SSYaccStackElementSetState(SSObject* element, unsigned state) {
  if (SSYaccStackElement* const held = elementOf(element)) held->setState(state);
}

SSObject* SSYaccStackElementGetLexeme(SSObject* element) {
  const SSYaccStackElement* const held = elementOf(element);
  return held == nullptr ? nullptr : held->lexeme();
}

void SSYaccStackElementSetLexeme(SSObject* element, SSObject* lexeme) {
  SSYaccStackElement* const held = elementOf(element);
  SSLexLexeme* const given =
      lexeme == nullptr ? nullptr : ssflat::object<SSLexLexeme>(lexeme, kLexeme);
  if (held != nullptr && (lexeme == nullptr || given != nullptr)) held->setLexeme(given);
}

void* SSYaccStackElementGetExtra(SSObject* element) {
  tFlatElement* const held =
      ssflat::flatObject<tFlatElement, SSYaccStackElement>(element, kElement);
  return held == nullptr ? nullptr : held->extra();
}

void SSYaccStackElementRefInc(SSObject* element) {
  if (SSYaccStackElement* const held = elementOf(element)) held->refInc();
}

void SSYaccStackElementRefDec(SSObject* element, unsigned count) {
  SSYaccStackElement* const held = elementOf(element);
  if (held == nullptr) return;
  if (count > held->refCount()) {
    return ssflat::report(element, "SSRef0001e: Reference count less than zero");
  }
  held->refDec(count);
}

void SSYaccStackElementDestroy(SSObject* element) {
  if (SSYaccStackElement* const held = elementOf(element)) held->refFree();
}

}  // extern "C"
