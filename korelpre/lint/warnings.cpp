#include "korelpre/lint/warnings.h"

#include <algorithm>
#include <string>
#include <vector>

#include "korelpre/errors/notes.h"
#include "lib_base/nearest.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

constexpr tWarningText kTexts[] = {
#define WARNING(name, slug, text, advice) {slug, text, advice},
#include "korelpre/lint/warnings.def"
#undef WARNING
};

bool takeStart(std::string_view& word, std::string_view start) {
  if (!word.starts_with(start)) return false;
  word.remove_prefix(start.size());
  return true;
}

tString complaintAbout(std::string_view word) {
  std::vector<std::string> slugs;
  for (const tWarningText& text : kTexts) slugs.emplace_back(text.slug);
  tString complaint = tString("unknown warning '").append(word).append("'");
  takeStart(word, "no-");
  takeStart(word, "error=");
  const std::string nearest = nearestTo(std::string(word), slugs);
  return nearest.empty() ? complaint
                         : complaint.append("; did you mean ").append(nearest).append("?");
}

}  // namespace

std::span<const tWarningText> warningTexts() {
  return kTexts;
}

std::size_t warningNamed(std::string_view slug) {
  const auto* const found = std::find_if(std::begin(kTexts), std::end(kTexts),
                                         [&](const auto& text) { return text.slug == slug; });
  return static_cast<std::size_t>(found - std::begin(kTexts));
}

tString tWarningSet::take(std::string_view words) {
  while (!words.empty()) {
    const std::string_view word = words.substr(0, words.find(','));
    words.remove_prefix(std::min(word.size() + 1, words.size()));
    if (!takeWord(word)) return complaintAbout(word);
  }
  return {};
}

bool tWarningSet::takeWord(std::string_view word) {
  const bool wanted = !takeStart(word, "no-");
  const bool everyError = word == "error";
  const bool error = everyError || takeStart(word, "error=");
  const bool all = everyError || (!error && word == "all");
  const std::size_t which = all ? kWarningCount : warningNamed(word);
  if (!all && which == kWarningCount) return false;
  for (std::size_t i = 0; i < kWarningCount; ++i) {
    if (!all && i != which) continue;
    // "error" alone is about those that are wanted otherwise.
    if (error) errors_[i] = wanted;
    if (!error || (wanted && !all)) wanted_[i] = wanted;
  }
  return true;
}

tDiagnosis diagnosisOf(eWarning warning, bool isError,
                       std::initializer_list<std::string_view> arguments) {
  const tWarningText& texts = warningTextOf(warning);
  tDiagnosis diagnosis;
  diagnosis.severity = isError ? tDiagnosis::kError : tDiagnosis::kWarning;
  diagnosis.slug = tString::borrow(texts.slug);
  diagnosis.message = filled(texts.text, arguments);
  diagnosis.translated = filled(translate(texts.text), arguments);
  diagnosis.notes.push_back(noted(texts.advice));
  return diagnosis;
}

}  // namespace precomp
