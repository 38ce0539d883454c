#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "cli/argumentreader.h"
#include "cli/build.h"
#include "cli/bundle.h"
#include "cli/chapters.h"
#include "cli/commandline.h"
#include "cli/coverage.h"
#include "cli/exitstatus.h"
#include "cli/librarycall.h"
#include "cli/optiontexts.h"
#include "cli/pack.h"
#include "cli/printer.h"
#include "cli/query.h"
#include "cli/reduce.h"
#include "cli/sourcequote.h"
#include "cli/warninglist.h"
#include "include/krpre.h"
#include "lib_base/nearest.h"

namespace {

int runClassic(int count, char** arguments) {
  return doPreProc(count, arguments) == 0 ? kAllDone : kSomeFailed;
}

// If the caller has closed a standard file, the next file opened would take its place.
void keepStandardFilesOpen() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Opened the wrong way round, so that reading or writing it fails as if it were closed.
    const int mode = file == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (fcntl(file, F_GETFD) < 0) open("/dev/null", mode);
  }
}

/// The command that the first argument names: a subcommand, or the program itself.
const tCommand& commandFor(int count, char** arguments) {
  for (const tCommand& command : programCommands()) {
    if (count > 1 && !command.isProgram() && std::strcmp(arguments[1], command.name) == 0) {
      return command;
    }
  }
  return programCommands().front();
}

// The complaint about a bare word that is no file but nearly a subcommand; otherwise empty.
std::string misspeltCommand(const tCommandLine& line) {
  // Of the arguments, not of a list.
  const bool given = line.fileList.empty() && !line.files.empty();
  const std::string first = given ? line.files[0] : "";
  if (first.find_first_of("./") != std::string::npos || access(first.c_str(), F_OK) == 0) return {};
  std::vector<std::string> names;
  for (const tCommand& command : programCommands()) names.emplace_back(command.name);
  const std::string nearest = nearestTo(first, names);
  return nearest.empty() ? "" : "no file '" + first + "'; did you mean 'krpre " + nearest + "'?";
}

int carryOut(const tCommand& command, const tCommandLine& line) {
  switch (command.set) {
    case kCoverage:
      return writeCoverage(line);
    case kExplain:
      return explain(line);
    case kRules:
      return listRules(line);
    case kBundle:
      return writeBundle(line);
    case kReduce:
      return reduce(line);
    case kPack:
      return pack(line);
    case kUnpack:
      return unpack(line);
    default:
      return build(line, line.bundle.empty() ? shippedHeaders() : std::string());
  }
}

// Where nothing can be thrown any more, as in the destructors of a JSON value.
[[noreturn]] void endWithoutMemory() {
  complainOfMemory();
  _exit(kSomeFailed);
}

int run(int count, char** arguments) try {
  if (count > 1 && std::strcmp(arguments[1], "--classic") == 0) {
    return runClassic(count - 1, arguments + 1);
  }
  const tCommand& command = commandFor(count, arguments);
  const int skipped = command.isProgram() ? 0 : 1;
  const tCommandLine line = readCommandLine(command, count - skipped, arguments + skipped);
  switch (line.request) {
    case tCommandLine::kShowHelp:
      return printText(helpText(command));
    case tCommandLine::kShowVersion:
      return printText("krpre " KRPRE_VERSION "\n");
    case tCommandLine::kShowCompletions:
      return printText(line.completions == "man" ? manualSections()
                                                 : completionsFor(line.completions));
    case tCommandLine::kShowChapter: {
      const std::string text = chapterText(line.chapter);
      return text.empty() ? refuseUsage(unknownChapter(line.chapter)) : printText(text);
    }
    case tCommandLine::kListWarnings:
      return printText(warningList());
    case tCommandLine::kCarryOut:
      break;
  }
  if (command.isProgram()) {
    const std::string misspelt = misspeltCommand(line);
    if (!misspelt.empty()) return refuseUsage(misspelt);
  }
  if (!line.complaint.empty()) return refuseUsage(line.complaint, command.spelling());
  return carryOut(command, line);
} catch (const std::bad_alloc&) {
  complainOfMemory();
  return kSomeFailed;
}

}  // namespace

int refuseUsage(const std::string& reason, const std::string& command) {
  std::fprintf(stderr, "krpre: %s\nTry '%s --help'.\n", printable(reason).c_str(), command.c_str());
  return kWrongUsage;
}

int main(int count, char** arguments) {
  std::set_terminate(endWithoutMemory);
  // If the reader of the messages goes away, the remaining files are still preprocessed.
  std::signal(SIGPIPE, SIG_IGN);
  // A file over the size limit is an ordinary write error, like a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  keepStandardFilesOpen();

  return finishPrinting(run(count, arguments));
}
