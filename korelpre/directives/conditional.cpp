#include "korelpre/headers/headerrecorder.h"
#include "korelpre/korelprecls.h"

namespace precomp {

std::uint8_t KorelPreYaccClass::doIfDef(const tSpcString* name, int line) {
  auto* record = new tIFDef;
  conditionals_.add(record);
  record->line = line;
  if (name != nullptr) {
    record->name = *name;
    const bool defined = isDefined(*name);
    if (shared_.recorder != nullptr) shared_.recorder->tested(*name, defined);
    skip_ = defined ? 0 : 1;
  } else {
    record->name = tString::borrow("ignore");
    skip_ = 1;
  }
  record->state = skip_;
  return skip_;
}

std::uint8_t KorelPreYaccClass::doIfNDef(const tSpcString* name, int line) {
  doIfDef(name, line);
  if (name != nullptr) skip_ = skip_ != 0 ? 0 : 1;
  conditionals_.last()->state = skip_;
  return skip_;
}

// Kept on purpose: a second #else of the same block inverts once more, and the #else of an
// "#ifdef ignore" does nothing.
void KorelPreYaccClass::doElseIF(int line) {
  if (conditionals_.empty()) exceptionAt(2070, line, nullptr);
  tIFDef& innermost = *conditionals_.last();
  if (innermost.name == "ignore") return;
  skip_ = skip_ != 0 ? 0 : 1;
  innermost.state = skip_;
}

void KorelPreYaccClass::doEndIF(int line) {
  if (conditionals_.empty()) exceptionAt(2069, line, nullptr);
  conditionals_.removeAt(conditionals_.count() - 1);
  skip_ = conditionals_.empty() ? 0 : conditionals_.last()->state;
}

tKorelPreStackElement* KorelPreYaccClass::ifValid(tKorelPreStackElement* element) {
  if (skipping() && element != nullptr) element->clearValues();
  return element;
}

}  // namespace precomp
