#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "korelpre/korelprecls.h"
#include "korelpre/lint/lint.h"
#include "lib_base/list.h"
#include "lib_base/stringz.h"

namespace precomp {

/// A preprocessing session: a root processor together with the files to preprocess, as options
/// name them.
class KorelPre16 : public KorelPreYaccClass {
 public:
  /// `files` must outlive the session; null means the machine's file system.
  explicit KorelPre16(tDiskMan* files = nullptr) : KorelPreYaccClass(files) {}
  explicit KorelPre16(tDiskMan& files) : KorelPreYaccClass(&files) {}

  /// Empties the session and reads its options. Include directories come from the environment
  /// variable INCLUDE first, unless `skipEnvironment` is set. No option is an error.
  void Init(const tAutoArray<tString>& options, unsigned char skipEnvironment);
  /// Adds a define as the option "/D" does; to be called after Init(). Without a value the name
  /// stands for nothing. Of several defines of one name the last counts.
  void define(std::string_view name, std::optional<std::string_view> value);
  /// Preprocesses the files in order. Appends the generated lines to `output`, separated by "\n";
  /// `errorText` holds the message when something failed, which is printed too. Lack of memory
  /// leaves as tAllocationError or std::bad_alloc. Throws tDamagedImage when a saved header is
  /// damaged: a new session gives the output, after tHeaderCache::setTryAgain().
  void doIt(tString& output, tString& errorText);

  /// Looks for these warnings while files are preprocessed. Headers are then read from their text
  /// each time.
  void setWarnings(const tWarningSet& wanted);
  /// Those of the last doIt().
  std::vector<tDiagnosis> takeWarnings();

  /// The name that messages show instead of that of the file that is read.
  void setShownName(const tString& name) { shownName_ = name; }
  /// What the last failure was.
  const tDiagnosis& diagnosis() const { return diagnosis_; }
  /// Failures since the last clearErrors().
  int errorCount() const { return errorCount_; }
  void clearErrors();
  const tString& userValue() const { return userValue_; }
  const tAutoArray<tString>& fileList() const { return fileList_; }

 private:
  void takeOption(std::string_view option);
  void addDirectories(std::string_view list);
  void addDefine(std::string_view text);
  bool doFile(const tString& name, tString& output, tString& errorText);
  void fail(const tString& message, tString& errorText);
  void diagnoseOther(int code, const char* slug, const tString& message);

  tAutoArray<tString> fileList_;
  tString userValue_;
  tString shownName_;
  tString currentFile_;
  int errorCount_ = 0;
  tDiagnosis diagnosis_;
  std::unique_ptr<tLint> lint_;  // null unless warnings are wanted
};

}  // namespace precomp
