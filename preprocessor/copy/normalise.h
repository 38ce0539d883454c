#pragma once

#include <cstddef>
#include <ctime>
#include <string_view>

#include "lib_base/autochar.h"
#include "lib_base/diskman.h"
#include "preprocessor/messages/messages.h"

/// A line of a source may hold this many bytes before its line end.
constexpr std::size_t kLongestLine = 4095;

/// What BeforePreProcessor looks for: the beginning of a dialog block, and the place of the time.
inline constexpr std::string_view kDialogBegin = "//$BEGINDIALOGDEF_";
inline constexpr std::string_view kTimeStamp = "__COMPTIMESTAMP__";

/// The clock of the time stamp: the current local time.
using tClock = std::tm (*)();
std::tm localTime();

/// Why a source could not be normalised: kSourceIsCopy when the two names are the same (without
/// regard to case), kLineTooLong, or kSourceUnreadable, also when the copy cannot be written.
struct tNormaliseFailure {
  eMessage what = eMessage::kSourceUnreadable;
  int line = 0;  // the one that is too long, from 1
};

/// Copies a source to `tempName`: BeforePreProcessor rewrites the text, and every line of the copy
/// ends in "\r\n". An empty source gives an empty copy. Returns false after a failure, which
/// `failure` tells when it is given; no copy stays then, but for the lines before one that is too
/// long. `dialogFound` is set when a dialog block was expanded. `longestLine` is for texts that a
/// converter has made.
bool AdjustCRLF_and_CreateTemp(tDiskMan& disk, const char* sourceName, const char* tempName,
                               unsigned char& dialogFound, std::size_t longestLine = kLongestLine,
                               tNormaliseFailure* failure = nullptr);

/// Rewrites the text in `buffer` (which ends in a zero byte): expands the dialog blocks, setting
/// `dialogFound` when there was one, and puts the time for "__COMPTIMESTAMP__".
void BeforePreProcessor(tAutoChar& buffer, unsigned char& dialogFound, tClock clock = localTime);
