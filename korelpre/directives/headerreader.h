#pragma once

#include <memory>

#include "lib_base/stringz.h"

class tDiskMan;

namespace precomp {

class tHeaderCache;
class tHeaderImage;
struct tHeaderNotes;
class tHeaderRecorder;
class tInclude;
class tProgramFile;
struct tSharedState;
struct tStoredRules;

/// Reads the headers of one file, or takes images of them; see headerreader.cpp.
class tHeaderReader {
 public:
  /// `file` must outlive the reader.
  explicit tHeaderReader(tProgramFile& file);

  /// Reads the standard header ahead of the main file.
  void includeStandard();
  /// What process() of the record does, or the same by an image.
  bool include(tInclude& record);
  /// Reads the standard header and saves it. False when it was not saved; what is wrong with the
  /// header itself is raised.
  bool precompile();
  /// Fills the tables from the file that a run has saved of the standard header; false when there
  /// is none that holds what the text would give.
  bool loadSaved();

 private:
  static constexpr bool kWholeTables = true;

  /// Null when headers are not cached.
  tHeaderCache* cache() const;
  bool compileStandard();
  std::shared_ptr<const tHeaderImage> recordStandard();
  bool takeStandard();
  bool save(const tHeaderImage& image, unsigned set);
  bool takeInclude(tInclude& record);
  void keepInclude(tInclude& record, tHeaderRecorder& recorder);
  void take(const tString& name, const std::shared_ptr<const tHeaderImage>& image,
            bool wholeTables);
  bool fits(const tHeaderImage& image, bool wholeTables);
  bool fitsTables(const tHeaderImage& image) const;
  bool mayCount(const tHeaderNotes& notes) const;
  void makeWay(const tStoredRules& stored, bool wholeTables);

  tProgramFile& file_;
  tSharedState& shared_;
  tDiskMan& files_;
};

}  // namespace precomp
