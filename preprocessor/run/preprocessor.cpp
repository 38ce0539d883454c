#include "preprocessor/run/preprocessor.h"

#include <vector>

#include "lib_base/list.h"
#include "lib_base/misc.h"
#include "lib_base/stringz.h"
#include "preprocessor/run/banner.h"
#include "preprocessor/run/filerun.h"
#include "preprocessor/run/options.h"
#include "preprocessor/run/report.h"

namespace {

int preprocessFiles(tDiskMan& disk, const tRunOptions& options, tRunHost& host) {
  precomp::tHeaderCache own(options.cache.value_or(tString()));
  precomp::tHeaderCache* headers = host.headers();
  // What a single file reads once need not be kept, unless for the next run.
  if (headers == nullptr && (own.saves() || options.files.count() > 1)) headers = &own;
  // All of them first: what a failure leaves behind must be found when there is no memory for
  // names.
  std::vector<tFileNames> files;
  for (int i = 0; i < options.files.count(); ++i) {
    if (options.files[i].empty()) continue;
    files.push_back(composeNames(options, options.files[i], host.outputName()));
  }
  int result = 0;
  for (const tFileNames& names : files) {
    const int fileResult = preprocessFile(disk, options, names, host, headers);
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
  host.addOptions(options);
  for (int i = 0; i < options.files.count(); ++i) options.files[i].trim();
  tString::setMaxSize(kLongestText);
  return preprocessFiles(disk, options, host);
}

}  // namespace

int runPreprocessor(tDiskMan& disk, int argc, char* const* argv, tRunHost& host) {
  try {
    return run(disk, argc, argv, host);
  } catch (...) {
    tRunReport(host, {}).tellException();
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
