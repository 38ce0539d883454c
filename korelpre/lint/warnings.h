#pragma once

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "korelpre/errors/diagnostic.h"

namespace precomp {

/// The warnings; see warnings.def.
enum class eWarning : std::uint8_t {
#define WARNING(name, slug, text, advice) name,
#include "korelpre/lint/warnings.def"
#undef WARNING
};

struct tWarningText {
  const char* slug;
  const char* text;
  const char* advice;
};

/// All of them, in the order of the table.
std::span<const tWarningText> warningTexts();
inline const tWarningText& warningTextOf(eWarning warning) {
  return warningTexts()[static_cast<std::size_t>(warning)];
}
inline constexpr std::size_t kWarningCount = 0
#define WARNING(name, slug, text, advice) +1
#include "korelpre/lint/warnings.def"
#undef WARNING
    ;
/// The index of the warning that is called so; kWarningCount for none.
std::size_t warningNamed(std::string_view slug);

/// Which warnings are wanted, and which of them are errors.
class tWarningSet {
 public:
  /// Takes the words of a host: "all", "SLUG", "no-SLUG", "error", "error=SLUG", "no-error=SLUG",
  /// separated by commas; a later one counts more. Returns what is wrong with them, or an empty
  /// text.
  tString take(std::string_view words);

  bool empty() const { return wanted_.none(); }
  bool has(eWarning warning) const { return wanted_[static_cast<std::size_t>(warning)]; }
  bool isError(eWarning warning) const { return errors_[static_cast<std::size_t>(warning)]; }

 private:
  bool takeWord(std::string_view word);

  std::bitset<kWarningCount> wanted_;
  std::bitset<kWarningCount> errors_;
};

/// The diagnosis of a warning without its place, with its advice as the only note.
tDiagnosis diagnosisOf(eWarning warning, bool isError,
                       std::initializer_list<std::string_view> arguments);

}  // namespace precomp
