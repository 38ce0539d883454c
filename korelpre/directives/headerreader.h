#pragma once

#include <memory>

#include "korelpre/headers/headercache.h"
#include "korelpre/headers/headerrecorder.h"
#include "lib_base/stringz.h"

class tDiskMan;

namespace precomp {

class tInclude;
class tProgramFile;
struct tSharedState;
struct tStoredRules;

/// What is at hand while a header is read whose image is to be made.
struct tImageWork {
  std::unique_ptr<tHeaderCache::tTurn> turn;
  std::unique_ptr<tHeaderRecorder> recorder;
};

/// Reads the headers of one file, or takes images of them; see headerreader.cpp.
class tHeaderReader {
 public:
  /// `file` must outlive the reader.
  explicit tHeaderReader(tProgramFile& file);

  /// Reads the standard header ahead of the main file.
  void includeStandard();
  /// What process() of the record does, or the same by an image.
  bool include(tInclude& record);
  /// The two halves of it, for whoever compiles the file in between: false when an image stands for
  /// it; and what is to be done when the file has been compiled.
  bool begin(tInclude& record, tImageWork& work);
  void finish(tInclude& record, tImageWork& work);
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
  bool recordAndSave();
  tString savedFile() const;
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
