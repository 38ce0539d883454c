#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "cli/diagnostics.h"

/// The name that the library knows standard output by, and whether `name` is one of it.
constexpr const char* kStandardOutput = "/dev/stdout";
bool namesStandardOutput(const std::string& name);

struct tDefine {
  std::string name;
  std::optional<std::string> value;
};

/// What -ffile-prefix-map asks for.
struct tPrefixMap {
  std::string from;
  std::string to;
};

/// A file that a run finds beside those on disk.
struct tHostFile {
  std::string name;
  std::string text;
  std::string container;  // the archive that it is from, or empty
};

/// What is wanted of dependency files.
struct tDependencyOptions {
  bool wanted = false;
  /// Empty: beside the output.
  std::string file;
  /// As they are to stand in the rule, separated by blanks; empty: the output.
  std::string targets;
  /// Add empty rules for the headers.
  bool phony = false;
};

/// The errors of a source that are told unless the user gives another number.
constexpr int kMostErrors = 20;

/// What the arguments of the program, or of one of its subcommands, ask for. Options that a
/// subcommand does not have keep their defaults.
struct tCommandLine {
  enum eRequest {
    kCarryOut,
    kShowHelp,
    kShowVersion,
    kShowCompletions,
    kShowChapter,
    kListWarnings
  };

  eRequest request = kCarryOut;
  /// What is wrong with the usage; otherwise empty. A request for help comes before it.
  std::string complaint;

  std::vector<std::string> files;
  /// The file that names more of them, "-" for standard input; empty: none.
  std::string fileList;
  /// Zero bytes separate its names instead of line ends.
  bool zeroSeparated = false;
  /// Of `krpre explain`, from 1.
  int lineNumber = 0;
  /// In the order given; never holds an empty text.
  std::vector<std::string> includeDirectories;
  std::vector<tDefine> defines;
  std::vector<tPrefixMap> prefixes;
  /// For the time stamp, from SOURCE_DATE_EPOCH; none: the clock's.
  std::optional<long long> time;
  /// A directory or a file; empty when outputs go beside their sources.
  std::string output;
  /// The number of sources preprocessed in parallel; 0: one per core.
  unsigned jobs = 0;
  tDependencyOptions dependencies;
  /// The name given to the file "-"; may be empty.
  std::string standardInputName;
  eDiagnosticForm diagnostics = eDiagnosticForm::kLong;
  /// For krpre_host; empty: none.
  std::string warnings;
  /// Write nothing, and say nothing of sources without findings.
  bool checks = false;
  /// Write nothing, whatever other options say of outputs.
  bool syntaxOnly = false;
  bool unused = false;
  /// How many errors of a source to tell at most; 0: one, or kMostErrors when it is checked.
  int mostErrors = 0;
  bool alwaysWrite = false;
  bool saveTemps = false;
  /// Where the standard header is cached for later runs; empty: in the user's directory for that;
  /// none: nowhere.
  std::optional<std::string> cache;
  bool trace = false;
  bool progress = false;
  bool quiet = false;
  bool json = false;
  bool listing = false;
  /// Not set: only on a terminal.
  std::optional<bool> colour;
  std::string key;
  std::string completions;
  /// The number or slug that --explain names.
  std::string chapter;

  /// The bundle to run from; empty: none.
  std::string bundle;
  /// What a reduced source is to show: an error by its number or slug, or a text in its output.
  std::string wantedError;
  std::string wantedText;
  std::string reducedFile;

  /// Files that are there beside those on disk, or `only` these.
  void setHostFiles(std::vector<tHostFile> found, bool only) {
    hostFiles_ = std::make_shared<const std::vector<tHostFile>>(std::move(found));
    onlyHostFiles_ = only;
  }
  std::span<const tHostFile> hostFiles() const {
    return hostFiles_ == nullptr ? std::span<const tHostFile>() : *hostFiles_;
  }
  bool readsOnlyHostFiles() const { return onlyHostFiles_; }

  bool writesNothing() const { return checks || syntaxOnly; }
  bool readsStandardInput() const;
  /// Whether the output of the source, of which there is one then, goes there.
  bool writesStandardOutput() const;

  /// Sets the complaint, unless there is one already: the first is the clearest.
  void complain(std::string text);

 private:
  std::shared_ptr<const std::vector<tHostFile>> hostFiles_;
  bool onlyHostFiles_ = false;
};
