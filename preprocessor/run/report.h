#pragma once

#include <vector>

#include "lib_base/diskman.h"
#include "preprocessor/messages/messages.h"
#include "preprocessor/run/runhost.h"

/// The line of a source that a message is about.
struct tShownLine {
  tDiskMan& files;
  const tString& name;  // of the source in `files`
  int line;             // from 1
  int column = 0;       // in bytes from 1; 0 when it is not known
};

/// Prints the messages about one source and passes them on to the host.
class tRunReport {
 public:
  /// An empty `source` means the run as a whole. Both must outlive this object.
  tRunReport(tRunHost& host, const tString& source) : host_(host), source_(source) {}

  void tell(eMessage message, tMessageArguments arguments = {}, int code = 0,
            std::vector<precomp::tNote> notes = {});
  void tell(eMessage message, tMessageArguments arguments, const tShownLine& shown, int code = 0);
  /// Passes on what a session tells of its source, which it reads under the name `copy`, and adds
  /// the lines that notes point at.
  void pass(precomp::tDiagnosis diagnosis, const precomp::KorelPre16& session, const tString& copy,
            tDiskMan& files);
  /// Reports the exception that is being handled. To be called in a catch clause. It works without
  /// memory.
  void tellException() noexcept;
  /// The last message about the source.
  void tellDone();
  void tellFailed(int result) noexcept;

 private:
  void tellFailure(eMessage message, tMessageArguments arguments = {}, int code = 0) noexcept;

  tRunHost& host_;
  const tString& source_;
};
