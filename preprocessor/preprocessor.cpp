#include "preprocessor/preprocessor.h"

#include "lib_base/list.h"
#include "lib_base/misc.h"
#include "lib_base/stringz.h"
#include "preprocessor/banner.h"
#include "preprocessor/failure.h"
#include "preprocessor/filerun.h"
#include "preprocessor/htmlpage.h"
#include "preprocessor/inlineblock.h"
#include "preprocessor/options.h"

namespace {

constexpr std::size_t kLongestString = 16 * 1024 * 1024;

void copyList(const tAutoArray<tString>& from, tAutoArray<tString>& to) {
  for (int i = 0; i < from.count(); ++i) to.add(new tString(from[i]));
}

int preprocessFiles(tDiskMan& disk, const tRunOptions& options, const tAutoArray<tString>& files,
                    tRunHost& host) {
  int result = 0;
  for (int i = 0; i < files.count(); ++i) {
    const tString& sourceName = options.files[i];
    if (sourceName.empty()) continue;
    const int fileResult = preprocessFile(disk, options, files[i], sourceName, host);
    if (fileResult != 0) result = fileResult;
  }
  return result;
}

int run(tDiskMan& disk, int argc, char* const* argv, tRunHost& host) {
  if (isVersionRequest(argc, argv)) {
    printBanner();
    return 0;
  }
  tRunOptions options;
  ParseCommandLine(disk, argc, argv, options);
  for (int i = 0; i < options.files.count(); ++i) options.files[i].trim();

  // The converters put the names of their copies into a list of its own, so that the names the
  // user knows are at hand for messages and outputs.
  tAutoArray<tString> files;
  copyList(options.files, files);
  DoKRHPreprocessor(disk, files, options.pageDebugInfo, options.httpSend);
  DoBCPreprocessor(disk, files);
  tString::setMaxSize(kLongestString);
  const int result = preprocessFiles(disk, options, files, host);
  ClearTempKRHFiles(disk, files);
  ClearTempBCFiles(disk, files);
  return result;
}

}  // namespace

int runPreprocessor(tDiskMan& disk, int argc, char* const* argv, tRunHost& host) {
  try {
    return run(disk, argc, argv, host);
  } catch (...) {
    reportException();
    return -1;
  }
}

int runPreprocessor(tDiskMan& disk, int argc, char* const* argv) {
  tRunHost nobody;
  return runPreprocessor(disk, argc, argv, nobody);
}

int __get_xx__(int argc, char** argv) {
  tDiskManLocal disk;
  return runPreprocessor(disk, argc, argv);
}
