#pragma once

#include <cstdint>
#include <memory>

#include "korelpre/headers/includecount.h"
#include "lib_base/diskman.h"
#include "lib_base/list.h"
#include "lib_base/pathname.h"
#include "lib_base/stringz.h"

namespace precomp {

class tProgramFile;

/// Finds the files of a program, and keeps count of what has been included.
///
/// A name is looked for as it is written, then, for an include file, in the directory where the
/// main file was found, then in the directories of the include path in order. The first file that
/// opens is taken. Where a directory is not found as it is written, its backslashes separate. When
/// that leads to no included file, those of its name do too.
class tFileFinder {
 public:
  /// `files` must outlive the finder; null means the machine's file system.
  explicit tFileFinder(tDiskMan* files);

  tDiskMan& files() { return *files_; }
  tAutoArray<tString>& includePath() { return includePath_; }
  /// Where the main file was found; empty when it was found as it is named.
  void setMainDirectory(const tString& directory) { mainDirectory_ = directory; }

  /// Asks `accept` about each directory to look in, an empty one for the name alone, and each
  /// spelling of `name` to look for there, until it answers true. False when it never does.
  template <class Accept>
  bool search(bool include, const tString& name, const Accept& accept) {
    if (searchFor(include, name, accept)) return true;
    return include && name.view().find('\\') != std::string_view::npos &&
           searchFor(include, slashedPath(name), accept);
  }
  /// The path at which an included file would be found; empty when it would not, or when it is not
  /// certain that a file earlier in the search is missing.
  tString locate(const tString& requested);

  const tIncludeCount& included() const { return included_; }
  /// Counts an included file at `depth`, 1 for one that the main file includes. Null, or the name
  /// of the limit that it exceeds.
  const char* countInclude(int depth, std::int64_t bytes);
  /// The same for text that an included file turns out to hold beyond its size on the disk.
  const char* countText(std::int64_t bytes);
  /// Whether the files of a header that was read before may be counted again, and doing so.
  bool mayCount(int depth, const tIncludeCount& more) const;
  void count(const tIncludeCount& more);

  /// Forgets the include path and the counts.
  void clear();

 private:
  template <class Accept>
  bool searchFor(bool include, const tString& name, const Accept& accept) {
    const auto accepted = [&](const tString& directory) {
      if (directory.empty()) return false;
      if (accept(directory, name)) return true;
      return directory.view().find('\\') != std::string_view::npos &&
             accept(slashedPath(directory), name);
    };
    if (accept(tString(), name)) return true;
    if (include && accepted(mainDirectory_)) return true;
    for (int i = 0; i < includePath_.count(); ++i) {
      if (accepted(includePath_[i])) return true;
    }
    return false;
  }

  std::unique_ptr<tDiskMan> ownFiles_;
  tDiskMan* files_;
  tAutoArray<tString> includePath_;
  tString mainDirectory_;
  tIncludeCount included_;
};

}  // namespace precomp
