#include "preprocessor/run/report.h"

#include <exception>
#include <memory>

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

}  // namespace

void tRunReport::tell(eMessage message, tMessageArguments arguments, int code) {
  printMessage(message, arguments);
  if (!host_.wantsDiagnoses()) return;
  precomp::tDiagnosis diagnosis = diagnosisOf(message, arguments);
  diagnosis.file = source_;
  diagnosis.code = code;
  host_.diagnosed(diagnosis);
}

void tRunReport::tell(eMessage message, tMessageArguments arguments, const tShownLine& shown) {
  printMessage(message, arguments);
  if (!host_.wantsDiagnoses()) return;
  precomp::tDiagnosis diagnosis = diagnosisOf(message, arguments);
  diagnosis.file = source_;
  diagnosis.line = shown.line;
  diagnosis.column = shown.column;
  diagnosis.sourceLine = textOf(shown);
  host_.diagnosed(diagnosis);
}

void tRunReport::tellException() {
  try {
    throw;
  } catch (const tFatalError& error) {
    const tString line = tString::format("%u", error.line());
    tell(eMessage::kFatalError, {error.text(), error.unit(), line});
  } catch (const std::exception& error) {
    tell(eMessage::kException, {error.what()});
  } catch (...) {
    tell(eMessage::kUnknownFailure);
  }
}
