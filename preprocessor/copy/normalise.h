#pragma once

#include <cstddef>
#include <ctime>
#include <functional>
#include <string_view>
#include <vector>

#include "lib_base/autochar.h"
#include "lib_base/diskman.h"
#include "preprocessor/messages/messages.h"

/// The maximum length of a source line in bytes, without its line end.
constexpr std::size_t kLongestLine = 4095;

/// What BeforePreProcessor replaces: the beginning of a dialog block, and the time stamp.
inline constexpr std::string_view kDialogBegin = "//$BEGINDIALOGDEF_";
inline constexpr std::string_view kTimeStamp = "__COMPTIMESTAMP__";

/// The clock of the time stamp.
using tClock = std::function<std::tm()>;
std::tm localTime();
/// A clock that stands still, in UTC.
tClock clockAt(std::time_t time);

/// Why a source could not be normalised: kSourceIsCopy if the two names are the same (ignoring
/// case), kLineTooLong, kExpandedTooBig, kSourceNotFound, kSourceUnreadable, or kSourceTooBig, also
/// if the copy cannot be written.
struct tNormaliseFailure {
  eMessage what = eMessage::kSourceTooBig;
  int line = 0;   // of the source: the one that is too long, or where the text gets too big
  int error = 0;  // the errno value of kSourceUnreadable
};

/// What BeforePreProcessor has done to a text. All lines count from 1.
struct tExpansion {
  /// From a line of the new text on, where its lines come from: a block of the source, whose first
  /// line is `source`, or consecutive lines.
  struct tOrigin {
    int line;
    int source;
    bool block;
  };
  std::vector<tOrigin> origins;  // empty without a dialog block
  int tooBigAt = 0;  // the line of the source at which the text gets too big; 0: it does not

  /// The line of the source that `line` of the new text comes from.
  int sourceLine(int line) const;
};

/// Copies a source to `tempName`: the text is rewritten by BeforePreProcessor, and every line of
/// the copy ends in "\r\n". An empty source gives an empty copy. Returns false after a failure and
/// describes it in `failure`, if given; the copy is removed then, except for the lines before one
/// that is too long. `dialogFound` is set if a dialog block was expanded. `longestLine` differs
/// from the default for texts that a converter has made; `clock` is that of BeforePreProcessor.
bool AdjustCRLF_and_CreateTemp(tDiskMan& disk, const char* sourceName, const char* tempName,
                               unsigned char& dialogFound, std::size_t longestLine = kLongestLine,
                               tNormaliseFailure* failure = nullptr,
                               const tClock& clock = localTime);

/// Rewrites the text in `buffer` (which ends in a zero byte): expands the dialog blocks, setting
/// `dialogFound` if there was one, and replaces "__COMPTIMESTAMP__" by the time. A text that would
/// exceed tString::maxSize() stays as it was.
tExpansion BeforePreProcessor(tAutoChar& buffer, unsigned char& dialogFound,
                              const tClock& clock = localTime);
