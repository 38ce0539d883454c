// A statement is judged by its opening, its first three tokens at most: they tell which structure
// or body it opens, continues, ends or leaves and whether it can be executed. Plain statements are
// judged by their text, since the plain writer has seen to the rest (brackets, "@", quotes) on its
// way through them; all others token by token (checktokens.cpp).

#include "korelpre/statements/check.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "korelpre/errors/notes.h"

namespace precomp {

using enum eStatementWord;

namespace {

enum class eUse : std::uint8_t { kNone, kOpens, kTakes, kLeaves };

// What a word does to the structures, whatever follows it.
struct tUse {
  eUse use = eUse::kNone;
  std::uint8_t what = 0;  // an eBlock, an eBlockWord or an eLeaving
};

constexpr tUse opens(eBlock block) {
  return {eUse::kOpens, static_cast<std::uint8_t>(block)};
}
constexpr tUse takes(eBlockWord word) {
  return {eUse::kTakes, static_cast<std::uint8_t>(word)};
}
constexpr tUse leaves(eLeaving word) {
  return {eUse::kLeaves, static_cast<std::uint8_t>(word)};
}

struct tWordUse {
  eStatementWord word;
  tUse use;
};

constexpr tWordUse kWordUses[] = {
    {kIf, opens(eBlock::kIf)},
    {kElseIf, takes(eBlockWord::kElseIf)},
    {kElse, takes(eBlockWord::kElse)},
    {kEndIf, takes(eBlockWord::kEndIf)},
    {kCase, takes(eBlockWord::kCase)},
    {kOtherwise, takes(eBlockWord::kOtherwise)},
    {kEndCase, takes(eBlockWord::kEndCase)},
    {kWhile, opens(eBlock::kWhile)},
    {kEndDo, takes(eBlockWord::kEndDo)},
    {kFor, opens(eBlock::kFor)},
    {kNext, takes(eBlockWord::kNext)},
    {kRecover, takes(eBlockWord::kRecover)},
    {kTry, opens(eBlock::kTry)},
    {kCatch, takes(eBlockWord::kCatch)},
    {kEndTry, takes(eBlockWord::kEndTry)},
    {kExit, leaves(eLeaving::kExit)},
    {kLoop, leaves(eLeaving::kLoop)},
    {kReturn, leaves(eLeaving::kReturn)},
};

// What DO opens together with the word behind it.
constexpr tWordUse kDoUses[] = {{kCase, opens(eBlock::kCase)}, {kWhile, opens(eBlock::kWhile)}};

constexpr tWordUse kBeginUses[] = {{kSequence, opens(eBlock::kSequence)}};

// What END ends together with the word behind it, or alone. With any other word it is a command of
// some header.
constexpr tWordUse kEndUses[] = {
    {kSequence, takes(eBlockWord::kEndSequence)},
    {kTry, takes(eBlockWord::kEndTry)},
    {kIf, takes(eBlockWord::kEndIf)},
    {kCase, takes(eBlockWord::kEndCase)},
    {kDo, takes(eBlockWord::kEndDo)},
    {kWhile, takes(eBlockWord::kEndDo)},
    {kFor, takes(eBlockWord::kNext)},
};

constexpr std::size_t kWordCount = static_cast<std::size_t>(kDebugMarker) + 1;
using tUseTable = std::array<tUse, kWordCount>;

template <std::size_t count>
constexpr tUseTable tableOf(const tWordUse (&uses)[count]) {
  tUseTable table{};
  for (const tWordUse& entry : uses) table[static_cast<std::size_t>(entry.word)] = entry.use;
  return table;
}

constexpr tUseTable kUses = tableOf(kWordUses);
constexpr tUseTable kUsesAfterDo = tableOf(kDoUses);
constexpr tUseTable kUsesAfterBegin = tableOf(kBeginUses);
constexpr tUseTable kUsesAfterEnd = tableOf(kEndUses);

tUse useOf(const tUseTable& table, eStatementWord word) {
  return table[static_cast<std::size_t>(word)];
}

tUse useOf(eStatementWord word, std::string_view next) {
  switch (word) {
    case kDo:
      return useOf(kUsesAfterDo, statementWord(next));
    case kBegin:
      return useOf(kUsesAfterBegin, statementWord(next));
    case kEnd:
      return next.empty() ? takes(eBlockWord::kEnd) : useOf(kUsesAfterEnd, statementWord(next));
    default:
      return useOf(kUses, word);
  }
}

// Words whose meaning needs nothing but that they are no names.
bool standsAlone(eStatementWord word) {
  return word == kLocal || (word != kExit && useOf(kUses, word).use != eUse::kNone);
}

// Words that nothing in parentheses can follow: in front of them they are names of functions.
bool takesNoOperand(eStatementWord word) {
  switch (word) {
    case kElse:
    case kEndIf:
    case kOtherwise:
    case kEndCase:
    case kEndDo:
    case kNext:
    case kExit:
    case kLoop:
    case kRecover:
    case kEnd:
    case kTry:
    case kEndTry:
      return true;
    default:
      return false;
  }
}

// What a token can begin with that makes a name of the word before it, or a call.
bool mayMakeName(char c) {
  return std::string_view(":=+-*/^%.[(").find(c) != std::string_view::npos;
}

// Whether a text is a token whatever stands beside it.
bool isToken(std::string_view text) {
  return std::string_view("([{,\"'").find(text.front()) != std::string_view::npos ||
         (isNameByte(text.front()) && isNameByte(text.back()));
}

bool mayModifyFunction(eStatementWord word) {
  return word == kModifier || word == kStatic || word == kExit || word == kDeclaration;
}

// Whether a token (or the end of the statement) stands where only a function's name makes sense.
bool isNoName(std::string_view token) {
  return token.empty() || token[0] == '(' || token[0] == '"' || token[0] == '\'' ||
         (token[0] >= '0' && token[0] <= '9');
}

[[noreturn]] void raise(eSourceError error, const tStatementPlace& place,
                        std::string_view extra = {}) {
  place.file->raise(error, place, std::string(extra).c_str());
}

tNote openedBy(const tBlockCmd& block) {
  constexpr const char* kWords[] = {"If", "Do Case", "While", "For", "Begin Sequence", "Try"};
  const tStatementPlace& place = block.place();
  const char* const word = kWords[static_cast<std::size_t>(block.block())];
  return place.file->noteAt(place,
                            noted("opened by %1, line %2", {word, std::to_string(place.line)}));
}

}  // namespace

void tStatementCheck::begin() {
  structures_.clear();
  bodies_.clear();
  misplaced_ = {};
  executableSeen_ = settled_ = false;
}

void tStatementCheck::finish() {
  raiseUnclosed(nullptr);
}

// The innermost one first, with what stands around it.
void tStatementCheck::raiseUnclosed(const tStatementPlace* next) const {
  constexpr std::size_t kShown = 4;
  if (structures_.empty()) return;
  const std::vector<tBlockCmd>& open = structures_.open();
  std::vector<tNote> notes;
  for (std::size_t i = open.size(); i > 0 && notes.size() < kShown; --i) {
    notes.push_back(openedBy(open[i - 1]));
  }
  if (next == nullptr) {
    notes.push_back(noted("still open at the end of the file"));
  } else {
    notes.push_back(next->file->noteAt(
        *next, noted("still open where a function begins, line %1", {std::to_string(next->line)})));
  }
  const tStatementPlace& place = open.back().place();
  place.file->raise(eSourceError::kUnclosedStructure, place, nullptr, std::move(notes));
}

// A word that continues, ends or leaves a structure stands where it cannot.
void tStatementCheck::raiseMisfit(eSourceError error, bool leaves,
                                  const tStatementPlace& place) const {
  std::vector<tNote> notes;
  const std::vector<tBlockCmd>& open = structures_.open();
  const auto sequence = std::find_if(open.rbegin(), open.rend(), [](const tBlockCmd& block) {
    return block.block() == eBlock::kSequence;
  });
  if (leaves && sequence != open.rend()) {
    notes.push_back(openedBy(*sequence));
  } else if (!leaves && open.empty()) {
    notes.push_back(noted("no control structure is open"));
  } else if (!leaves) {
    notes.push_back(openedBy(open.back()));
    const bool second =
        error == eSourceError::kElseWithoutIf || error == eSourceError::kElseIfWithoutIf;
    if (second && open.back().elseSeen()) notes.push_back(noted("it has an Else already"));
  }
  place.file->raise(error, place, nullptr, std::move(notes));
}

void tStatementCheck::raiseInBody(eSourceError error, const tStatementPlace& place) const {
  const tStatementPlace& body = bodies_.top().place();
  place.file->raise(error, place, nullptr,
                    {body.file->noteAt(body, noted("its function begins in line %1",
                                                   {std::to_string(body.line)}))});
}

bool tStatementCheck::judgePlain(std::string_view text, const char* first, std::size_t untouched,
                                 tSourceFile& file, int line) {
  const std::string_view word = nameAt(first);
  const eStatementWord meaning = statementWord(word);
  if (settled_ && meaning == kNone) {
    executableSeen_ = true;
    return true;
  }
  const char* const next = skipBlanks(word.data() + word.size());
  if (standsAlone(meaning) && !mayMakeName(*next)) {
    judge({.word = word, .next = {}, .third = {}}, meaning, false, file.placeOf(line));
    return true;
  }
  const std::size_t at = static_cast<std::size_t>(next - text.data());
  const bool ifFunction = meaning == kIf && *next == '(' && tIfGroup::isFunction(text.substr(at));
  const tOpening opening = word.empty() ? tOpening() : openingOf(word, text.substr(at));
  const auto isSure = [&](std::string_view token) {
    return token.empty() || isToken(token) || token.end() <= text.begin() + untouched;
  };
  if (untouched < text.size() && !(isSure(opening.next) && isSure(opening.third))) return false;
  // The message about a function without a name shows the token that stands there.
  if (meaning == kFunction && !isName(opening.next)) return false;
  if (statementWord(opening.next) == kFunction && !isName(opening.third)) return false;
  judge(opening, meaning, ifFunction, file.placeOf(line));
  return true;
}

void tStatementCheck::judge(const tOpening& opening, eStatementWord word, bool ifFunction,
                            const tStatementPlace& place) {
  if (word == kDebugMarker) return;
  const bool call = opening.next == "(";
  const bool name = ifFunction || opening.wordIsName() || (call && takesNoOperand(word));
  if (word == kNone || name) {
    noteExecutable(!opening.word.empty() && (name || call), place);
    return;
  }
  if (startsBody(word, opening, place)) {
    openBody(place);
  } else if (!declares(word, opening, place)) {
    const bool ofBody = useStructures(word, opening, place) || word == kBreak;
    noteExecutable(ofBody || call, place);
  }
}

void tStatementCheck::noteExecutable(bool needsBody, const tStatementPlace& place) {
  executableSeen_ = true;
  if (!needsBody || settled_) return;
  misplaced_ = place;
  settled_ = true;
}

bool tStatementCheck::startsBody(eStatementWord word, const tOpening& opening,
                                 const tStatementPlace& place) const {
  if (mayModifyFunction(word)) {
    const eStatementWord modified = statementWord(opening.next);
    if (modified != kFunction && modified != kMethod) return false;
    if (isName(opening.third)) return true;
    if (word == kStatic && modified == kFunction && isNoName(opening.third)) {
      raise(eSourceError::kInvalidFunctionName, place, opening.third);
    }
    return false;
  }
  switch (word) {
    case kFunction:
      if (!isName(opening.next)) raise(eSourceError::kInvalidFunctionName, place, opening.next);
      return true;
    case kMethod:
      return isName(opening.next);
    default:
      return word == kMainFunction;
  }
}

void tStatementCheck::openBody(const tStatementPlace& place) {
  if (bodies_.empty() && misplaced_.line > 0) {
    misplaced_.file->raise(eSourceError::kOutsideFunction, misplaced_, nullptr,
                           {place.file->noteAt(place, noted("the first function begins in line %1",
                                                            {std::to_string(place.line)}))});
  }
  raiseUnclosed(&place);
  bodies_.clear();
  bodies_.push(eBlock::kBody, place);
  executableSeen_ = false;
  settled_ = true;
}

// Statements that are not executed. True when it is one.
bool tStatementCheck::declares(eStatementWord word, const tOpening& opening,
                               const tStatementPlace& place) {
  switch (word) {
    case kStatic:
    case kDeclaration:
      return true;
    case kLocal: {
      if (!bodies_.empty() && executableSeen_) raiseInBody(eSourceError::kLateLocal, place);
      if (!settled_) misplaced_ = place;
      settled_ = true;
      return true;
    }
    case kNamespace:
      if (!isName(opening.next)) return false;
      if (!bodies_.empty()) raiseInBody(eSourceError::kOutsideFunction, place);
      if (!place.file->isExtendedSource()) {
        place.file->raise(eSourceError::kOutsideFunction, place, nullptr,
                          {noted("only sources of the extended language have it")});
      }
      return true;
    default:
      return false;
  }
}

// True when the statement belongs to the structures of a body.
bool tStatementCheck::useStructures(eStatementWord word, const tOpening& opening,
                                    const tStatementPlace& place) {
  const tUse use = useOf(word, opening.next);
  eSourceError error = eSourceError::kNone;
  switch (use.use) {
    case eUse::kNone:
      return false;
    case eUse::kOpens:
      structures_.push(static_cast<eBlock>(use.what), place);
      return true;
    case eUse::kTakes:
      error = structures_.checkErr(static_cast<eBlockWord>(use.what));
      break;
    case eUse::kLeaves:
      error = structures_.checkErr(static_cast<eLeaving>(use.what));
      break;
  }
  if (error != eSourceError::kNone) raiseMisfit(error, use.use == eUse::kLeaves, place);
  return true;
}

}  // namespace precomp
