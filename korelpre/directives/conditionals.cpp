#include "korelpre/directives/conditionals.h"

namespace precomp {

void tConditionals::open(int line, bool skip, bool ignored) {
  open_.push_back({line, skip, ignored});
  skip_ = skip;
}

// Kept on purpose: a second #else of the same block inverts once more, and the #else of an
// "#ifdef ignore" does nothing.
void tConditionals::turn() {
  tOpen& innermost = open_.back();
  if (innermost.ignored) return;
  skip_ = !skip_;
  innermost.skip = skip_;
}

void tConditionals::close() {
  open_.pop_back();
  skip_ = !open_.empty() && open_.back().skip;
}

}  // namespace precomp
