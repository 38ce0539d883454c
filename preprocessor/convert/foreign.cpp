#include "preprocessor/convert/foreign.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "lib_base/output.h"
#include "lib_base/pathname.h"
#include "lib_base/translate.h"
#include "preprocessor/convert/sourcekind.h"

extern char** environ;

namespace {

constexpr std::string_view kConverter = "abl2korel.so";
constexpr int kNotRun = -1;
constexpr int kSignalled = 128;

/// As a shell would have to be given it.
tString quoted(const tString& argument) {
  tString inner = argument;
  inner.replaceAll("'", "'\\''");
  return tString("'").append(inner).append('\'');
}

int reportNotRun(const std::vector<tString>& command) {
  tString shown = quoted(command.front());
  for (std::size_t i = 1; i < command.size(); ++i) shown.append(' ').append(quoted(command[i]));
  qdprintf("%s %s. %s %s.\n", translate("KOREL").c_str(), translate("Preprocessor").c_str(),
           translate("Could not execute").c_str(), shown.c_str());
  return kNotRun;
}

/// Runs a program and waits for it. Returns what the shell would call its code.
int runCommand(const std::vector<tString>& command) {
  std::vector<char*> slots;
  slots.reserve(command.size() + 1);
  for (const tString& argument : command) slots.push_back(const_cast<char*>(argument.c_str()));
  slots.push_back(nullptr);
  std::fflush(stdout);  // what was printed before must stand before what the program prints
  pid_t child = -1;
  if (posix_spawn(&child, slots.front(), nullptr, nullptr, slots.data(), environ) != 0) {
    return reportNotRun(command);
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return reportNotRun(command);
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
}

}  // namespace

tString programDirectory() {
  constexpr std::size_t kLongestPath = 32767;
  const std::unique_ptr<char[]> path(new char[kLongestPath]);
  const ssize_t size = readlink("/proc/self/exe", path.get(), kLongestPath);
  if (size <= 0) return {};
  tPathParts parts;
  SplitPath({path.get(), static_cast<std::size_t>(size)}, parts);
  return parts.directory;
}

tForeignConversion::~tForeignConversion() {
  if (!converted_.empty()) unlink(converted_.c_str());
  if (!directory_.empty()) rmdir(directory_.c_str());
}

bool tForeignConversion::makeDirectory() {
  const char* place = std::getenv("TMPDIR");
  tString name = joinPath(place != nullptr && *place != '\0' ? place : "/tmp", "krpre-XXXXXX");
  name.append('\0');
  if (mkdtemp(name.writable()) == nullptr) return false;
  name.resize(name.size() - 1);
  directory_ = name;
  return true;
}

int tForeignConversion::run(const tString& directory, const tForeignSource& source) {
  tPathParts parts;
  SplitPath(source.name, parts);
  const bool made = makeDirectory();
  if (made) converted_ = joinPath(directory_, tString(parts.base).append(kExtendedLanguage));
  const std::string_view path = source.includePath;
  const std::vector<tString> command = {
      joinPath(directory, kConverter),
      tString("@F").append(source.name),
      tString("@Q").append(converted_),
      tString("@DB").append(path.substr(path.rfind(';') + 1)),
      tString("@D").append(source.outputDirectory),
  };
  return made ? runCommand(command) : reportNotRun(command);
}
