#include "cli/wholefile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "cli/printer.h"

namespace {

// Whether the name still refers to the open file, which another process may have renamed meanwhile.
bool isStill(const std::string& name, int file) {
  struct stat opened {};
  struct stat named {};
  return fstat(file, &opened) == 0 && lstat(name.c_str(), &named) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

// Opens the file and locks it against other processes; -1 on failure.
int openLocked(const std::string& name) {
  constexpr mode_t kMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
  for (;;) {
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, kMode);
    if (file < 0) return -1;
    while (flock(file, LOCK_EX) != 0 && errno == EINTR) {
    }
    if (isStill(name, file)) return file;
    close(file);
  }
}

}  // namespace

int writeWholeFile(const std::string& name, const std::string& temporary,
                   const std::string& bytes) {
  const int file = openLocked(temporary);
  if (file < 0) return errno;
  int error = ftruncate(file, 0) == 0 ? writeAll(file, bytes) : errno;
  if (error == 0 && std::rename(temporary.c_str(), name.c_str()) != 0) error = errno;
  if (error != 0) unlink(temporary.c_str());
  // Closing releases the lock, so it comes after renaming. On some file systems it is also what
  // reports a full disk.
  if (close(file) != 0 && error == 0) {
    error = errno;
    unlink(name.c_str());
  }
  return error;
}
