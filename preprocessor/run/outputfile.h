#pragma once

#include <memory>
#include <string_view>

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

/// An output file that appears complete or not at all: it is written under a temporary name and
/// renamed at the end. If it has not been renamed, the destructor removes it.
class tOutputFile {
 public:
  /// `disk` must outlive this object.
  tOutputFile(tDiskMan& disk, tString temporaryName, tString finalName);
  ~tOutputFile();
  tOutputFile(const tOutputFile&) = delete;
  tOutputFile& operator=(const tOutputFile&) = delete;

  /// Whether the file with the final name already contains what write() would write for this text,
  /// so that nothing needs to be created. A temporary file that a killed run has left is removed.
  bool isUpToDate(std::string_view text);
  /// Creates the temporary file, never through a link. One that a killed run has left is replaced.
  /// If another run is writing one, this fails or, with `patient` set, waits up to 10 seconds.
  bool create(bool patient = false);
  /// Writes the whole text, "\r\n" after every line, and closes the file.
  bool write(std::string_view text);
  /// Moves the file to its final name, replacing an older one.
  bool rename();

 private:
  bool tryCreate(bool& exists);

  tDiskMan& disk_;
  tString temporaryName_;
  tString finalName_;
  std::unique_ptr<tFile> file_;
  bool temporaryExists_ = false;
};
