#include "cli/wholefile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "cli/commandline.h"
#include "cli/printer.h"

namespace {

// Writes what is no regular file in place. Returns 0 or an errno value.
int writeInPlace(const std::string& name, const std::string& text) {
  const int file = open(name.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0) return errno;
  const int error = writeAll(file, text);
  return close(file) != 0 && error == 0 ? errno : error;
}

}  // namespace

int writeFile(const std::string& name, const std::string& text) {
  if (name.empty() || namesStandardOutput(name)) return writeAll(STDOUT_FILENO, text);
  std::error_code unknown;
  const std::filesystem::path known = std::filesystem::canonical(name, unknown);
  const std::string target = unknown ? name : known.string();
  struct stat there {};
  const bool exists = stat(target.c_str(), &there) == 0;
  if (exists && !S_ISREG(there.st_mode)) return writeInPlace(target, text);
  std::string temporary = target + ".XXXXXX";
  const int file = mkostemp(temporary.data(), O_CLOEXEC);
  if (file < 0) return errno;
  const mode_t mask = umask(0);
  umask(mask);
  int error = fchmod(file, exists ? there.st_mode : 0666 & ~mask) == 0 ? 0 : errno;
  if (error == 0) error = writeAll(file, text);
  if (close(file) != 0 && error == 0) error = errno;
  if (error == 0 && std::rename(temporary.c_str(), target.c_str()) != 0) error = errno;
  if (error != 0) unlink(temporary.c_str());
  return error;
}
