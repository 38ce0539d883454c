#pragma once

#include "korelpre/headers/headercache.h"
#include "korelpre/korelpre.h"
#include "lib_base/stringz.h"
#include "preprocessor/run/dependencies.h"

struct tRunOptions;

/// What a run asks and tells its host. Every operation has a default that suits a host which only
/// wants the output files.
class tRunHost {
 public:
  virtual ~tRunHost() = default;

  /// Adds what the host asks of the run beyond the argument vector.
  virtual void addOptions(tRunOptions& options) const;
  /// False: no output file is written, and an older one stays.
  virtual bool wantsOutput() const { return true; }
  /// The headers that several runs share; null: each run keeps its own.
  virtual precomp::tHeaderCache* headers() { return nullptr; }
  /// Where the external converter of foreign sources stands: beside the running program.
  virtual tString converterDirectory() const;
  /// The file that the output of a source goes to; empty: the one that the options name.
  virtual tString outputName() const { return {}; }
  /// True: the user has chosen that name. A link is followed then, and what is no regular file is
  /// not replaced but written to.
  virtual bool outputIsChosen() const { return false; }
  /// The dependency file to write with the output, and what stands in it; null: none.
  virtual const tDependencies* dependencies() const { return nullptr; }
  /// True: takeOutput gets the outputs, and no file is written.
  virtual bool takesOutput() const { return false; }
  /// The output of `source` as its file would hold it.
  virtual void takeOutput(const tString& source, const std::string& text);
  /// True: an output that would not change is not written, so that its file keeps its times.
  virtual bool keepsUnchanged() const { return false; }
  /// True: the normalised copy of a source is kept beside its output file.
  virtual bool savesCopy() const { return false; }
  /// True: when another run with the same tag is writing to the directory, wait for it.
  virtual bool takesTurns() const { return false; }
  /// A session is about to preprocess `source`, which it reads under the name `copy`.
  virtual void sessionBegins(precomp::KorelPre16& session, const tString& copy,
                             const tString& source);
  /// A further session over the same source, in which an error of those before is repaired.
  virtual void sessionBeginsAgain(precomp::KorelPre16& session);
  /// The session has preprocessed its source without an error.
  virtual void sessionDone(precomp::KorelPre16& session);
  /// A source has been read; the session tells of what it includes.
  virtual void sourceRead(const tString& source);
  /// The output of `source` stands in the file `name`; not `written` when it stood there already.
  virtual void outputDone(const tString& source, const tString& name, bool written);
  /// False: nobody listens to diagnosed().
  virtual bool wantsDiagnoses() const { return false; }
  /// How many errors of a source to tell at most; 0 or 1: the run ends at the first.
  virtual int mostErrors() const { return 0; }
  /// A message has been printed; this is what is known of it.
  virtual void diagnosed(const precomp::tDiagnosis& diagnosis);
  /// In place of diagnosed() when there is no memory for more than this: an error, or, unless
  /// `code` is 0, the result of a source.
  virtual void diagnosedInBrief(int code) noexcept;
};
