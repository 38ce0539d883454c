#pragma once

#include <memory>
#include <string_view>

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

/// An output file that appears whole or not at all: it is written under a temporary name and
/// renamed at the end. What has not been renamed is removed when the object goes.
class tOutputFile {
 public:
  /// `disk` must outlive this object.
  tOutputFile(tDiskMan& disk, tString temporaryName, tString finalName);
  ~tOutputFile();
  tOutputFile(const tOutputFile&) = delete;
  tOutputFile& operator=(const tOutputFile&) = delete;

  /// Whether the file under the final name already holds what write() would write for this text.
  /// Then nothing needs to be created; what a killed run has left of the temporary file goes.
  bool isUpToDate(std::string_view text);
  /// Creates the temporary file, never through a link. One that a killed run has left gives way;
  /// one that another run is writing is a failure or, with `patient` set, is waited for, 10 seconds
  /// at most.
  bool create(bool patient = false);
  /// Writes the whole text, "\r\n" after every line, and closes the file.
  bool write(std::string_view text);
  /// Puts the file in the place of an older one.
  bool rename();

 private:
  bool tryCreate(bool& exists);

  tDiskMan& disk_;
  tString temporaryName_;
  tString finalName_;
  std::unique_ptr<tFile> file_;
  bool temporaryExists_ = false;
};
