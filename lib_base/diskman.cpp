#include "lib_base/diskman.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "lib_base/pathname.h"

namespace {

/// A file of the local file system.
class tLocalFile : public tFile {
 public:
  explicit tLocalFile(int handle = -1) : handle_(handle) {}
  ~tLocalFile() override {
    closeHandle();
    if (lock_ >= 0) ::close(lock_);
  }
  tLocalFile(const tLocalFile&) = delete;
  tLocalFile& operator=(const tLocalFile&) = delete;

  /// Makes this the file of that descriptor. Returns whether it is one.
  bool take(int handle) {
    handle_ = handle;
    return handle >= 0;
  }

  std::int64_t size() override {
    struct stat status {};
    if (::fstat(handle_, &status) == 0) return status.st_size;
    error_ = errno;
    return -1;
  }

  std::int64_t read(void* bytes, std::size_t count) override {
    ssize_t got;
    do {
      got = ::read(handle_, bytes, count);
    } while (got < 0 && errno == EINTR);
    if (got < 0) error_ = errno;
    return got;
  }

  bool seek(std::int64_t position) override { return ::lseek(handle_, position, SEEK_SET) >= 0; }

  bool write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = ::write(handle_, bytes.data(), bytes.size());
      if (written >= 0) {
        bytes.remove_prefix(static_cast<std::size_t>(written));
      } else if (errno != EINTR) {
        return lose();
      }
    }
    return true;
  }

  bool close() override {
    closeHandle();
    return !lost_;
  }
  int error() const override { return error_; }
  int handle() const { return handle_; }

  bool copyPermissions(const char* from) override {
    struct stat status {};
    return from && ::stat(from, &status) == 0 && ::fchmod(handle_, status.st_mode & 07777) == 0;
  }

  /// Locks the file for the lifetime of this object. Returns false if it has been removed in the
  /// meantime. Where the file system has no locks, or if a stranger does not let go of the file,
  /// it stays unlocked.
  bool lock() {
    constexpr int kMostTries = 1000;
    constexpr unsigned kPause = 1000;  // microseconds
    struct stat status {};
    for (int i = 0; i < kMostTries && ::flock(handle_, LOCK_EX | LOCK_NB) != 0; ++i) {
      if (errno != EWOULDBLOCK && errno != EINTR) break;
      if (::fstat(handle_, &status) == 0 && status.st_nlink == 0) return false;
      ::usleep(kPause);
    }
    lock_ = ::fcntl(handle_, F_DUPFD_CLOEXEC, 0);
    return ::fstat(handle_, &status) != 0 || status.st_nlink > 0;
  }

 private:
  void closeHandle() {
    if (handle_ >= 0 && ::close(handle_) != 0) lose();
    handle_ = -1;
  }
  bool lose() {
    error_ = errno;
    lost_ = true;
    return false;
  }

  int handle_;
  int lock_ = -1;  // shares the lock of handle_ and outlives it
  bool lost_ = false;
  int error_ = 0;
};

constexpr mode_t kNewMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;

std::unique_ptr<tLocalFile> openLocal(const char* name, int flags, mode_t mode = kNewMode) {
  // First, so that nothing is open, and no file is made, when there is no memory for it.
  auto file = std::make_unique<tLocalFile>();
  int handle;
  do {
    handle = ::open(name, flags | O_CLOEXEC, mode);
  } while (handle < 0 && errno == EINTR);
  return file->take(handle) ? std::move(file) : nullptr;
}

bool isRegular(const struct stat& status) {
  return S_ISREG(status.st_mode);
}

constexpr const char* kStandardOutput = "/dev/stdout";

// Everything else that goes wrong with a name says nothing about whether it is there.
bool meansMissing(int error) {
  return error == ENOENT || error == ENOTDIR;
}

}  // namespace

const char* reasonOf(int error) {
  const char* const reason = ::strerrordesc_np(error);
  return reason != nullptr ? reason : "Unknown error";
}

bool tFile::readAll(tString& text) {
  const std::size_t before = text.size();
  const std::size_t most = std::max(tString::maxSize(), before);
  const auto failed = [&] {
    text.resize(before);
    return false;
  };

  // First read as much as the file claims to hold, directly into place.
  const std::int64_t stated = size();
  std::size_t missing = stated < 0 ? 0 : static_cast<std::size_t>(stated);
  missing = std::min(missing, most - before);
  if (missing > 0) {
    text.reserve(before + missing);
    char* to = text.extend(missing);
    std::int64_t got;
    while (missing > 0 && (got = read(to, missing)) != 0) {
      if (got < 0) return failed();
      to += got;
      missing -= static_cast<std::size_t>(got);
    }
    text.resize(text.size() - missing);
    if (missing > 0) return true;
  }

  // Then whatever has been added since; usually this only hits the end of the file.
  char more[4096];
  std::int64_t got;
  while ((got = read(more, sizeof more)) > 0) {
    const auto count = static_cast<std::size_t>(got);
    if (count > most - text.size()) return failed();
    text.append({more, count});
  }
  return got == 0 || failed();
}

std::unique_ptr<tFile> tDiskManLocal::open(const char* name, int& error) {
  error = 0;
  if (!name) return nullptr;
  // Without O_NONBLOCK, opening a pipe would wait for a writer.
  auto file = openLocal(name, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (!file || ::fstat(file->handle(), &status) != 0) {
    error = errno;
    // Some of what is no file, such as a socket, cannot be opened at all.
    if (meansMissing(error) || look(name) == eStanding::kSpecial) error = 0;
    return nullptr;
  }
  return isRegular(status) ? std::move(file) : nullptr;
}

std::unique_ptr<tFile> tDiskManLocal::create(const char* name) {
  return name ? openLocal(name, O_WRONLY | O_CREAT | O_TRUNC) : nullptr;
}

std::unique_ptr<tFile> tDiskManLocal::createNew(const char* name, bool& exists) {
  exists = false;
  if (!name) return nullptr;
  for (;;) {
    auto file = openLocal(name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    exists = !file && errno == EEXIST;
    // Before it was locked, another process may have removed it as a leftover.
    if (!file || file->lock()) return file;
  }
}

bool tDiskManLocal::removeLeftover(const char* name) {
  if (!name) return false;
  struct stat named {};
  if (::lstat(name, &named) != 0) return false;
  if (!isRegular(named)) return ::unlink(name) == 0;  // e.g. a link: never made by createNew
  const int handle = ::open(name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (handle < 0) return false;
  const tLocalFile file(handle);
  struct stat opened {};
  return ::flock(handle, LOCK_EX | LOCK_NB) == 0 && ::fstat(handle, &opened) == 0 &&
         ::lstat(name, &named) == 0 && named.st_dev == opened.st_dev &&
         named.st_ino == opened.st_ino && ::unlink(name) == 0;
}

eStanding tDiskManLocal::look(const char* name) {
  struct stat status {};
  if (!name) return eStanding::kNothing;
  if (std::strcmp(name, kStandardOutput) == 0) return eStanding::kSpecial;
  if (::stat(name, &status) == 0) {
    return isRegular(status) ? eStanding::kFile : eStanding::kSpecial;
  }
  return meansMissing(errno) ? eStanding::kNothing : eStanding::kUnknown;
}

bool tDiskManLocal::remove(const char* name) {
  return name && ::unlink(name) == 0;
}

bool tDiskManLocal::rename(const char* from, const char* to) {
  return from && to && std::rename(from, to) == 0;
}

int tDiskManLocal::makeDirectory(const char* name) {
  int first = 0;  // where one above cannot be made, the reason is its own
  std::string path(name);
  for (std::size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1)) {
    path[at] = '\0';
    if (::mkdir(path.c_str(), 0777) != 0 && errno != EEXIST && first == 0) first = errno;
    path[at] = '/';
  }
  if (::mkdir(name, 0700) == 0 || errno == EEXIST) return 0;
  return first != 0 ? first : errno;
}

std::unique_ptr<tFile> tDiskManLocal::openSpecial(const char* name) {
  if (!name) return nullptr;
  // Opened by its name, it would lose its place, or not open at all if it is a socket.
  if (std::strcmp(name, kStandardOutput) == 0) {
    auto output = std::make_unique<tLocalFile>();
    if (output->take(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0))) return output;
  }
  auto file = openLocal(name, O_WRONLY | O_APPEND | O_NOCTTY, 0);
  struct stat status {};
  // A file that has come there meanwhile is not for writing in place.
  if (file && ::fstat(file->handle(), &status) == 0 && isRegular(status)) {
    errno = EEXIST;
    return nullptr;
  }
  return file;
}

tString tDiskManLocal::follow(const char* name) {
  constexpr int kMostLinks = 40;  // as many as the system follows
  tString path(name);
  char target[PATH_MAX];
  for (int i = 0; i < kMostLinks; ++i) {
    const ssize_t size = ::readlink(path.c_str(), target, sizeof target);
    if (size < 0) return errno == EINVAL || meansMissing(errno) ? path : tString();
    if (size == 0 || static_cast<std::size_t>(size) == sizeof target) break;
    const std::string_view next(target, static_cast<std::size_t>(size));
    if (next.front() == '/') {
      path = tString(next);
      continue;
    }
    tPathParts parts;
    SplitPath(path, parts);
    path = joinPath(parts.directory, next);
  }
  return {};
}

tString tDiskManLocal::resolve(const char* name) {
  char* path = name ? ::realpath(name, nullptr) : nullptr;
  if (!path) return {};
  const std::unique_ptr<char, decltype(&std::free)> owner(path, &std::free);
  return {path};
}

std::vector<std::string> tDiskManLocal::namesIn(const char* directory) {
  constexpr std::size_t kMost = 10'000;
  std::vector<std::string> names;
  const auto close = [](DIR* stream) { ::closedir(stream); };
  const std::unique_ptr<DIR, decltype(close)> open(::opendir(directory), close);
  if (open == nullptr) return names;
  while (names.size() < kMost) {
    const dirent* const entry = ::readdir(open.get());
    if (entry == nullptr) break;
    names.emplace_back(entry->d_name);
  }
  std::sort(names.begin(), names.end());
  return names;
}
