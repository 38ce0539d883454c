#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "lib_base/stringz.h"

/// An open file. It is closed when destroyed; only close() tells whether the last bytes arrived.
class tFile {
 public:
  virtual ~tFile() = default;

  /// Bytes in the file, or -1.
  virtual std::int64_t size() = 0;
  /// Reads up to `count` bytes from the current position. Returns how many were read, 0 at the
  /// end of the file, -1 on an error.
  virtual std::int64_t read(void* bytes, std::size_t count) = 0;
  virtual bool seek(std::int64_t position) = 0;
  /// Says how many bytes are about to be written; a memory file makes room for them at once.
  virtual void expect(std::int64_t /*bytes*/) {}
  /// True when all bytes were written.
  virtual bool write(std::string_view bytes) = 0;
  /// Closes the file. False when anything written may be lost. Closing twice is allowed.
  virtual bool close() = 0;
  /// Appends everything from the current position to the end of the file to `text`. False on a
  /// read error or when the text would exceed tString::maxSize(). A memory file may hand over or
  /// share its storage instead of copying it.
  virtual bool readAll(tString& text);
};

/// The file system as the preprocessor sees it. Names are paths in the platform's form.
class tDiskMan {
 public:
  virtual ~tDiskMan() = default;

  /// Opens a regular file for reading; null when there is none or it cannot be read. A directory,
  /// a pipe or a device counts as not found, and opening never blocks.
  virtual std::unique_ptr<tFile> open(const char* name) = 0;
  /// Creates a file for writing and empties an existing one; null on failure.
  virtual std::unique_ptr<tFile> create(const char* name) = 0;
  /// Creates a file that must not exist yet, never through a link; null on failure, with `exists`
  /// telling whether something of that name stood in the way. While the returned object lives,
  /// closed or not, removeLeftover leaves the file alone.
  virtual std::unique_ptr<tFile> createNew(const char* name, bool& exists) = 0;
  /// Removes a file that createNew made and no living object holds any more: what a killed process
  /// has left. False when it is in use or cannot be removed.
  virtual bool removeLeftover(const char* name) = 0;
  /// True for a regular file.
  virtual bool exists(const char* name) = 0;
  virtual bool remove(const char* name) = 0;
  /// Replaces an existing target in one step.
  virtual bool rename(const char* from, const char* to) = 0;
  /// Gives the file `to` the permissions of `from`. True where files have none.
  virtual bool copyPermissions(const char* /*from*/, const char* /*to*/) { return true; }
  /// A name that is equal for all paths to one existing file (links followed); empty when there is
  /// no such file.
  virtual tString resolve(const char* name) = 0;
};

/// The file system of the machine.
class tDiskManLocal : public tDiskMan {
 public:
  std::unique_ptr<tFile> open(const char* name) override;
  std::unique_ptr<tFile> create(const char* name) override;
  std::unique_ptr<tFile> createNew(const char* name, bool& exists) override;
  bool removeLeftover(const char* name) override;
  bool exists(const char* name) override;
  bool remove(const char* name) override;
  bool rename(const char* from, const char* to) override;
  bool copyPermissions(const char* from, const char* to) override;
  tString resolve(const char* name) override;
};

/// A file system that keeps the files of some names in memory and passes all others on. The run
/// puts its temporary copies of the sources there, so none is ever left on the disk.
class tDiskManOverlay : public tDiskMan {
 public:
  /// `below` must outlive this object.
  explicit tDiskManOverlay(tDiskMan& below) : below_(below) {}

  /// Files of this name live in memory from now on, until released. Reading one to its end with
  /// readAll hands its bytes over and leaves it empty.
  void keepInMemory(std::string_view name);
  void release(std::string_view name);

  std::unique_ptr<tFile> open(const char* name) override;
  std::unique_ptr<tFile> create(const char* name) override;
  std::unique_ptr<tFile> createNew(const char* name, bool& exists) override;
  bool removeLeftover(const char* name) override;
  bool exists(const char* name) override;
  bool remove(const char* name) override;
  bool rename(const char* from, const char* to) override;
  tString resolve(const char* name) override;

 private:
  struct tKept {
    std::shared_ptr<tString> bytes;  // null while no such file has been created
  };
  tKept* kept(const char* name);

  tDiskMan& below_;
  std::map<std::string, tKept, std::less<>> kept_;
};
