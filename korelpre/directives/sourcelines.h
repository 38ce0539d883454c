#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "korelpre/rules/rule.h"
#include "korelpre/text/spcstring.h"
#include "lib_base/list.h"

namespace precomp {

class tInclude;

/// What a line of a source contributes when it is more than a span of the text: the tokens of a
/// statement with embedded SQL that starts on it, and what a directive left for the walk over the
/// lines. A source can have millions of them.
struct tSourceLine {
  tAutoArray<tSpcString> tokens;             // the walk takes them
  tInclude* include = nullptr;               // owned by its processor's include list
  std::unique_ptr<tBaseXChg> pendingDefine;  // entered into the tables when the walk gets here
  std::vector<std::unique_ptr<tBaseXChg>> pendingRules;  // commands and translations, likewise
  bool directive = false;                                // the line held a directive

  bool hasContent() const {
    return !tokens.empty() || include != nullptr || pendingDefine != nullptr ||
           !pendingRules.empty() || directive;
  }
};

/// A place that the walk over a header without statements stops at.
struct tHeaderStop {
  int line;
  bool behindInclude;  // the first line with content behind one: it gets a "#line" marker
  tInclude* include;   // null when the line holds none
};

/// The lines of one source text. A line that is blank, continues another or is a statement is a
/// number; only the others have an object.
class tSourceCode {
 public:
  enum eKind : std::uint32_t {
    kNothing,    // blank, a comment, or a part of the statement above
    kPlain,      // a statement, to be read from the text itself
    kScanned,    // the same, which only the scanner can read
    kEntry,      // see entry()
    kDirective,  // a directive that is done
  };

  /// Makes room for the lines of a text of `bytes` bytes.
  void expect(std::size_t bytes);
  /// Lines known so far.
  int count() const { return static_cast<int>(lines_.size()); }
  /// Lines count from 1 everywhere here. Makes the list at least `lines` long.
  void extendTo(int lines);
  eKind kind(int line) const {
    return word(line) == kDirective ? kDirective : static_cast<eKind>(word(line) & 3);
  }
  /// Where the statement of a line starts in the text, in bytes.
  std::size_t offset(int line) const { return word(line) >> 2; }
  bool hasContent(int line) const;

  /// Notes a statement that starts at byte `offset`, below 1 GiB; `kind` is kPlain or kScanned.
  void addStatement(eKind kind, int line, std::size_t offset);
  void addDirective(int line);
  /// The object of a line, made when there is none yet. Owned by this list.
  tSourceLine& entry(int line);
  /// The object of a line of kind kEntry.
  tSourceLine& entryAt(int line) { return entries_[offset(line)]; }
  /// Empties a line.
  void reset(int line);
  void clear();

  /// Whether any line holds a statement.
  bool hasStatements() const;
  /// Of a file without statements, keeps what headerStops() answers and gives the rest back.
  void keepHeaderStops();
  const std::vector<tHeaderStop>& headerStops() const { return headerStops_; }

 private:
  std::uint32_t word(int line) const { return lines_[static_cast<std::size_t>(line) - 1]; }
  void set(int line, eKind kind, std::size_t value);

  // Kind in the low two bits, an offset or index above; or kDirective.
  std::vector<std::uint32_t> lines_;
  std::deque<tSourceLine> entries_;
  std::vector<tHeaderStop> headerStops_;
  bool hasStatement_ = false;
};

}  // namespace precomp
