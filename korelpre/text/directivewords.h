#pragma once

#include <cstdint>

namespace precomp {

/// See directives.def.
enum class eDirective : std::uint8_t {
  kNone,
#define DIRECTIVE(name, word, skipped) name,
#include "korelpre/text/directives.def"
#undef DIRECTIVE
};

struct tDirectiveWord {
  eDirective directive = eDirective::kNone;
  int length = 0;  // in bytes, the "#" included
};

/// The directive whose word stands at `p`, whatever follows it.
tDirectiveWord directiveAt(const char* p, const char* end);
/// The same for those that mean something in a skipped region: the conditionals.
tDirectiveWord conditionalAt(const char* p, const char* end);

constexpr bool isConditional(eDirective directive) {
  return directive >= eDirective::kIfdef && directive <= eDirective::kEndif;
}
/// Whether the directive makes a rule with a pattern and a result.
constexpr bool makesPattern(eDirective directive) {
  return directive >= eDirective::kCommand && directive <= eDirective::kXTranslate;
}
constexpr bool isCommand(eDirective directive) {
  return directive == eDirective::kCommand || directive == eDirective::kXCommand;
}
/// Whether the words of the directive's rule may be abbreviated in statements.
constexpr bool abbreviates(eDirective directive) {
  return directive == eDirective::kCommand || directive == eDirective::kTranslate;
}

}  // namespace precomp
