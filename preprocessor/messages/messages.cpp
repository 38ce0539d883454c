#include "preprocessor/messages/messages.h"

#include <algorithm>

#include "lib_base/language.h"
#include "lib_base/output.h"
#include "lib_base/translate.h"

namespace {

using precomp::tDiagnosis;

struct tRow {
  tDiagnosis::eSeverity severity;
  const char* slug;
  std::string_view told;
  std::string_view printed;
};

constexpr tRow kRows[] = {
#define MESSAGE(name, severity, slug, told, printed) {tDiagnosis::severity, slug, told, printed},
#include "preprocessor/messages/messages.def"
#undef MESSAGE
};

const tRow& rowOf(eMessage message) {
  return kRows[static_cast<std::size_t>(message)];
}

/// Appends one text of a row, its words translated into the language in force, and its arguments as
/// `shown`.
void compose(std::string_view text, const tRow& row, tMessageArguments arguments,
             tString (*shown)(std::string_view), tString& output) {
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find_first_of("{%"), text.size());
    output.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) return;
    std::size_t size = 2;
    if (text[0] == '%') {
      output.append(shown(arguments.begin()[text[1] - '1']));
    } else if (text[1] == '}') {
      compose(row.told, row, arguments, shown, output);
    } else {
      size = text.find('}') + 1;
      output.append(translate(tString(text.substr(1, size - 2)).c_str()));
    }
    text.remove_prefix(size);
  }
}

}  // namespace

void printMessage(eMessage message, tMessageArguments arguments) {
  const tRow& row = rowOf(message);
  tString text;
  compose(row.printed, row, arguments, visibleControls, text);
  writeOutput(text);
}

tDiagnosis diagnosisOf(eMessage message, tMessageArguments arguments) {
  const tLanguageScope english((tLanguage()));
  const tRow& row = rowOf(message);
  tDiagnosis diagnosis;
  diagnosis.severity = row.severity;
  diagnosis.slug = tString::borrow(row.slug);
  // A name ends at its first zero byte, as one does for the file system.
  const auto untilZero = [](std::string_view argument) {
    return tString(argument.substr(0, argument.find('\0')));
  };
  compose(row.told, row, arguments, untilZero, diagnosis.message);
  return diagnosis;
}
