#pragma once

#include "ssvp40xpf/languageparser.h"

namespace precomp {

/// What a rule needs of the processor whose tables hold it.
class tRuleContext {
 public:
  virtual ~tRuleContext() = default;

  /// The parser of the language, which bounds expressions. Stays the context's.
  virtual AYaccClass* KorelYacc() = 0;
};

}  // namespace precomp
