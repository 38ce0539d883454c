// The flat functions, called in any order with any handles. A handle of another kind is reported
// and nothing else is; whatever the functions are given, every object can be released in the end.
//
// The first byte of the input is the length of the text that is scanned, which follows. Behind it
// each call is a byte that chooses it, one that chooses the handle, and what the call takes.

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "ssvp40xpf/ssflat.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

enum eKind { kLexTable, kConsumer, kLex, kLexeme, kYaccTable, kYacc, kElement, kNoKind };

struct tHandle {
  SSObject* object;
  eKind kind;
};

int reports = 0;

/// The handles of one input and what it has left to choose by.
struct tWorld {
  explicit tWorld(tByteReader& rest) : input(rest) {}

  SSObject* add(SSObject* object, eKind kind) {
    if (object != nullptr) handles.push_back({object, kind});
    return object;
  }
  tHandle any() {
    const unsigned chosen = input.byte();
    if (chosen == 0xFF || handles.empty()) return {nullptr, kNoKind};
    return handles[chosen % handles.size()];
  }
  /// One of this kind; null when there is none.
  SSObject* one(eKind kind) {
    const tHandle handle = any();
    if (handle.kind == kind) return handle.object;
    for (const tHandle& other : handles) {
      if (other.kind == kind) return other.object;
    }
    return nullptr;
  }

  tByteReader& input;
  std::string text;
  std::vector<tHandle> handles;
  int errors = 0;
};

tWorld& of(void* user) {
  return *static_cast<tWorld*>(user);
}

SSObject* reduce(SSObject* yacc, unsigned, unsigned size, void* user) {
  SSObject* const made = SSYaccStackElementCreate(of(user).input.byte() % 32);
  for (unsigned i = 0; i < size; ++i) {
    SSObject* const part = SSYaccGetElementFromProduction(yacc, i);
    require(part != nullptr, "a production has its elements");
    SSYaccStackElementSetLexeme(made, SSYaccStackElementGetLexeme(part));
  }
  return made;
}

int recover(SSObject* yacc, unsigned state, SSObject*, void* user) {
  if (++of(user).errors > 3) return 1;
  unsigned count = 0;
  SSYaccFreeValidLookaheads(SSYaccGetValidLookaheads(yacc, state, &count));
  SSYaccSetAbort(yacc, of(user).input.byte() == 1 ? 1 : 0);
  return SSYaccProcessError(yacc);
}

SSObject* shift(SSObject*, SSObject* lookahead, void* user) {
  if (of(user).input.byte() == 1) return nullptr;
  SSObject* const made = SSYaccStackElementCreate(8);
  SSYaccStackElementSetLexeme(made, lookahead);
  return made;
}

SSObject* nextLexeme(SSObject*, void* user) {
  SSObject* const lex = of(user).one(kLex);
  return lex == nullptr ? nullptr : SSLexGetNextLexeme(lex);
}

SSObject* scanError(SSObject* lex, SSObject*, void* user) {
  return of(user).input.byte() == 1 ? SSLexGetNextLexeme(lex) : nullptr;
}

int complete(SSObject*, SSObject*, void* user) {
  return of(user).input.byte() == 1 ? 0 : 1;
}

SSObject* fileConsumer(const tWorld& w, int type) {
  static const int kFile = memfd_create("text", 0);
  require(ftruncate(kFile, 0) == 0, "the file is emptied");
  require(pwrite(kFile, w.text.data(), w.text.size(), 0) >= 0, "and filled");
  return SSLexFileConsumerCreate(("/proc/self/fd/" + std::to_string(kFile)).c_str(), type, 16, 16);
}

void drop(SSExceptionObject* thrown) {
  if (thrown == nullptr) return;
  require(*SSExceptionGetMessage(thrown) != '\0', "an exception has a message");
  require(SSExceptionGetErrorId(thrown) != 0, "and a number");
  SSExceptionDestroy(thrown);
}

/// A function of one handle; without a kind it makes an object.
struct tCall {
  eKind kind;
  void (*run)(tWorld& w, SSObject* h);
};

void leave(SSObject* lex, unsigned list) {
  if (SSLexGotoExpressionList(lex, list) == 0) return;
  require(SSLexIsCurrentExpressionList(lex, list) != 0, "the list is taken");
}

void resize(SSObject* lexeme, std::size_t length) {
  const std::size_t before = SSLexLexemeGetLength(lexeme);
  require(SSLexLexemeSetLength(lexeme, length) == 0 || length <= before, "a text is only cut");
  require(SSLexLexemeGetBuffer(lexeme) != nullptr || before == 0, "a lexeme has its text");
}

void give(SSObject* element, SSObject* lexeme) {
  const int before = reports;
  SSYaccStackElementSetLexeme(element, lexeme);
  require(reports > before || SSYaccStackElementGetLexeme(element) == lexeme, "it has the lexeme");
}

void push(SSObject* yacc, SSObject* element) {
  SSYaccStackElementRefInc(element);
  SSYaccPushStackElement(yacc, element);
}

void offer(SSObject* yacc, unsigned state) {
  unsigned count = 0;
  SSYaccFreeValidLookaheads(SSYaccGetValidLookaheads(yacc, state, &count));
}

// clang-format off
#define CALL(kind, ...) {kind, [](tWorld& w, SSObject* h) { (void)w; (void)h; __VA_ARGS__; }},
const tCall kCalls[] = {
    CALL(kNoKind, w.add(SSLexConsumerCreate(w.text.data(), w.text.size(), 0), kConsumer))
    CALL(kNoKind, w.add(SSLexConsumerCreate(w.text.data(), w.text.size() / 2, 1), kConsumer))
    CALL(kNoKind, w.add(fileConsumer(w, static_cast<int>(w.input.byte() % 4)), kConsumer))
    CALL(kNoKind, w.add(SSYaccStackElementCreate(w.input.byte()), kElement))
    CALL(kConsumer, w.add(SSLexCreate(h, w.one(kLexTable)), kLex))
    CALL(kLexTable, w.add(SSLexCreate(w.one(kConsumer), h), kLex))
    CALL(kYaccTable, w.add(SSYaccCreate(w.one(kLex), h, reduce, &w, 8), kYacc))
    CALL(kLex, w.add(SSLexGetNextLexeme(h), kLexeme))
    CALL(kLex, SSLexPushExpressionList(h, w.input.byte() % 4))
    CALL(kLex, SSLexPopExpressionList(h))
    CALL(kLex, leave(h, w.input.byte() % 4))
    CALL(kLex, SSLexReset(h))
    CALL(kLex, SSLexSetErrorCallback(h, scanError, &w))
    CALL(kLex, SSLexSetCompleteCallback(h, complete, &w))
    CALL(kLex, drop(SSLexGetLastException(h)); SSLexClearLastException(h))
    CALL(kLexeme, SSLexLexemeSetToken(h, w.input.byte()); SSLexLexemeGetToken(h))
    CALL(kLexeme, SSLexLexemeSetLine(h, w.input.byte()); SSLexLexemeGetLine(h))
    CALL(kLexeme, SSLexLexemeSetOffset(h, w.input.byte()); SSLexLexemeGetOffset(h))
    CALL(kLexeme, resize(h, w.input.byte()))
    CALL(kLexeme, SSLexLexemeSetBuffer(h, w.text.data(), w.text.size()))
    CALL(kLexeme, SSLexLexemeSetType(h, w.input.byte()); SSLexLexemeGetType(h))
    CALL(kLexeme, SSLexLexemeRefInc(h); SSLexLexemeRefDec(h, 1))
    CALL(kYacc, SSYaccParse(h))
    CALL(kYacc, SSYaccReset(h))
    CALL(kYacc, SSYaccGetElementFromProduction(h, static_cast<long>(w.input.byte()) - 2))
    CALL(kYacc, SSYaccGetElementFromStack(h, w.input.byte()))
    CALL(kYacc, offer(h, w.input.byte()))
    CALL(kYacc, push(h, w.one(kElement)))
    CALL(kYacc, SSYaccPopStackElement(h))
    CALL(kYacc, SSYaccSetAbort(h, w.input.byte() % 2); SSYaccGetAbort(h); SSYaccGetError(h))
    CALL(kYacc, SSYaccGetShiftedSinceError(h))
    CALL(kYacc, SSYaccSetNextLexemeCallback(h, nextLexeme, &w))
    CALL(kYacc, SSYaccSetShiftCallback(h, shift, &w))
    CALL(kYacc, SSYaccSetErrorCallback(h, recover, &w))
    CALL(kYacc, drop(SSYaccGetLastException(h)); SSYaccClearLastException(h))
    CALL(kElement, SSYaccStackElementSetState(h, w.input.byte()); SSYaccStackElementGetState(h))
    CALL(kElement, give(h, w.one(kLexeme)))
    CALL(kElement, if (void* extra = SSYaccStackElementGetExtra(h)) *static_cast<char*>(extra) = 'x')
};
#undef CALL
// clang-format on

void call(tWorld& w) {
  const tCall& chosen = kCalls[w.input.byte() % std::size(kCalls)];
  if (chosen.kind == kNoKind) return chosen.run(w, nullptr);
  const tHandle handle = w.any();
  const int before = reports;
  chosen.run(w, handle.object);
  require(handle.kind == chosen.kind || reports > before, "a handle of another kind is reported");
}

void release(const tWorld& w) {
  const auto each = [&](eKind kind, void (*destroy)(SSObject*)) {
    for (const tHandle& handle : w.handles) {
      if (handle.kind == kind) destroy(handle.object);
    }
  };
  const int before = reports;
  each(kYacc, SSYaccDestroy);
  each(kElement, [](SSObject* h) { SSYaccStackElementRefDec(h, 1); });
  each(kLex, SSLexDestroy);
  each(kLexeme, [](SSObject* h) { SSLexLexemeRefDec(h, 1); });
  each(kConsumer, SSLexConsumerDestroy);
  each(kLexTable, SSLexTableDestroy);
  each(kYaccTable, SSYaccTableDestroy);
  require(reports == before, "every object can be released");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const tableimage::tImage lexImage = samples::lexImage();
  static const tableimage::tImage images[] = {samples::expressionImage(),
                                              samples::linesImage(sstable::kRowAcceptAny)};
  SSSetBadCorrelatorCallback([](void*, const char* text) { reports += *text != '\0' ? 1 : 0; });
  tByteReader input(bytes, size);
  tWorld w(input);
  const unsigned length = input.byte();
  for (unsigned i = 0; i < length % 64; ++i) w.text += static_cast<char>(input.byte());
  w.add(SSLexTableCreate(lexImage.data(), tableimage::bytes(lexImage), "lex"), kLexTable);
  for (const tableimage::tImage& image : images) {
    w.add(SSYaccTableCreate(image.data(), tableimage::bytes(image), "yacc"), kYaccTable);
  }
  w.add(SSLexConsumerCreate(w.text.data(), w.text.size(), 0), kConsumer);
  w.add(SSLexCreate(w.handles.back().object, w.handles.front().object), kLex);
  w.add(SSYaccCreate(w.handles.back().object, w.handles[1].object, reduce, &w, 8), kYacc);
  for (int i = 0; i < 100 && !input.rest().empty(); ++i) call(w);
  release(w);
  return 0;
}
