#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>

#include "cli/build.h"
#include "cli/commandline.h"
#include "cli/completions.h"
#include "cli/exitstatus.h"
#include "cli/helptext.h"
#include "cli/pack.h"
#include "cli/query.h"
#include "cli/shippedheaders.h"
#include "include/krpre.h"

namespace {

int run(int count, char** arguments) {
  return doPreProc(count, arguments) == 0 ? kAllDone : kSomeFailed;
}

int showVersion() {
  char program[] = "krpre";
  char request[] = "-v";
  char* arguments[] = {program, request, nullptr};
  return run(2, arguments);
}

struct tSubcommand {
  const char* name;
  int (*run)(int count, char** arguments);
};

const tSubcommand kSubcommands[] = {
    {"explain", explainCommand},
    {"rules", rulesCommand},
    {"pack", packCommand},
    {"unpack", unpackCommand},
};

// A file that is opened must not become standard output because the caller has closed that.
void keepStandardFilesOpen() {
  for (const int file : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Opened the wrong way round: who reads or writes it learns that it is not there.
    const int mode = file == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (fcntl(file, F_GETFD) < 0) open("/dev/null", mode);
  }
}

/// What the first argument alone decides. `run` gets the arguments from there on, with it in slot
/// 0.
struct tCommand {
  const char* name;
  int (*run)(int count, char** arguments);
};

const tCommand kCommands[] = {
    {"--classic", run},
    {"--completions", completionsCommand},
};

const tCommand* commandFor(int count, char** arguments) {
  if (count < 2) return nullptr;
  for (const tCommand& command : kCommands) {
    if (std::strcmp(arguments[1], command.name) == 0) return &command;
  }
  return nullptr;
}

}  // namespace

int refuseUsage(const std::string& reason, const std::string& command) {
  std::fprintf(stderr, "krpre: %s\nTry '%s --help'.\n", reason.c_str(), command.c_str());
  return kWrongUsage;
}

int main(int count, char** arguments) {
  // A reader of the messages that goes away must not leave the other files undone.
  std::signal(SIGPIPE, SIG_IGN);
  // A file that grows too large is a failure like a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
  keepStandardFilesOpen();

  if (const tCommand* command = commandFor(count, arguments)) {
    return command->run(count - 1, arguments + 1);
  }
  for (const tSubcommand& subcommand : kSubcommands) {
    if (count > 1 && std::strcmp(arguments[1], subcommand.name) == 0) {
      return subcommand.run(count - 1, arguments + 1);
    }
  }
  const tCommandLine line = readCommandLine(count, arguments);
  switch (line.request) {
    case tCommandLine::kShowHelp:
      return std::fputs(helpText().c_str(), stdout) < 0 ? kSomeFailed : kAllDone;
    case tCommandLine::kShowVersion:
      return showVersion();
    case tCommandLine::kRun:
      break;
  }
  if (!line.complaint.empty()) return refuseUsage(line.complaint);
  return build(line, shippedHeaders());
}
