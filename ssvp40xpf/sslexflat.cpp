#include <atomic>
#include <string>

#include "ssvp40xpf/ssflatguard.h"
#include "ssvp40xpf/sslex.h"
#include "ssvp40xpf/sslexfileconsumer.h"

namespace {

constexpr std::uint32_t kLex = ssCorrelator("SSLX");
constexpr std::uint32_t kTable = ssCorrelator("SSLT");
constexpr std::uint32_t kConsumer = ssCorrelator("SSCO");
constexpr std::uint32_t kLexeme = ssCorrelator("SSLM");

std::atomic<SSBadCorrelatorCallback> badCorrelator{nullptr};

/// A lexer whose virtual functions forward to callbacks.
class tFlatLex : public SSLex {
 public:
  using SSLex::SSLex;

  SSLexLexeme* error(SSLexConsumer& from) override {
    if (onError == nullptr) return SSLex::error(from);
    SSObject* const lexeme = onError(this, &from, errorUser);
    return lexeme == nullptr ? nullptr : ssflat::object<SSLexLexeme>(lexeme, kLexeme);
  }

  SSLexLexeme* complete(SSLexConsumer& from, unsigned token, SSLexMark& mark) override {
    SSRef<SSLexLexeme> lexeme(SSLex::complete(from, token, mark));
    if (onComplete != nullptr && onComplete(this, lexeme.get(), completeUser) == 0) return nullptr;
    return lexeme.release();
  }

  SSLexErrorCallback onError = nullptr;
  void* errorUser = nullptr;
  SSLexCompleteCallback onComplete = nullptr;
  void* completeUser = nullptr;
};

SSLex* lexOf(SSObject* handle) {
  return ssflat::object<SSLex>(handle, kLex);
}
tFlatLex* flatLexOf(SSObject* handle) {
  return ssflat::flatObject<tFlatLex, SSLex>(handle, kLex);
}
SSLexLexeme* lexemeOf(SSObject* handle) {
  return ssflat::object<SSLexLexeme>(handle, kLexeme);
}

SSLexConsumer::SSLexConsumerType typeOf(int type) {
  return type == 1   ? SSLexConsumer::wideType
         : type == 2 ? SSLexConsumer::textType
                     : SSLexConsumer::charType;
}

}  // namespace

void ssflat::report(void* handle, const char* message) {
  if (const SSBadCorrelatorCallback callback = badCorrelator.load()) callback(handle, message);
}

void ssflat::reportCorrelator(void* handle, std::uint32_t expected) {
  std::string text = "Bad correlator, ";
  for (int i = 0; i < 4; ++i) text += static_cast<char>((expected >> (8 * i)) & 0xFF);
  report(handle, (text + " expected").c_str());
}

extern "C" {

SSBadCorrelatorCallback SSSetBadCorrelatorCallback(SSBadCorrelatorCallback callback) {
  return badCorrelator.exchange(callback);
}

const char* SSExceptionGetMessage(const SSExceptionObject* exception) {
  return exception == nullptr ? "" : reinterpret_cast<const SSException*>(exception)->message();
}

int SSExceptionGetErrorId(const SSExceptionObject* exception) {
  return exception == nullptr ? 0 : reinterpret_cast<const SSException*>(exception)->errorId();
}

void SSExceptionDestroy(SSExceptionObject* exception) {
  delete reinterpret_cast<SSException*>(exception);
}

SSObject* SSLexTableCreate(const void* image, size_t size, const char* name) {
  return ssflat::created([&]() -> SSObject* {
    auto table = image != nullptr ? std::make_unique<SSLexTable>(image, size, name)
                                  : std::make_unique<SSLexTable>(name);
    return table->listCount() != 0 ? table.release() : nullptr;
  });
}

void SSLexTableDestroy(SSObject* table) {
  delete ssflat::object<SSLexTable>(table, kTable);
}

SSObject* SSLexConsumerCreate(const void* text, size_t length, int type) {
  return ssflat::created(
      [&]() -> SSObject* { return new SSLexStringConsumer(text, length, typeOf(type)); });
}

SSObject* SSLexFileConsumerCreate(const char* path, int type, size_t size, size_t increment) {
  return ssflat::created(
      [&]() -> SSObject* { return new SSLexFileConsumer(path, typeOf(type), size, increment); });
}

void SSLexConsumerDestroy(SSObject* consumer) {
  delete ssflat::object<SSLexConsumer>(consumer, kConsumer);
}

SSObject* SSLexCreate(SSObject* consumer, SSObject* table) {
  auto* const from = ssflat::object<SSLexConsumer>(consumer, kConsumer);
  const auto* const by = ssflat::object<SSLexTable>(table, kTable);
  if (from == nullptr || by == nullptr) return nullptr;
  return ssflat::created([&]() -> SSObject* { return new tFlatLex(*from, *by); });
}

void SSLexDestroy(SSObject* lex) {
  delete lexOf(lex);
}

SSObject* SSLexGetNextLexeme(SSObject* lex) {
  SSLex* const scanner = lexOf(lex);
  if (scanner == nullptr) return nullptr;
  return ssflat::guarded<SSObject*>(*scanner, nullptr, [&] { return ++*scanner; });
}

int SSLexPushExpressionList(SSObject* lex, unsigned index) {
  SSLex* const scanner = lexOf(lex);
  if (scanner == nullptr || scanner->table() == nullptr) return 0;
  return ssflat::guarded<int>(*scanner, 0, [&] {
    const SSLexExpressionList* const list = scanner->table()->expressionList(index);
    return list != nullptr && scanner->pushExpressionList(*list);
  });
}

int SSLexPopExpressionList(SSObject* lex) {
  SSLex* const scanner = lexOf(lex);
  if (scanner == nullptr) return 0;
  return ssflat::guarded<int>(*scanner, 0, [&] { return scanner->popExpressionList(); });
}

int SSLexGotoExpressionList(SSObject* lex, unsigned index) {
  SSLex* const scanner = lexOf(lex);
  if (scanner == nullptr || scanner->table() == nullptr) return 0;
  return ssflat::guarded<int>(*scanner, 0, [&] {
    const SSLexExpressionList* const list = scanner->table()->expressionList(index);
    return list != nullptr && scanner->gotoExpressionList(*list);
  });
}

int SSLexIsCurrentExpressionList(SSObject* lex, unsigned index) {
  const SSLex* const scanner = lexOf(lex);
  return scanner != nullptr && scanner->isCurrentExpressionList(index);
}

void SSLexReset(SSObject* lex) {
  SSLex* const scanner = lexOf(lex);
  if (scanner == nullptr) return;
  ssflat::guarded<int>(*scanner, 0, [&] {
    scanner->reset();
    return 0;
  });
}

void SSLexSetErrorCallback(SSObject* lex, SSLexErrorCallback callback, void* user) {
  if (tFlatLex* const scanner = flatLexOf(lex)) {
    scanner->onError = callback;
    scanner->errorUser = user;
  }
}

void SSLexSetCompleteCallback(SSObject* lex, SSLexCompleteCallback callback, void* user) {
  if (tFlatLex* const scanner = flatLexOf(lex)) {
    scanner->onComplete = callback;
    scanner->completeUser = user;
  }
}

SSExceptionObject* SSLexGetLastException(SSObject* lex) {
  const SSLex* const scanner = lexOf(lex);
  return scanner == nullptr ? nullptr : ssflat::handOut(*scanner);
}

void SSLexClearLastException(SSObject* lex) {
  if (const SSLex* const scanner = lexOf(lex)) scanner->clearLastException();
}

unsigned SSLexLexemeGetToken(SSObject* lexeme) {
  const SSLexLexeme* const held = lexemeOf(lexeme);
  return held == nullptr ? 0 : held->token();
}

unsigned SSLexLexemeGetLine(SSObject* lexeme) {
  const SSLexLexeme* const held = lexemeOf(lexeme);
  return held == nullptr ? 0 : held->line();
}

unsigned SSLexLexemeGetOffset(SSObject* lexeme) {
  const SSLexLexeme* const held = lexemeOf(lexeme);
  return held == nullptr ? 0 : held->offset();
}

size_t SSLexLexemeGetLength(SSObject* lexeme) {
  const SSLexLexeme* const held = lexemeOf(lexeme);
  return held == nullptr ? 0 : held->length();
}

const void* SSLexLexemeGetBuffer(SSObject* lexeme) {
  const SSLexLexeme* const held = lexemeOf(lexeme);
  return held == nullptr ? nullptr : held->text();
}

unsigned SSLexLexemeGetType(SSObject* lexeme) {
  const SSLexLexeme* const held = lexemeOf(lexeme);
  return held == nullptr ? 0 : held->type();
}

void SSLexLexemeSetToken(SSObject* lexeme, unsigned token) {
  if (SSLexLexeme* const held = lexemeOf(lexeme)) held->setToken(token);
}

void SSLexLexemeSetLine(SSObject* lexeme, unsigned line) {
  if (SSLexLexeme* const held = lexemeOf(lexeme)) held->setLine(line);
}

void SSLexLexemeSetOffset(SSObject* lexeme, unsigned offset) {
  if (SSLexLexeme* const held = lexemeOf(lexeme)) held->setOffset(offset);
}

int SSLexLexemeSetLength(SSObject* lexeme, size_t length) {
  SSLexLexeme* const held = lexemeOf(lexeme);
  return held != nullptr && held->setLength(length);
}

int SSLexLexemeSetBuffer(SSObject* lexeme, const char* text, size_t length) {
  SSLexLexeme* const held = lexemeOf(lexeme);
  if (held == nullptr) return 0;
  return ssflat::created([&]() -> SSObject* {
           held->setBuffer(text, length);
           return held;
         }) != nullptr;
}

void SSLexLexemeSetType(SSObject* lexeme, unsigned type) {
  if (SSLexLexeme* const held = lexemeOf(lexeme)) held->setType(type);
}

void SSLexLexemeRefInc(SSObject* lexeme) {
  if (SSLexLexeme* const held = lexemeOf(lexeme)) held->refInc();
}

void SSLexLexemeRefDec(SSObject* lexeme, unsigned count) {
  SSLexLexeme* const held = lexemeOf(lexeme);
  if (held == nullptr) return;
  if (count > held->refCount()) {
    return ssflat::report(lexeme, "SSRef0001e: Reference count less than zero");
  }
  held->refDec(count);
}

}  // extern "C"
