// What the directives do. The productions and their labels stand in tools/grammars/korelpre.y; for
// what the symbols stand for see directives/values.cpp.
//
// A production that makes a directive is turned into the same value that the quick readers make of
// an ordinary one (directives/quickreader.cpp), and one function for each carries it out.

#include <algorithm>

#include "korelpre/directives/conditional.h"
#include "korelpre/directives/ruleentry.h"
#include "korelpre/directives/values.h"
#include "korelpre/korelprecls.h"
#include "korelpre/text/tokenkinds.h"
#include "ssvp40xpf/korelpreproductions.h"

namespace precomp {

using namespace korelpre;

namespace {

// A directive and its production bear the same name; a #define has four.
eDirective directiveOf(unsigned production) {
  switch (production) {
#define DIRECTIVE(name, word, skipped) \
  case name:                           \
    return eDirective::name;
#include "korelpre/text/directives.def"
#undef DIRECTIVE
    case kDefineValue:
    case kDefineParams:
    case kDefineParamsValue:
      return eDirective::kDefine;
    default:
      return eDirective::kNone;
  }
}

}  // namespace

SSYaccStackElement* KorelPreYaccClass::reduce(unsigned production, unsigned size) {
  const int line = size > 0 ? lineOf(0) : 0;
  tKorelPreStackElement* result = nullptr;
  if (leftSideOf(production) == kSymDirective) {
    reduceDirective(production, line);
    result = new tKorelPreStackElement;
    file_.currentLine = std::max(line, 1);
  } else if (skipping()) {
    result = new tKorelPreStackElement;
  } else {
    result = tGrammarValues(*this, file_, sql_, feed_->lineBefore()).valueOf(production, size);
  }
  if (result->line() == 0) result->setLine(static_cast<std::uint32_t>(line));
  return ifValid(result);
}

tKorelPreStackElement& KorelPreYaccClass::part(unsigned index) {
  return partOf(*this, index);
}

int KorelPreYaccClass::lineOf(unsigned index) {
  const tKorelPreStackElement& element = part(index);
  if (element.lexeme() != nullptr) return static_cast<int>(element.lexeme()->line());
  return static_cast<int>(element.line());
}

// What stands in a skipped region is not judged; its conditionals are counted without the grammar.
void KorelPreYaccClass::reduceDirective(unsigned production, int line) {
  const eDirective directive = directiveOf(production);
  if (skipping()) return;
  if (makesPattern(directive)) return reduceRule(directive, line);
  switch (directive) {
    case eDirective::kInclude:
      return include(tString(part(1).token().view()), line);
    case eDirective::kDefine:
      return reduceDefine(production, line);
    case eDirective::kIfdef:
    case eDirective::kIfndef:
      return carryOutConditional(file_, directive, part(1).token(), line);
    case eDirective::kElse:
    case eDirective::kEndif:
      return carryOutConditional(file_, directive, {}, line);
    default:
      // #undef, #error and #stdout have no effect. Kept on purpose: #undef removes no rule.
      if (shared_.watcher != nullptr) {
        shared_.watcher->directiveIgnored(file_, directive, line, directiveText());
      }
      return;
  }
}

void KorelPreYaccClass::reduceDefine(unsigned production, int line) {
  const bool hasParameters = production == kDefineParams || production == kDefineParamsValue;
  const unsigned valueAt = production == kDefine              ? 1
                           : production == kDefineValue       ? 2
                           : production == kDefineParamsValue ? 4
                                                              : 3;
  tAutoArray<tSpcString>& value = part(valueAt).list();
  for (int i = 0; i < value.count(); ++i) unescape(value[i]);
  tSpcString name;
  if (hasParameters) {
    // With the bracket of the parameters at its end.
    const SSLexLexeme& lexeme = *part(1).lexeme();
    name.setText(tString::borrow({file_.text.data() + lexeme.absoluteOffset(), lexeme.length()}));
    name.setKind(kKindIdentifier);
    name.setAux(lexeme.token());
  } else {
    name = part(1).token();
  }
  carryOutRule(file_, {.directive = eDirective::kDefine,
                       .line = line,
                       .text = directiveText(),
                       .name = &name,
                       .parameters = hasParameters ? &part(2).list() : nullptr,
                       .value = &value});
}

void KorelPreYaccClass::reduceRule(eDirective directive, int line) {
  carryOutRule(file_, {.directive = directive,
                       .line = line,
                       .text = directiveText(),
                       .pattern = part(1).chain().get(),
                       .result = part(3).chain().get()});
}

// The text of the directive being reduced up to its last token. One that stands at the end of its
// result has been reduced before and is no part of it.
std::string_view KorelPreYaccClass::directiveText() {
  const std::size_t begin = part(0).lexeme()->absoluteOffset();
  const std::size_t end = begin < innerDirective_ ? innerDirective_ : feed_->lastTokenEnd();
  innerDirective_ = begin;
  return file_.text.view().substr(begin, end - begin);
}

}  // namespace precomp
