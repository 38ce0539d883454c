// The listing of rules. Every form goes to a string, or to the output when there is none.

#include "korelpre/rules/resultmarker.h"
#include "korelpre/rules/rule.h"
#include "lib_base/output.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

void put(tString* out, std::string_view text) {
  if (out != nullptr) {
    out->append(text);
  } else {
    writeOutput(text);
  }
}

}  // namespace

void tMatchMarker::printForm(tString* out, const char* prefix, const char* suffix) const {
  put(out, prefix);
  put(out, token());
  put(out, suffix);
}

// Kept on purpose: a regular marker of a pattern is its bare name.
void tMatchMarker::print(tString* out) const {
  printForm(out, "", "");
}

void tMatchIdentifier::print(tString* out) const {
  printForm(out, "", " ");
}

void tMatchMarkerList::print(tString* out) const {
  printForm(out, "<", " ,...> ");
}

void tMatchMarkerRestrict::print(tString* out) const {
  printForm(out, "<", ":");
  for (int i = 0; i < alternatives().count(); ++i) {
    const tMatchMarker* const first = alternatives()[i];
    for (const tMatchMarker* word = first; word != nullptr; word = word->next()) {
      put(out, word != first ? " " : i > 0 ? "," : "");
      put(out, word->token());
    }
  }
  put(out, "> ");
}

void tMatchMarkerWild::print(tString* out) const {
  printForm(out, "<*", "*> ");
}

void tMatchMarkerExt::print(tString* out) const {
  printForm(out, "<(", ")> ");
}

void tMatchMarkerOpt::print(tString* /*out*/) const {}

void tResultMarkerOpt::print(tString* /*out*/) const {}

void tResultMarker::print(tString* out) const {
  printForm(out, "", " ");
}

void tResultIdentifier::print(tString* out) const {
  printForm(out, "", " ");
}

void tResultMarkerDumbStr::print(tString* out) const {
  printForm(out, "#<", ">");
}

void tResultMarkerRegStr::print(tString* out) const {
  printForm(out, "<\"", "\">");
}

void tResultMarkerSmartStr::print(tString* out) const {
  printForm(out, "<(", ")>");
}

void tResultMarkerBlock::print(tString* out) const {
  printForm(out, "<{", "}>");
}

void tResultMarkerBool::print(tString* out) const {
  printForm(out, "<.", ".>");
}

void tBaseXChg::rprint(tString* out, const tMatchMarker* head) const {
  const bool isGroup = head != nullptr && head->isGroupHead();
  if (isGroup) put(out, "[");
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    marker->print(out);
    for (int i = 0; i < marker->groups().count(); ++i) rprint(out, marker->groups()[i]);
  }
  if (isGroup) put(out, "]");
}

void tBaseXChg::print(tString* out) const {
  rprint(out, firstMatch());
  put(out, " => ");
  rprint(out, firstResult());
  put(out, " \n ");
}

// Kept on purpose: a translation carries no directive word in a string.
void tTranslate::print(tString* out) const {
  if (out == nullptr) put(out, translate("tTranslate "));
  tBaseXChg::print(out);
}

// Kept on purpose: a #command is listed as an #xcommand too.
void tCommand::print(tString* out) const {
  put(out, out != nullptr ? tString("#xcommand ") : translate("xCommand "));
  tBaseXChg::print(out);
}

}  // namespace precomp
