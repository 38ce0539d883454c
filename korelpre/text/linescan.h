#pragma once

#include <cstdint>

#include "korelpre/text/directivewords.h"

namespace precomp {

/// What a logical line holds: the physical lines that continuations and block comments join.
enum class eLineKind : std::uint8_t {
  kEmpty,  // blanks and comments only
  kPlain,  // a statement that tokenises without surprise: it may stay a span of the source
  kOther,  // a directive, or anything that only the directive scanner can judge
};

struct tScannedLine {
  const char* end;  // behind its last line feed; not to be used for kOther
  int lines;        // physical lines, at least 1
  int before;       // of these, how many end before the first token
  eLineKind kind;
};

/// Looks at the logical line that starts at `start`. The text must end with a line feed and have
/// "\r\n" for every line end.
tScannedLine scanLine(const char* start, const char* end);

struct tSkippedLine {
  const char* end;  // behind its last line feed, or the end of the text
  int lines;
  eDirective directive;  // a conditional, or kNone
};

/// As scanLine, for a line in a region that a conditional skips: comments, strings and
/// continuations keep their meaning, nothing is judged.
tSkippedLine scanSkippedLine(const char* start, const char* end);

}  // namespace precomp
