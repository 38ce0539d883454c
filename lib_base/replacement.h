#pragma once

#include <functional>
#include <memory>

#include "lib_base/diskman.h"
#include "lib_base/stringz.h"

/// A file that appears whole under its name or not at all: it is written under a temporary name in
/// the same directory, created exclusively and never through a link, and then renamed. All that is
/// written is written this way.
class tReplacement {
 public:
  /// Who has made the name.
  enum eName {
    kDerived,  // we: what stands there is replaced, be it a link, and never followed
    kChosen,   // the user: a link is followed; a pipe or a device is not replaced but written to
  };
  /// Writes the content; false on failure. May be called more than once.
  using tWriting = std::function<bool(tFile&)>;

  /// `temporary` is the temporary name without directory, by which writers of the same file take
  /// turns. `disk`, and what `write` refers to, must outlive this object.
  tReplacement(tDiskMan& disk, const tString& name, eName whose, const tString& temporary,
               tWriting write);
  /// Removes the temporary file if it is still there.
  ~tReplacement();
  tReplacement(const tReplacement&) = delete;
  tReplacement& operator=(const tReplacement&) = delete;

  /// Whether the file holds the content already. What a killed writer has left is removed then.
  bool isUpToDate();
  /// Creates the temporary file, in place of one that a killed writer has left. While another one
  /// is writing this fails or, with `patient` set, waits up to 10 seconds.
  bool create(bool patient = false);
  bool copyPermissions(const char* from) { return !file_ || file_->copyPermissions(from); }
  /// Writes the content to the temporary file.
  bool write();
  /// Gives it its name. What is no regular file is written now.
  bool publish();
  /// Removes the file that would be replaced.
  void removeOld();

  const tString& temporaryName() const { return temporary_; }
  const tString& target() const { return target_; }
  /// The errno value of what failed.
  int error() const;

 private:
  bool tryCreate(bool& exists);
  bool fill(tFile& file);
  /// Whether a link stands under the name, or what is no file.
  bool isStrange();

  tDiskMan& disk_;
  const bool derived_;
  const bool inPlace_;
  const tString target_;
  const tString temporary_;
  const tWriting write_;
  std::unique_ptr<tFile> file_;
  bool temporaryExists_ = false;
  int error_ = 0;
};
