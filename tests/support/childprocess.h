#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// How a child process ended and what it printed.
struct tChildResult {
  /// Its exit status; 128 and the signal's number when a signal ended it.
  int status = 0;
  std::string output;
  std::string errors;
};

/// Runs `command` in `directory` and waits for it, a minute at most. The variable INCLUDE is set to
/// `include` for it, or removed when that is empty.
tChildResult runChild(const std::vector<std::string>& command,
                      const std::filesystem::path& directory, const std::string& include = {});

/// An empty directory of its own that vanishes with this object.
class tTemporaryDirectory {
 public:
  tTemporaryDirectory();
  ~tTemporaryDirectory();
  tTemporaryDirectory(const tTemporaryDirectory&) = delete;
  tTemporaryDirectory& operator=(const tTemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Writes a file below this directory, the directories on the way to it included.
  void write(const std::string& name, const std::string& bytes) const;

 private:
  std::filesystem::path path_;
};

/// The bytes of a file. Throws when it cannot be read.
std::string readBytes(const std::filesystem::path& file);

/// Replaces the bytes of a file.
void writeBytes(const std::filesystem::path& file, const std::string& bytes);
