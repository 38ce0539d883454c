#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "korelpre/korelpre.h"
#include "lib_base/diskman.h"
#include "preprocessor/recovery/repairs.h"

/// Finds the errors of a source that stand behind the first: the run is made again over texts in
/// which the errors before are repaired. The session knows nothing of it.
class tErrorSearch {
 public:
  /// Makes a session ready; `edited`: an included file is another one now than others see.
  using tSetUp = std::function<void(precomp::KorelPre16& session, bool first, bool edited)>;
  /// Hears of an error, of which the session knows more.
  using tTell = std::function<void(const precomp::tDiagnosis& error, precomp::KorelPre16& session)>;

  /// The source stands in `files`, in memory, under the name `source`.
  tErrorSearch(tDiskManOverlay& files, const tString& source, tSetUp setUp, tTell tell);
  ~tErrorSearch();

  /// Runs the source and tells of its errors, at most `most` of them; false when there is none.
  /// What the session prints about an error is printed ahead of telling. `output` is that of the
  /// source if it has no error.
  bool run(int most, tString& output);
  /// After run(): the session that got farthest.
  precomp::KorelPre16& session() const;
  /// Its warnings, but for those of lines that were repaired.
  std::vector<precomp::tDiagnosis> takeWarnings();

 private:
  struct tOutcome;

  tRepairedText* textOf(const tString& name);
  void lay(const tString& name, const tRepairedText& text);
  std::unique_ptr<tOutcome> runOnce(bool first);
  bool isSpent() const;
  std::unique_ptr<tOutcome> goOn(const tOutcome& outcome);
  void tell(tOutcome& outcome);
  bool isConsequence(const precomp::tDiagnosis& error);
  int mainLine(const precomp::tDiagnosis& error) const;
  long reach(const tOutcome& outcome) const;

  tDiskManOverlay& files_;
  tString source_;
  tSetUp setUp_;
  tTell tell_;
  std::map<std::string, std::unique_ptr<tRepairedText>> texts_;  // by name
  std::unique_ptr<tOutcome> last_;
  int runs_ = 0;
  std::size_t bytes_ = 0;    // of texts that were laid
  std::uint64_t steps_ = 0;  // of the matcher
  bool edited_ = false;      // one of them is not the source
  bool unexplained_ =
      false;  // a rule or a header is missing, which may have made other sense of commands
  bool atSigns_ = false;  // a statement that begins with "@" has been told
};
