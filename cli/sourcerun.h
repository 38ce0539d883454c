#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cli/buildplan.h"
#include "cli/commandline.h"
#include "cli/librarycall.h"
#include "include/krpre.h"

/// A part of the messages that is the same for every source which includes a header.
struct tHeaderMessage {
  std::size_t begin;
  std::size_t end;
  std::string key;
};

/// The outcome of one source.
struct tSourceResult {
  bool done = false;
  /// For standard output.
  std::string messages;
  /// In order.
  std::vector<tHeaderMessage> ofHeaders;
  /// For standard error.
  std::string complaint;
  bool outOfMemory = false;
  /// The output, when it goes to no file.
  std::string text;
  /// Of errors: " 2027 endif-without-if ".
  std::string codes;
};

/// How the messages of all sources are shown.
struct tMessageStyle {
  eDiagnosticForm form;
  bool colour;
  std::string language;  // empty: English
};

/// What `line` asks for when messages go to the descriptor `messages`.
tMessageStyle messageStyle(const tCommandLine& line, int messages);

/// What is printed of a diagnostic beside the lines of the library, or in their place.
std::string shownDiagnostic(const krpre_diagnostic& diagnostic, const tMessageStyle& style);

/// The run of the library over one source. Several may run at once in several threads.
class tSourceRun {
 public:
  /// The arguments must outlive this object; `headers` may be null.
  tSourceRun(const tCommandLine& line, const tBuildJob& job, const std::string& shippedHeaders,
             const tMessageStyle& style, krpre_headers* headers);

  const tBuildJob& job() const { return job_; }

  /// Preprocesses the source, or `text` in its place unless that is null, and writes its output and
  /// its dependency file. Appends the names of the files that were read to `read` unless that is
  /// null. Nothing is thrown.
  tSourceResult run(const std::string* text = nullptr,
                    std::vector<std::string>* read = nullptr) noexcept;

 private:
  void runInto(tSourceResult& result, const std::string* text, std::vector<std::string>* read);

  const tCommandLine& line_;
  const tBuildJob& job_;
  const tMessageStyle& style_;
  krpre_headers* headers_;  // shared with others, or null
  tLibraryCall call_;
};
