#pragma once

#include <memory>
#include <string_view>

#include "korelpre/directives/lexemefeed.h"
#include "korelpre/statements/plainwrite.h"
#include "korelpre/text/tknstring.h"

namespace precomp {

class tHeaderImage;
class tHeaderRecorder;
class tInclude;
class tProgramFile;
struct tSharedState;
struct tSourceLine;

/// Phase 2 for one file: walks over its lines, enters the rules of the main file where their line
/// is reached, and writes the rewritten statements.
class tLineWalk {
 public:
  /// `file` must outlive the walk.
  explicit tLineWalk(tProgramFile& file);

  /// Appends the generated lines of the file, and of what it includes, to `output`, without a line
  /// feed at its end. `depth` counts the nested calls and is 0 outside of them.
  void run(tString& output, int& depth);
  /// Rewrites a statement of the file until no rule applies and appends it and a line feed to
  /// `output`.
  void rewrite(tTknString& statement, tString& output);

 private:
  void begin(tString& output);
  tInclude* goOn(tString& output);
  tInclude* walkStops(tString& output);
  tInclude* walkLines(tString& output);
  tInclude* walkEntry(tSourceLine& entry, tString& output);
  void writeMarkers(const tHeaderImage& image, tString& output);
  void walkStatement(int line, tString& output);
  void writePlain(int line, tString& output);
  void writeScanned(int line, tString& output);
  void append(std::string_view text, int line, tString& output);
  void appendMarker(int line, std::string_view name, tString& output);

  tProgramFile& file_;
  tSharedState& shared_;
  bool headerOnly_ = false;     // there is no statement
  int passed_ = 0;              // lines, or stops of a header
  bool behindInclude_ = false;  // a "#line" marker waits for the next line with content
  tPlainWriter writer_;
  tTknString scratch_;  // the statement being rewritten
  // What reads lines again; the feed is null while there was none that needs the scanner.
  tQuickReader quick_;
  tSqlBlock sql_;
  std::unique_ptr<tLexemeFeed> feed_;
};

/// Notes the "#line" markers that run() writes for a header without statements; false when it has
/// some.
bool noteMarkers(tProgramFile& file, tHeaderRecorder& recorder);

}  // namespace precomp
