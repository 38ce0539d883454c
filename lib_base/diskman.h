#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lib_base/stringz.h"

/// The system's description of an errno value, in English.
const char* reasonOf(int error);

/// An open file. The destructor closes it, but only close() reports whether the last bytes were
/// written.
class tFile {
 public:
  virtual ~tFile() = default;

  /// The size of the file in bytes, or -1 on an error.
  virtual std::int64_t size() = 0;
  /// Reads up to `count` bytes from the current position. Returns the number of bytes read, 0 at
  /// the end of the file, -1 on an error.
  virtual std::int64_t read(void* bytes, std::size_t count) = 0;
  virtual bool seek(std::int64_t position) = 0;
  /// Hints how many bytes are about to be written; a file in memory reserves room for them.
  virtual void expect(std::int64_t /*bytes*/) {}
  /// Returns true if all bytes were written.
  virtual bool write(std::string_view bytes) = 0;
  /// Closes the file. Returns false if any written data may be lost. Closing twice is allowed.
  virtual bool close() = 0;
  /// Appends everything from the current position to the end of the file to `text`. Returns false
  /// on a read error or if the text would exceed tString::maxSize(). A file in memory may move or
  /// share its storage instead of copying it.
  virtual bool readAll(tString& text);
  /// The errno value of what failed; 0 when nothing has.
  virtual int error() const { return 0; }
  /// Gives the file the permissions of the file `from`. True where files have no permissions.
  virtual bool copyPermissions(const char* /*from*/) { return true; }
};

/// What stands under a name, links followed.
enum class eStanding : std::uint8_t {
  kNothing,
  kFile,     // a regular one
  kSpecial,  // a directory, a pipe, a device; "/dev/stdout" always
  kUnknown,  // the system does not tell
};

/// The file system as the preprocessor sees it. Names are native paths.
class tDiskMan {
 public:
  virtual ~tDiskMan() = default;

  /// Opens a regular file for reading, without ever blocking. Null if there is none, `error` being
  /// 0 then, or if it cannot be opened or looked for, `error` being the errno value. Directories,
  /// pipes and devices count as missing.
  virtual std::unique_ptr<tFile> open(const char* name, int& error) = 0;
  std::unique_ptr<tFile> open(const char* name) {
    int ignored = 0;
    return open(name, ignored);
  }
  /// Creates a file for writing, truncating an existing one; null on failure.
  virtual std::unique_ptr<tFile> create(const char* name) = 0;
  /// Creates a file that must not exist yet, without following links; null on failure, and `exists`
  /// then tells whether the name is already taken; if not, errno tells what failed. As long as the
  /// returned object exists, even closed, removeLeftover does not touch the file.
  virtual std::unique_ptr<tFile> createNew(const char* name, bool& exists) = 0;
  /// Removes a file made by createNew that no object holds any more: a leftover of a killed
  /// process. Returns false if it is in use or cannot be removed.
  virtual bool removeLeftover(const char* name) = 0;
  virtual eStanding look(const char* name) = 0;
  /// True for a regular file.
  bool exists(const char* name) { return look(name) == eStanding::kFile; }
  virtual bool remove(const char* name) = 0;
  /// Replaces an existing target atomically. After a failure errno tells why.
  virtual bool rename(const char* from, const char* to) = 0;
  /// Makes a directory that only its user may enter, and those above it, if they are missing.
  /// Returns 0 or the errno value of what failed.
  virtual int makeDirectory(const char* /*name*/) { return 0; }
  /// Opens what is there and no regular file for writing, and waits for the reader of a pipe. Null
  /// on failure; errno tells why.
  virtual std::unique_ptr<tFile> openSpecial(const char* /*name*/) { return nullptr; }
  /// The name that `name` leads to, links followed; nothing need be there. `name` itself if it is
  /// no link; empty if that cannot be told.
  virtual tString follow(const char* name) { return tString(name); }
  /// The canonical name of an existing file, with links resolved; empty if there is no such file.
  virtual tString resolve(const char* name) = 0;
  /// The names in a directory in order, of a very large one only some. Empty if there is no such
  /// directory, or it cannot be read.
  virtual std::vector<std::string> namesIn(const char* /*directory*/) { return {}; }
};

/// The local file system.
class tDiskManLocal : public tDiskMan {
 public:
  using tDiskMan::open;
  std::unique_ptr<tFile> open(const char* name, int& error) override;
  std::unique_ptr<tFile> create(const char* name) override;
  std::unique_ptr<tFile> createNew(const char* name, bool& exists) override;
  bool removeLeftover(const char* name) override;
  eStanding look(const char* name) override;
  bool remove(const char* name) override;
  bool rename(const char* from, const char* to) override;
  int makeDirectory(const char* name) override;
  std::unique_ptr<tFile> openSpecial(const char* name) override;
  tString follow(const char* name) override;
  tString resolve(const char* name) override;
  std::vector<std::string> namesIn(const char* directory) override;
};

/// Keeps selected files in memory and forwards all other names to another file system. A run keeps
/// its temporary copies of the sources here, so none is ever left on disk.
class tDiskManOverlay : public tDiskMan {
 public:
  /// `below` must outlive this object.
  explicit tDiskManOverlay(tDiskMan& below) : below_(below) {}

  /// Keeps a file of this name in memory until it is released. readAll moves the content out and
  /// leaves the file empty.
  void keepInMemory(std::string_view name);
  void release(std::string_view name);
  /// Lets a file of this name hold `text`, which must outlive this object and may be as long as any
  /// tString. It may be read again and again.
  void keepText(std::string_view name, std::string_view text);

  using tDiskMan::open;
  std::unique_ptr<tFile> open(const char* name, int& error) override;
  std::unique_ptr<tFile> create(const char* name) override;
  std::unique_ptr<tFile> createNew(const char* name, bool& exists) override;
  bool removeLeftover(const char* name) override;
  eStanding look(const char* name) override;
  bool remove(const char* name) override;
  bool rename(const char* from, const char* to) override;
  int makeDirectory(const char* name) override { return below_.makeDirectory(name); }
  std::unique_ptr<tFile> openSpecial(const char* name) override { return below_.openSpecial(name); }
  tString follow(const char* name) override { return below_.follow(name); }
  std::vector<std::string> namesIn(const char* directory) override {
    return below_.namesIn(directory);
  }
  tString resolve(const char* name) override;

 protected:
  bool keeps(const char* name) { return kept(name) != nullptr; }

 private:
  struct tKept {
    std::shared_ptr<tString> bytes;  // null until the file is created
    bool lasts = false;              // readAll leaves them
  };
  tKept* kept(const char* name);

  tDiskMan& below_;
  std::map<std::string, tKept, std::less<>> kept_;
};
