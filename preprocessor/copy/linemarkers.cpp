#include "preprocessor/copy/linemarkers.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

#include "lib_base/misc.h"
#include "lib_base/pathname.h"
#include "preprocessor/copy/debugsync.h"

namespace {

/// A part of the text to be replaced.
struct tSpan {
  std::size_t begin;
  std::size_t end;
};

/// Replaces spans around the occurrences of `needle`, from left to right. `measure(at, span)` makes
/// the span of the occurrence at `at` larger and appends what replaces it to the output; false
/// leaves that occurrence alone. Most texts hold no occurrence and are only read. Returns false if
/// the text would get too long.
template <class tMeasure>
bool replaceAround(tString& text, std::string_view needle, tMeasure measure) {
  std::size_t at = findText(text, needle);
  if (at == tString::npos) return true;
  tString output;
  output.reserve(std::min(text.size() + text.size() / 64 + 256, tString::maxSize()));
  const std::string_view whole = text;
  std::size_t copied = 0;
  while (at != tString::npos) {
    tSpan span = {at, at + needle.size()};
    tString replacement;
    if (measure(whole, copied, span, replacement)) {
      const std::size_t added = span.begin - copied + replacement.size();
      if (added > tString::maxSize() - output.size()) return false;
      output += whole.substr(copied, span.begin - copied);
      output += replacement;
      copied = span.end;
    }
    at = findText(whole, needle, span.end);
  }
  if (whole.size() - copied > tString::maxSize() - output.size()) return false;
  output += whole.substr(copied);
  text = std::move(output);
  return true;
}

bool replaceCopyName(tString& text, const tString& copyName, const tString& sourceName) {
  const tString bare = bareName(copyName);
  const std::string_view directory = copyName.view().substr(0, copyName.size() - bare.size());
  return replaceAround(
      text, bare, [&](std::string_view whole, std::size_t from, tSpan& span, tString& replacement) {
        if (whole.substr(from, span.begin - from).ends_with(directory)) {
          span.begin -= directory.size();
        }
        replacement = sourceName;
        return true;
      });
}

/// A line marker needs a line of its own: where other statements stand on the line of a debugger
/// marker, in front of it or behind, the ";" between becomes a line end. `span` is the debugger
/// marker, in `whole`, of which everything before `from` has been replaced.
void standAlone(std::string_view whole, std::size_t from, tSpan& span, tString& replacement) {
  constexpr std::string_view kBlanks = " \t";
  std::string_view before = whole.substr(from, span.begin - from);
  before = before.substr(0, before.find_last_not_of(kBlanks) + 1);
  if (before.ends_with(';')) {
    span.begin = from + before.size() - 1;
    replacement.insert(0, "\n");
  }
  const std::size_t behind = whole.find_first_not_of(kBlanks, span.end);
  if (behind == std::string_view::npos || whole[behind] != ';') return;
  const std::size_t next = std::min(whole.find_first_not_of(kBlanks, behind + 1), whole.size());
  if (next < whole.size() && whole[next] != '\r' && whole[next] != '\n') replacement += '\n';
  span.end = next;
}

bool replaceIgnoreMarkers(tString& text, const tString& sourceName) {
  return replaceAround(
      text, kIgnoreMarker,
      [&](std::string_view whole, std::size_t from, tSpan& span, tString& replacement) {
        replacement = tString::format("#line 0 \"%s\"", sourceName.c_str());
        standAlone(whole, from, span, replacement);
        return true;
      });
}

/// Reads digits between blanks up to ")", from `at` on. Returns the index behind the ")", or npos
/// when there is anything else. A number that does not fit saturates.
std::size_t readLineNumber(std::string_view text, std::size_t at, std::int32_t& line) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  bool digits = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c == ' ') continue;
    if (c == ')' && digits) {
      line = static_cast<std::int32_t>(value);
      return at + 1;
    }
    if (c < '0' || c > '9') break;
    value = std::min(value * 10 + (c - '0'), kMost);
    digits = true;
  }
  return tString::npos;
}

bool replaceSynchronizeMarkers(tString& text, const tString& sourceName) {
  return replaceAround(
      text, kSynchronizeMarker,
      [&](std::string_view whole, std::size_t from, tSpan& span, tString& replacement) {
        std::int32_t line = 0;
        const std::size_t end = readLineNumber(whole, span.end, line);
        if (end == tString::npos) return false;
        span.end = end;
        replacement = tString::format("#line %d \"%s\"", line, sourceName.c_str());
        standAlone(whole, from, span, replacement);
        return true;
      });
}

/// The name in the line marker whose "#line " is at `marker`; empty if it is none.
std::string_view nameInMarker(std::string_view whole, const tSpan& marker) {
  const std::size_t begin = whole.rfind('\n', marker.begin) + 1;
  if (whole.find_first_not_of(" \t", begin) != marker.begin) return {};
  std::string_view rest = whole.substr(marker.end);
  rest = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(rest.find_first_not_of("0123456789"), rest.size()));
  const std::size_t quote = rest.rfind('"');
  if (!rest.starts_with(" \"") || quote < 2) return {};
  return rest.substr(2, quote - 2);
}

bool replacePrefixes(tString& text, const std::vector<tPrefix>& prefixes) {
  return replaceAround(
      text, "#line ",
      [&](std::string_view whole, std::size_t /*from*/, tSpan& span, tString& replacement) {
        const std::string_view name = nameInMarker(whole, span);
        const auto fits = [name](const tPrefix& prefix) {
          return name.starts_with(prefix.from.view());
        };
        const auto prefix = std::find_if(prefixes.rbegin(), prefixes.rend(), fits);
        if (name.empty() || prefix == prefixes.rend()) return false;
        span.begin = static_cast<std::size_t>(name.data() - whole.data());
        span.end = span.begin + prefix->from.size();
        replacement = prefix->to;
        return true;
      });
}

}  // namespace

bool finishLineMarkers(tString& text, const tString& copyName, const tString& sourceName,
                       const std::vector<tPrefix>& prefixes) {
  return replaceCopyName(text, copyName, sourceName) && replaceIgnoreMarkers(text, sourceName) &&
         replaceSynchronizeMarkers(text, sourceName) &&
         (prefixes.empty() || replacePrefixes(text, prefixes));
}
