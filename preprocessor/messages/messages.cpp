#include "preprocessor/messages/messages.h"

#include <algorithm>
#include <utility>

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

/// Appends words in the language in force, or, if there is no memory for that, as they are.
template <class tOutput>
void appendTranslated(std::string_view words, tOutput& output) {
  tString english;
  tString translated;
  try {
    english = tString(words);
    translated = translate(english.c_str());
  } catch (...) {
    translated = tString::borrow(words);
  }
  output.append(translated);
}

/// Appends one text of a row, its words translated into the language in force, and its arguments as
/// `output` shows them.
template <class tOutput>
void compose(std::string_view text, const tRow& row, tMessageArguments arguments, tOutput& output) {
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find_first_of("{%"), text.size());
    output.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) return;
    std::size_t size = 2;
    if (text[0] == '%') {
      output.appendArgument(arguments.begin()[text[1] - '1']);
    } else if (text[1] == '}') {
      compose(row.told, row, arguments, output);
    } else {
      size = text.find('}') + 1;
      appendTranslated(text.substr(1, size - 2), output);
    }
    text.remove_prefix(size);
  }
}

/// Prints in pieces, most messages in one. It allocates nothing: the message may be that there is
/// no memory.
class tPieces {
 public:
  tPieces() = default;
  ~tPieces() { flush(); }
  tPieces(const tPieces&) = delete;
  tPieces& operator=(const tPieces&) = delete;

  void appendArgument(std::string_view text) { appendVisibly(text, *this); }
  void append(std::string_view text) {
    while (!text.empty()) {
      if (size_ == sizeof piece_) flush();
      const std::size_t taken = text.copy(piece_ + size_, sizeof piece_ - size_);
      size_ += taken;
      text.remove_prefix(taken);
    }
  }

 private:
  void flush() {
    writeOutput({piece_, size_});
    size_ = 0;
  }

  char piece_[1000];
  std::size_t size_ = 0;
};

struct tTold {
  void append(std::string_view more) { text.append(more); }
  // A name ends at its first zero byte, as one does for the file system.
  void appendArgument(std::string_view more) { text.append(more.substr(0, more.find('\0'))); }

  tString text;
};

}  // namespace

void printMessage(eMessage message, tMessageArguments arguments) {
  const tRow& row = rowOf(message);
  tPieces pieces;
  compose(row.printed, row, arguments, pieces);
}

tDiagnosis diagnosisOf(eMessage message, tMessageArguments arguments) {
  const tRow& row = rowOf(message);
  tDiagnosis diagnosis;
  tTold translated;
  compose(row.told, row, arguments, translated);
  diagnosis.translated = visibleControls(translated.text);
  const tLanguageScope english((tLanguage()));
  diagnosis.severity = row.severity;
  diagnosis.slug = tString::borrow(row.slug);
  tTold told;
  compose(row.told, row, arguments, told);
  diagnosis.message = std::move(told.text);
  return diagnosis;
}
