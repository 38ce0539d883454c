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

#include "lib_base/pathname.h"
#include "preprocessor/convert/sourcekind.h"

extern char** environ;

namespace {

constexpr std::string_view kConverter = "abl2korel.so";
constexpr int kSignalled = 128;

/// The argument quoted for a shell.
tString quoted(const tString& argument) {
  tString inner = argument;
  inner.replaceAll("'", "'\\''");
  return tString("'").append(inner).append('\'');
}

tString shellCommand(const std::vector<tString>& command) {
  tString text = quoted(command.front());
  for (std::size_t i = 1; i < command.size(); ++i) text.append(' ').append(quoted(command[i]));
  return text;
}

/// Runs a program and waits for it. Returns its exit status as a shell reports it, or kNotRun.
int runCommand(const std::vector<tString>& command) {
  std::vector<char*> slots;
  slots.reserve(command.size() + 1);
  for (const tString& argument : command) slots.push_back(const_cast<char*>(argument.c_str()));
  slots.push_back(nullptr);
  std::fflush(stdout);  // so that our earlier output precedes that of the program
  pid_t child = -1;
  if (posix_spawn(&child, slots.front(), nullptr, nullptr, slots.data(), environ) != 0) {
    return tForeignConversion::kNotRun;
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return tForeignConversion::kNotRun;
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
  const std::vector<tString> command = {
      joinPath(directory, kConverter),
      tString("@F").append(source.name),
      tString("@Q").append(converted_),
      tString("@DB").append(source.lastDirectory),
      tString("@D").append(source.outputDirectory),
  };
  command_ = shellCommand(command);
  return made ? runCommand(command) : kNotRun;
}
