#include "preprocessor/run/report.h"

#include <charconv>
#include <exception>
#include <memory>
#include <new>
#include <utility>

#include "lib_base/fatal.h"
#include "lib_gzip/zipsource.h"
#include "preprocessor/copy/normalise.h"
#include "preprocessor/copy/textlines.h"

namespace {

/// The start of a line, with as much of what is too long as a reader may want. Empty when the file
/// cannot be read again.
tString textOf(const tShownLine& shown) {
  constexpr std::size_t kShown = kLongestLine + 200;
  const std::unique_ptr<tFile> file = shown.files.open(shown.name.c_str());
  tString text;
  if (file == nullptr || !file->readAll(text)) return {};
  tString unpacked;
  if (unpackZipSource(text, tString::maxSize(), unpacked) == eZipResult::kOk) text = unpacked;
  std::string_view rest = text;
  for (int line = shown.line; line > 1; --line) takeLine(rest);
  return tString(takeLine(rest).substr(0, kShown));
}

/// A number in digits. It needs no memory.
class tDigits {
 public:
  template <class tNumber>
  explicit tDigits(tNumber number) : end_(std::to_chars(digits_, std::end(digits_), number).ptr) {}
  operator std::string_view() const {  // NOLINT(google-explicit-constructor): no loss
    return {digits_, end_};
  }

 private:
  char digits_[16];
  const char* end_;
};

}  // namespace

void tRunReport::tell(eMessage message, tMessageArguments arguments, int code,
                      std::vector<precomp::tNote> notes) {
  printMessage(message, arguments);
  if (!host_.wantsDiagnoses()) return;
  precomp::tDiagnosis diagnosis = diagnosisOf(message, arguments);
  diagnosis.notes = std::move(notes);
  diagnosis.file = source_;
  diagnosis.code = code;
  host_.diagnosed(diagnosis);
}

void tRunReport::tell(eMessage message, tMessageArguments arguments, const tShownLine& shown,
                      int code) {
  printMessage(message, arguments);
  if (!host_.wantsDiagnoses()) return;
  precomp::tDiagnosis diagnosis = diagnosisOf(message, arguments);
  diagnosis.file = source_;
  diagnosis.code = code;
  diagnosis.line = shown.line;
  diagnosis.sourceLine = textOf(shown);
  // What was put into the line may have made it longer than it is.
  const bool inside = shown.column <= static_cast<int>(diagnosis.sourceLine.size());
  diagnosis.column = inside ? shown.column : 0;
  host_.diagnosed(diagnosis);
}

void tRunReport::pass(precomp::tDiagnosis diagnosis, const precomp::KorelPre16& session,
                      const tString& copy, tDiskMan& files) {
  if (!host_.wantsDiagnoses()) return;
  for (precomp::tNote& note : diagnosis.notes) {
    if (note.file.empty() || note.line == 0 || !note.sourceLine.empty()) continue;
    note.sourceLine = note.file == copy ? tString(session.sourceLine(note.line))
                                        : textOf({files, note.file, note.line});
  }
  host_.diagnosed(diagnosis);
}

void tRunReport::tellFailure(eMessage message, tMessageArguments arguments, int code) noexcept {
  try {
    tell(message, arguments, code);
  } catch (...) {  // printed it has been
    host_.diagnosedInBrief(code);
  }
}

void tRunReport::tellDone() {
  tell(eMessage::kPreprocessed, {source_});
}

void tRunReport::tellFailed(int result) noexcept {
  tellFailure(eMessage::kFailed, {source_, tDigits(result)}, result);
}

void tRunReport::tellException() noexcept {
  try {
    throw;
  } catch (const tFatalError& error) {
    tellFailure(eMessage::kFatalError, {error.text(), error.unit(), tDigits(error.line())});
  } catch (const std::bad_alloc&) {
    tellFailure(eMessage::kOutOfMemory);
  } catch (const std::exception& error) {
    tellFailure(eMessage::kException, {error.what()});
  } catch (...) {
    tellFailure(eMessage::kUnknownFailure);
  }
}
