#include "korelpre/rules/definereader.h"

#include <utility>

#include "korelpre/text/cursor.h"
#include "korelpre/text/tokenkinds.h"
#include "lib_base/misc.h"
#include "ssvp40xpf/korelpretokens.h"

namespace precomp {

using namespace korelpre;

bool tDefineReader::read(const char* start, const char* end, int line, tMarkerArena* arena) {
  const char* const directive = skipBlanks(start, end);
  const tDirectiveWord word = directiveAt(directive, end);
  if (word.directive != eDirective::kDefine) return false;
  const char* p = directive + word.length;
  line_ = line;
  parameters_.Destroy();
  value_.Destroy();
  if (!readName(p, end, line) || !readPieces(directive, p, end)) return false;
  std::size_t at = 0;
  if (name_.view().ends_with('(') && !readParameters(at, line)) return false;
  return readValue(at, arena);
}

tRuleDirective tDefineReader::directive() const {
  return {.directive = eDirective::kDefine,
          .line = line_,
          .text = text(),
          .name = &name_,
          .parameters = parameters_.empty() ? nullptr : &parameters_,
          .value = &value_};
}

bool tDefineReader::readName(const char*& p, const char* end, int line) {
  if (!isBlank(*p)) return false;
  const char* const name = p = skipBlanks(p, end);
  if (!isNameStart(*p)) return false;
  p = behindWord(p);
  const bool hasParameters = *p == '(';
  if (hasParameters) ++p;
  if (!hasParameters && !isBlank(*p) && *p != '\r') return false;
  name_.setText(tString::borrow({name, static_cast<std::size_t>(p - name)}));
  name_.setKind(kKindIdentifier);
  name_.setAux(hasParameters ? kTokFuncName : kTokIdentName);
  name_.setLine(hasParameters ? 0 : static_cast<std::uint32_t>(line));
  return true;
}

bool tDefineReader::readParameters(std::size_t& at, int line) {
  for (;; at += 2) {
    const tPiece& name = piece(at);
    const tPiece& next = piece(at + 1);
    if (!name.isName() || (!next.is(kKindComma) && !next.is(kKindParenClose))) return false;
    auto* const parameter = new tSpcString(name.make());
    parameter->setKind(kKindIdentifier);
    parameter->setAux(name.token);
    parameter->setLine(static_cast<std::uint32_t>(line + name.line));
    parameters_.add(parameter);
    if (next.is(kKindComma)) continue;
    at += 2;
    return true;
  }
}

// The blanks behind a name belong to it.
bool tDefineReader::readValue(std::size_t at, tMarkerArena* arena) {
  for (; at < count(); ++at) {
    const tPiece& token = piece(at);
    if (token.kind == 0) return false;
    tString spacing;
    if (at > 0 && !token.spacing.empty()) spacing = spacingOf(token, arena);
    value_.add(new tSpcString(token.text, std::move(spacing), token.kind, token.token, 0));
  }
  return true;
}

}  // namespace precomp
