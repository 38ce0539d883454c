#include "preprocessor/copy/normalise.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

#include "lib_base/misc.h"
#include "lib_base/stringz.h"
#include "lib_gzip/zipsource.h"
#include "preprocessor/copy/debugsync.h"
#include "preprocessor/copy/fileparts.h"
#include "preprocessor/copy/linewriter.h"
#include "preprocessor/copy/textlines.h"

namespace {

// Note [dialog blocks]
// A dialog is stored in a source as comment lines: "//$BEGINDIALOGDEF_", somewhere behind it
// "//$DIALOGCODE=" with the dialog's code in hexadecimal, and "//$ENDDIALOGDEF_". The block is
// replaced by its code, up to the end of the line that holds its last mark. Code can hold blocks of
// its own; they must be whole within that code. An encoding is twice as long as what it encodes, so
// they cannot nest deeper than a few levels.
constexpr std::string_view kDialogCode = "//$DIALOGCODE=";
constexpr std::string_view kDialogEnd = "//$ENDDIALOGDEF_";

/// Finds a mark from ascending positions and reads the text once for all of them.
class tMarkFinder {
 public:
  tMarkFinder(std::string_view text, std::string_view mark) : text_(text), mark_(mark) {}

  /// The first occurrence at or behind `start`, or npos.
  std::size_t from(std::size_t start) {
    if (!searched_ || at_ < start) at_ = findText(text_, mark_, start);
    searched_ = true;
    return at_;
  }

 private:
  std::string_view text_;
  std::string_view mark_;
  std::size_t at_ = 0;
  bool searched_ = false;
};

int lineEndsIn(std::string_view text) {
  int ends = 0;
  for (std::size_t at = 0; (at = text.find_first_of("\r\n", at)) != std::string_view::npos;
       ++ends) {
    at = behindLineEnd(text, at);
  }
  return ends;
}

/// See note [dialog blocks].
class tDialogExpander {
 public:
  explicit tDialogExpander(tExpansion& expansion) : expansion_(expansion) {}

  /// Appends `text`, its blocks expanded, to the output. Returns whether there was one.
  bool expand(std::string_view text);
  tString& output() { return output_; }
  bool tooBig() const { return tooBig_; }

 private:
  void expandCode(std::string_view hexText, bool& empty);
  void append(std::string_view text);
  void noteOrigin(std::string_view sourceBefore, bool block);
  /// The number of line feeds in the output, read once.
  std::int32_t line();

  tExpansion& expansion_;
  tString output_;
  std::size_t counted_ = 0;
  std::int32_t line_ = 0;
  int depth_ = 0;
  bool tooBig_ = false;

  // Lines that ended in the source and in the output when the last origin was noted, and where.
  int sourceLines_ = 0;
  int outputLines_ = 0;
  std::size_t sourceSeen_ = 0;
  std::size_t outputSeen_ = 0;
};

void tDialogExpander::append(std::string_view text) {
  tooBig_ = tooBig_ || text.size() > tString::maxSize() - output_.size();
  if (!tooBig_) output_ += text;
}

/// What the output gets next stands in the source behind `sourceBefore`.
void tDialogExpander::noteOrigin(std::string_view sourceBefore, bool block) {
  sourceLines_ += lineEndsIn(sourceBefore.substr(sourceSeen_));
  sourceSeen_ = sourceBefore.size();
  outputLines_ += lineEndsIn(output_.view().substr(outputSeen_));
  outputSeen_ = output_.size();
  expansion_.origins.push_back({outputLines_ + 1, sourceLines_ + 1, block});
}

std::int32_t tDialogExpander::line() {
  const std::string_view fresh = output_.view().substr(counted_);
  line_ += CalcCurLine(fresh, static_cast<std::ptrdiff_t>(fresh.size()));
  counted_ = output_.size();
  return line_;
}

void tDialogExpander::expandCode(std::string_view hexText, bool& empty) {
  tString code = HexToStr(hexText);
  tooBig_ = tooBig_ || !SynchronizeDebugger(code, line() + 1);
  empty = code.empty();
  ++depth_;
  if (!tooBig_) expand(code);
  --depth_;
}

bool tDialogExpander::expand(std::string_view text) {
  tMarkFinder begins(text, kDialogBegin);
  tMarkFinder codes(text, kDialogCode);
  tMarkFinder ends(text, kDialogEnd);
  std::size_t copied = 0;
  bool found = false;
  const auto origin = [&](std::size_t at, bool block) {
    if (depth_ == 0 && !tooBig_) noteOrigin(text.substr(0, at), block);
  };
  for (std::size_t at = begins.from(0); at != std::string_view::npos && !tooBig_;) {
    const std::size_t code = codes.from(at);
    const std::size_t end = ends.from(at);
    if (end == std::string_view::npos || code >= end) {
      at = begins.from(at + kDialogBegin.size());
      continue;
    }
    origin(copied, false);
    append(text.substr(copied, at - copied));
    origin(at, true);
    const std::size_t hex = code + kDialogCode.size();
    bool empty = false;
    expandCode(text.substr(hex, end - hex), empty);
    found = true;
    copied = behindLine(text, end);
    // Kept on purpose: the search goes on as far behind the place of the block as its first mark is
    // long, so a block that stands there right after one without code is not seen.
    at = begins.from(empty ? copied + kDialogBegin.size() : copied);
  }
  if (found) origin(copied, false);
  append(text.substr(copied));
  return found;
}

tString timeStamp(const std::tm& now) {
  // Kept on purpose: the month counts from 0, so January prints as 00.
  return tString::format("\"%04d%02d%02d %02d:%02d:%02d\"", now.tm_year + 1900, now.tm_mon,
                         now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec);
}

/// Replaces the time stamps of `text`, which must have one. The line at which the text gets too
/// big, or 0.
int replaceStamps(std::string_view text, const tString& stamp, tString& stamped) {
  std::size_t copied = 0;
  for (std::size_t at = findText(text, kTimeStamp); copied < text.size();) {
    const std::string_view before = text.substr(copied, at - copied);
    if (before.size() + stamp.size() > tString::maxSize() - stamped.size()) {
      return lineEndsIn(text.substr(0, std::min(at, text.size()))) + 1;
    }
    stamped += before;
    if (at == std::string_view::npos) return 0;
    stamped += stamp;
    copied = at + kTimeStamp.size();
    at = findText(text, kTimeStamp, copied);
  }
  return 0;
}

/// Appends what the file still holds to `buffer` and puts a zero byte behind it.
bool readSource(tFile& file, tAutoChar& buffer) {
  tString text;
  if (!file.seek(0) || !file.readAll(text)) return false;
  buffer.setText(text);
  return true;
}

/// Copies a source without holding it whole. Stops with `marked` set where there is something for
/// BeforePreProcessor to rewrite. False when the source cannot be read.
bool copyPlainSource(tFile& source, tLineWriter& lines, bool& marked) {
  tFileParts parts(source, std::max(kDialogBegin.size(), kTimeStamp.size()) - 1);
  while (parts.next()) {
    marked = findText(parts.seen(), kDialogBegin) != std::string_view::npos ||
             findText(parts.seen(), kTimeStamp) != std::string_view::npos;
    if (marked || !lines.write(parts.part())) return true;
  }
  return !parts.failed();
}

bool isPacked(tFile& source) {
  char start[4];
  return source.read(start, sizeof start) == sizeof start && isZipSource({start, sizeof start});
}

/// Reads a packed source into `buffer`, unpacked, as readSource does. One that is damaged goes into
/// the copy as it is, with `raw` set: the session says what is wrong with it.
bool readPacked(tFile& source, tFile& copy, tAutoChar& buffer, bool& raw) {
  tString packed;
  if (!source.seek(0) || !source.readAll(packed)) return false;
  tString text;
  raw = unpackZipSource(packed, tString::maxSize(), text) != eZipResult::kOk;
  if (raw) return copy.write(packed) && copy.close();
  buffer.setText(text);
  return true;
}

/// Leaves no copy that is not whole.
bool endCopy(tDiskMan& disk, const char* name, tFile& copy, bool good) {
  if (copy.close() && good) return true;
  disk.remove(name);
  return false;
}

}  // namespace

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts = {};
  localtime_r(&now, &parts);
  return parts;
}

tClock clockAt(std::time_t time) {
  return [time] {
    std::tm parts = {};
    gmtime_r(&time, &parts);
    return parts;
  };
}

int tExpansion::sourceLine(int line) const {
  const auto behind = std::find_if(origins.begin(), origins.end(),
                                   [line](const tOrigin& origin) { return origin.line > line; });
  if (behind == origins.begin()) return line;
  const tOrigin& origin = behind[-1];
  return origin.block ? origin.source : origin.source + line - origin.line;
}

tExpansion BeforePreProcessor(tAutoChar& buffer, unsigned char& dialogFound, const tClock& clock) {
  tExpansion expansion;
  std::string_view text = buffer.text();
  tDialogExpander dialogs(expansion);
  if (findText(text, kDialogBegin) != std::string_view::npos && dialogs.expand(text)) {
    dialogFound = 1;
    text = dialogs.output();
    if (dialogs.tooBig()) expansion.tooBigAt = expansion.origins.back().source;
  }
  tString stamped;
  if (expansion.tooBigAt == 0 && findText(text, kTimeStamp) != std::string_view::npos) {
    const int line = replaceStamps(text, timeStamp(clock()), stamped);
    if (line > 0) expansion.tooBigAt = expansion.sourceLine(line);
    text = stamped;
  }
  if (text.data() != buffer.data() && expansion.tooBigAt == 0) buffer.setText(text);
  return expansion;
}

bool AdjustCRLF_and_CreateTemp(tDiskMan& disk, const char* sourceName, const char* tempName,
                               unsigned char& dialogFound, std::size_t longestLine,
                               tNormaliseFailure* failure, const tClock& clock) {
  tNormaliseFailure unused;
  tNormaliseFailure& why = failure != nullptr ? *failure : unused;
  why = {};
  if (equalNoCase(sourceName, tempName)) {
    why.what = eMessage::kSourceIsCopy;
    return false;
  }
  const std::unique_ptr<tFile> source = disk.open(sourceName, why.error);
  if (!source) {
    why.what = why.error != 0 ? eMessage::kSourceUnreadable : eMessage::kSourceNotFound;
    return false;
  }
  if (source->size() > static_cast<std::int64_t>(tString::maxSize())) return false;
  std::unique_ptr<tFile> copy = disk.create(tempName);
  if (!copy) return false;

  tAutoChar buffer;
  std::optional<tLineWriter> lines(std::in_place, *copy, longestLine);
  bool whole = isPacked(*source);  // and not copied part by part
  bool raw = false;
  bool read = source->seek(0);
  if (whole) {
    read = read && readPacked(*source, *copy, buffer, raw);
    if (read && raw) return true;
  } else {
    // An eighth covers the carriage returns of all but very short lines.
    copy->expect(source->size() + source->size() / 8 + 256);
    read = read && copyPlainSource(*source, *lines, whole);
    if (whole) read = readSource(*source, buffer);
  }
  tExpansion expansion;
  if (whole && read) {
    expansion = BeforePreProcessor(buffer, dialogFound, clock);
    if (expansion.tooBigAt > 0) {
      why = {eMessage::kExpandedTooBig, expansion.tooBigAt};
      disk.remove(tempName);
      return false;
    }
    copy = disk.create(tempName);
    if (!copy) return false;
    lines.emplace(*copy, longestLine);
    lines->write(buffer.text());
  }
  lines->finish();
  if (lines->state() == tLineWriter::kTooLong) {
    why = {eMessage::kLineTooLong, expansion.sourceLine(lines->lines() + 1)};
    return false;
  }
  if (endCopy(disk, tempName, *copy, read && lines->state() == tLineWriter::kGood)) return true;
  why.error = source->error();
  if (why.error != 0) why.what = eMessage::kSourceUnreadable;
  return false;
}
