// The listing of rules. Every form goes to a string, or to the output when there is none.

#include "korelpre/rules/rule.h"
#include "lib_base/output.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

// How a marker is listed.
struct tForm {
  eRuleType kind;
  const char* before;  // null: not at all
  const char* behind;
};

constexpr tForm kForms[] = {
#define MARKER(class, kind, number, side, production, open, close, before, behind) \
  {kind, before, behind},
#include "korelpre/rules/markers.def"
#undef MARKER
};

const tForm& formOf(eRuleType kind) {
  const tForm* form = kForms;
  while (form->kind != kind) ++form;
  return *form;
}

}  // namespace

void tMatchMarker::put(tString* out, std::string_view text) {
  if (out != nullptr) {
    out->append(text);
  } else {
    writeOutput(text);
  }
}

void tMatchMarker::printForm(tString* out, const char* prefix, const char* suffix) const {
  put(out, prefix);
  put(out, token());
  put(out, suffix);
}

void tMatchMarker::print(tString* out) const {
  const tForm& form = formOf(kind());
  if (form.before != nullptr) printForm(out, form.before, form.behind);
}

void tBaseXChg::rprint(tString* out, const tMatchMarker* head) const {
  const bool isGroup = head != nullptr && head->isGroupHead();
  if (isGroup) tMatchMarker::put(out, "[");
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    marker->print(out);
    for (int i = 0; i < marker->groups().count(); ++i) rprint(out, marker->groups()[i]);
  }
  if (isGroup) tMatchMarker::put(out, "]");
}

void tBaseXChg::print(tString* out) const {
  rprint(out, firstMatch());
  tMatchMarker::put(out, " => ");
  rprint(out, firstResult());
  tMatchMarker::put(out, " \n ");
}

// Kept on purpose: a translation carries no directive word in a string.
void tTranslate::print(tString* out) const {
  if (out == nullptr) tMatchMarker::put(out, translate("tTranslate "));
  tBaseXChg::print(out);
}

// Kept on purpose: a #command is listed as an #xcommand too.
void tCommand::print(tString* out) const {
  tMatchMarker::put(out, out != nullptr ? tString("#xcommand ") : translate("xCommand "));
  tBaseXChg::print(out);
}

}  // namespace precomp
