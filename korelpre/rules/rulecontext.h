#pragma once

#include "ssvp40xpf/ayacc.h"

namespace precomp {

/// What a rule needs of the processor whose tables hold it.
class tRuleContext {
 public:
  /// The parser of the language, which bounds expressions. Stays the context's.
  virtual AYaccClass* KorelYacc() = 0;

 protected:
  ~tRuleContext() = default;
};

}  // namespace precomp
