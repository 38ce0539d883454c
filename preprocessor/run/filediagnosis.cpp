#include "preprocessor/run/filediagnosis.h"

#include <algorithm>
#include <memory>

#include "lib_gzip/zipsource.h"

namespace {

// The start of the line `line`, from 1, with as much of what is too long as a reader may want.
tString lineOfFile(tDiskMan& files, const tString& name, int line) {
  constexpr std::size_t kShown = kLongestLine + 200;
  const std::unique_ptr<tFile> file = files.open(name.c_str());
  tString text;
  if (file == nullptr || !file->readAll(text)) return {};
  tString unpacked;
  if (unpackZipSource(text, tString::maxSize(), unpacked) == eZipResult::kOk) text = unpacked;
  std::string_view rest = text;
  while (--line > 0) {
    const std::size_t end = rest.find_first_of("\r\n");
    if (end == std::string_view::npos) return {};
    rest.remove_prefix(rest.substr(end).starts_with("\r\n") ? end + 2 : end + 1);
  }
  return tString(rest.substr(0, std::min(rest.find_first_of("\r\n"), kShown)));
}

}  // namespace

precomp::tDiagnosis fileDiagnosis(const tString& name, const char* slug, std::string_view message) {
  precomp::tDiagnosis diagnosis;
  diagnosis.slug = tString::borrow(slug);
  diagnosis.message = tString(message);
  diagnosis.file = name;
  return diagnosis;
}

precomp::tDiagnosis normaliseDiagnosis(tDiskMan& files, const tString& readName,
                                       const tString& name, const tNormaliseFailure& failure) {
  switch (failure.kind) {
    case tNormaliseFailure::kSameFile:
      return fileDiagnosis(name, "same-file", "The source has the name of its own normalised copy");
    case tNormaliseFailure::kLineTooLong: {
      precomp::tDiagnosis diagnosis =
          fileDiagnosis(name, "line-too-long", "Source line too big: 4096 bytes or more");
      diagnosis.line = failure.line;
      diagnosis.column = static_cast<int>(kLongestLine) + 1;
      diagnosis.sourceLine = lineOfFile(files, readName, failure.line);
      return diagnosis;
    }
    default:
      break;
  }
  if (!files.exists(readName.c_str())) {
    return fileDiagnosis(name, "file-not-found", "File not found");
  }
  return fileDiagnosis(name, "cannot-read", "Cannot read the source, or it is too big");
}

precomp::tDiagnosis pageDiagnosis(tDiskMan& files, const tString& name, const tPageError& error) {
  precomp::tDiagnosis diagnosis = fileDiagnosis(name, "page-error", error.text);
  diagnosis.line = error.line;
  diagnosis.sourceLine = lineOfFile(files, name, error.line);
  return diagnosis;
}
