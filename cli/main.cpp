#include <csignal>
#include <cstdio>
#include <cstring>
#include <list>
#include <optional>

#include "cli/commandline.h"
#include "cli/helptext.h"
#include "cli/messagecapture.h"
#include "cli/pack.h"
#include "cli/query.h"
#include "cli/runarguments.h"
#include "cli/shippedheaders.h"
#include "include/krpre.h"

namespace {

enum eExit { kAllPreprocessed = 0, kSomeFailed = 1, kWrongUsage = 2 };

int run(int count, char** arguments) {
  return doPreProc(count, arguments) == 0 ? kAllPreprocessed : kSomeFailed;
}

int showVersion() {
  char program[] = "krpre";
  char request[] = "-v";
  char* arguments[] = {program, request, nullptr};
  return run(2, arguments);
}

int refuse(const std::string& reason) {
  std::fprintf(stderr, "krpre: %s\nTry 'krpre --help'.\n", reason.c_str());
  return kWrongUsage;
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

int preprocess(const tCommandLine& line) {
  const std::string shipped = shippedHeaders();
  std::list<tRunArguments> runs;
  for (const tCommandLine& part : runsOf(line)) {
    runs.emplace_back(part, shipped);
    if (!runs.back().refusal().empty()) return refuse(runs.back().refusal());
  }

  std::optional<tMessageCapture> capture;
  if (line.quiet) capture.emplace();
  int result = kAllPreprocessed;
  for (tRunArguments& arguments : runs) {
    if (run(arguments.count(), arguments.vector()) != kAllPreprocessed) result = kSomeFailed;
  }
  if (capture && result != kAllPreprocessed) capture->release();
  return result;
}

/// What the first argument alone decides. `run` gets the arguments from there on, with it in slot
/// 0.
struct tCommand {
  const char* name;
  int (*run)(int count, char** arguments);
};

const tCommand kCommands[] = {
    {"--classic", run},
};

const tCommand* commandFor(int count, char** arguments) {
  if (count < 2) return nullptr;
  for (const tCommand& command : kCommands) {
    if (std::strcmp(arguments[1], command.name) == 0) return &command;
  }
  return nullptr;
}

}  // namespace

int main(int count, char** arguments) {
  // A reader of the messages that goes away must not leave the other files undone.
  std::signal(SIGPIPE, SIG_IGN);

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
      return std::fputs(helpText().c_str(), stdout) < 0 ? kSomeFailed : 0;
    case tCommandLine::kShowVersion:
      return showVersion();
    case tCommandLine::kWrongUsage:
      return refuse(line.complaint);
    case tCommandLine::kPreprocess:
      break;
  }
  return preprocess(line);
}
