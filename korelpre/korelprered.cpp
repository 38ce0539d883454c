// The semantic actions of the directive grammar. A production number is its place in
// tools/grammars/korelpre.y.

#include <algorithm>

#include "korelpre/korelprecls.h"
#include "korelpre/tokenkinds.h"
#include "lib_base/misc.h"

namespace precomp {

using namespace korelpre;

namespace {

enum eProduction : unsigned {
  kStatementLine = 5,
  kInclude = 6,
  kCommand = 7,
  kXTranslate = 10,
  kDefineValue = 11,
  kDefine = 12,
  kDefineParamsValue = 13,
  kDefineParams = 14,
  kParamListStart = 15,
  kParamListMore = 16,
  kParamName = 17,
  kUndef = 19,
  kIfdef = 22,
  kIfndef = 23,
  kElse = 24,
  kEndif = 25,
  kStdoutAlone = 27,
  kMatchPatternStart = 28,
  kMatchPatternMore = 29,
  kMatchToken = 31,
  kResultPattern = 32,
  kResultElementsStart = 35,
  kResultElementsMore = 36,
  kResultToken = 38,
  kTokenListStart = 39,
  kTokenListMore = 40,
  kSpcIdentSpc = 41,
  kKeyword = 48,
  kSpcStringSpc = 49,
  kStringAlone = 52,
  kDoubleQuoted = 53,
  kSingleQuoted = 54,
  kTokenFirst = 73,
  kTokenKeyword = 125,
  kTokenLast = 133,
  kSqlBlock = 134,
  kKeywordFirst = 151,
  kKeywordLast = 204,
};

bool isDirectiveProduction(unsigned production) {
  return (production >= kInclude && production <= kDefineParams) ||
         (production >= kUndef && production <= kStdoutAlone);
}

bool startsList(unsigned production) {
  return production == kTokenListStart || production == kParamListStart ||
         production == kMatchPatternStart || production == kResultElementsStart;
}

bool continuesList(unsigned production) {
  return production == kTokenListMore || production == kParamListMore ||
         production == kMatchPatternMore || production == kResultElementsMore;
}

// Whether every "[" that opens a group has its "]".
bool groupsAreBalanced(const tAutoArray<tSpcString>& elements) {
  int depth = 0;
  for (int i = 0; i < elements.count() && depth >= 0; ++i) {
    if (elements[i].kind() == kKindBracketOpen) ++depth;
    if (elements[i].kind() == kKindBracketClose) --depth;
  }
  return depth == 0;
}

// Of productions 41 to 52 the even ones have no blanks in front.
unsigned nameIndex(unsigned production) {
  return production % 2 != 0 ? 1 : 0;
}

unsigned includeNameIndex(unsigned production) {
  return production == kSpcStringSpc || production == kSpcStringSpc + 2 ? 1 : 0;
}

}  // namespace

SSYaccStackElement* KorelPreYaccClass::reduce(unsigned production, unsigned size) {
  const int line = size > 0 ? lineOf(0) : 0;
  tKorelPreStackElement* result = nullptr;
  if (!isDirectiveProduction(production)) {
    result = reduceValue(production, size);
  } else {
    // See conditional.cpp: in a skipped region only the four conditionals act, without a name.
    if (skipping()) {
      reduceSkipped(production);
    } else {
      reduceDirective(production);
    }
    result = new tKorelPreStackElement;
    currentLine_ = std::max(line, 1);
  }
  if (result->line() == 0) result->setLine(static_cast<std::uint32_t>(line));
  return ifValid(result);
}

tKorelPreStackElement& KorelPreYaccClass::part(unsigned index) {
  return static_cast<tKorelPreStackElement&>(*elementFromProduction(static_cast<long>(index)));
}

int KorelPreYaccClass::lineOf(unsigned index) {
  const tKorelPreStackElement& element = part(index);
  if (element.lexeme() != nullptr) return static_cast<int>(element.lexeme()->line());
  return static_cast<int>(element.line());
}

tKorelPreStackElement* KorelPreYaccClass::takeOver(unsigned index) {
  tKorelPreStackElement& element = part(index);
  element.refInc();
  return &element;
}

// The token that a lexeme makes, as the output must show it: a string has its quotes and an escaped
// character its backslash again.
tKorelPreStackElement* KorelPreYaccClass::makeToken(unsigned production) {
  const SSLexLexeme& lexeme = *part(0).lexeme();
  auto* result = new tKorelPreStackElement;
  tSpcString& token = result->token();
  token.setKind(production);
  token.setAux(lexeme.token());
  token.setLine(lexeme.line());
  if (lexeme.token() == kTokSpc) {
    token.setText(tString(lexeme.text(), lexeme.length()));
    return result;
  }
  std::size_t begin = lexeme.absoluteOffset();
  std::size_t length = lexeme.length();
  if (lexeme.token() == kTokEspCh) {
    --begin;
    ++length;
  } else if (lexeme.token() == kTokString || lexeme.token() == kTokSqString) {
    --begin;
    const bool closed = text_[begin] == text_[begin + 1 + length];
    length += closed ? 2 : 1;
  }
  token.setText(tString::borrow(text_.view().substr(begin, length)));
  return result;
}

tKorelPreStackElement* KorelPreYaccClass::makeName(unsigned index) {
  if (part(index).lexeme() == nullptr) return takeOver(index);
  const SSLexLexeme& lexeme = *part(index).lexeme();
  auto* result = new tKorelPreStackElement;
  result->token().setText(
      tString::borrow({text_.data() + lexeme.absoluteOffset(), lexeme.length()}));
  result->token().setKind(kKindIdentifier);
  result->token().setAux(lexeme.token());
  result->token().setLine(lexeme.line());
  return result;
}

tKorelPreStackElement* KorelPreYaccClass::reduceValue(unsigned production, unsigned size) {
  if (continuesList(production)) {
    part(0).add(part(size - 1).token());
    return takeOver(0);
  }
  if (startsList(production)) {
    auto* result = new tKorelPreStackElement;
    result->add(part(0).token());
    return result;
  }
  if (production == kMatchToken || production == kResultToken ||
      (production >= kResultPattern && production <= kResultPattern + 1)) {
    return takeOver(0);
  }
  if (production == kTokenKeyword) {
    part(0).token().setKind(kKindKeyword);
    return takeOver(0);
  }
  if (production >= kTokenFirst && production <= kTokenLast) return makeToken(production);
  if (production >= kKeywordFirst && production <= kKeywordLast) return makeName(0);
  if (production >= kSpcIdentSpc && production <= kKeyword) return makeName(nameIndex(production));
  if (production >= kSpcStringSpc && production <= kStringAlone) {
    return takeOver(includeNameIndex(production));
  }
  if (production == kDoubleQuoted || production == kSingleQuoted || production == kParamName) {
    return makeName(0);
  }
  if (production == kSqlBlock) exceptionAt(2003, lineOf(0), nullptr);  // not supported yet
  if (production == kStatementLine && !skipping()) attachStatement(part(0));
  return new tKorelPreStackElement;
}

void KorelPreYaccClass::reduceSkipped(unsigned production) {
  switch (production) {
    case kIfdef:
      doIfDef(nullptr, 0);
      break;
    case kIfndef:
      doIfNDef(nullptr, 0);
      break;
    case kElse:
      doElseIF(0);
      break;
    case kEndif:
      doEndIF(0);
      break;
    default:
      break;
  }
}

void KorelPreYaccClass::reduceDirective(unsigned production) {
  const int line = lineOf(0);
  switch (production) {
    case kInclude:
      doInclude(line, part(1).token());
      break;
    case kDefineValue:
      doDefine(line, part(1).token(), part(2).list());
      break;
    case kDefine:
      doDefine(line, part(1).token(), part(1).list());
      break;
    case kIfdef:
    case kIfndef:
      source_.reset(line);
      source_.addDirective(line);
      if (production == kIfdef) {
        doIfDef(&part(1).token(), line);
      } else {
        doIfNDef(&part(1).token(), line);
      }
      break;
    case kElse:
      doElseIF(line);
      source_.addDirective(line);
      break;
    case kEndif:
      doEndIF(line);
      source_.addDirective(line);
      break;
    default:
      // #undef, #error and #stdout have no effect. Kept on purpose: #undef removes no rule.
      if (production >= kCommand && production <= kXTranslate) {
        if (!groupsAreBalanced(part(1).list()) || !groupsAreBalanced(part(3).list())) {
          exceptionAt(2001, line, nullptr);
        }
        source_.addDirective(line);
      }
      break;
  }
}

void KorelPreYaccClass::attachStatement(tKorelPreStackElement& list) {
  if (list.list().empty()) return;
  const auto line = static_cast<int>(list.list()[0].line());
  source_.entry(line).tokens().swap(list.list());
}

void KorelPreYaccClass::doInclude(int line, const tString& name) {
  const tString file(name.view());
  if (searchInclude(file)) return;
  currentLine_ = std::max(line, 1);
  auto* record = new tInclude(line, file, *this);
  includes_.add(record);
  if (record->process()) {
    source_.entry(line).include = record;
    noteIncluded(file);
  } else {
    includes_.removeAt(includes_.indexOf(record));
  }
}

// A file is included once into the subtree of one processor, and never into itself.
// Kept on purpose: case matters for the file's own name only.
bool KorelPreYaccClass::searchInclude(const tString& name) const {
  tString folded(name);
  folded.toUpper();
  return name == requestedName_ || includedNames_.count(std::string(folded.view())) > 0;
}

void KorelPreYaccClass::noteIncluded(const tString& name) {
  tString folded(name);
  folded.toUpper();
  for (KorelPreYaccClass* above = this; above != nullptr; above = above->includer_) {
    above->includedNames_.emplace(folded.view());
  }
}

void KorelPreYaccClass::doDefine(int line, const tSpcString& name, tAutoArray<tSpcString>& value) {
  // The rule outlives the text.
  tSpcString key(name);
  key.setText(tString(name.view()));
  for (int i = 0; i < value.count(); ++i) {
    const bool escaped = value[i].kind() == kKindEscaped;
    value[i].setText(tString(escaped ? value[i].view().substr(1) : value[i].view()));
  }
  auto rule = std::make_unique<tTranslate>(&root(), key, value);
  if (includeMode_ != 0) {
    removeSingleDefine(key);
    removeDynamicDefines(key);
    defines()->Add(rule.release());
    return;
  }
  tSourceLine& entry = source_.entry(line);
  rule->setLineEntry(&entry);
  dynDefines()->Add(rule.get());
  entry.pendingDefine = std::move(rule);
}

// A #define takes the place of the only one of its name.
void KorelPreYaccClass::removeSingleDefine(const tString& name) {
  int first = 0;
  int last = 0;
  if (defines()->Find(name, first, last, 0) != 0 && first == last) defines()->removeRule(first);
}

void KorelPreYaccClass::removeDynamicDefines(const tString& name) {
  int first = 0;
  int last = 0;
  while (dynDefines()->Find(name, first, last, 1) != 0) {
    tSourceLine* entry = dynDefines()->takeRule(last)->lineEntry();
    if (entry != nullptr) entry->pendingDefine.reset();
  }
}

}  // namespace precomp
