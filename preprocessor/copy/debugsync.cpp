#include "preprocessor/copy/debugsync.h"

#include <algorithm>

#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"
#include "preprocessor/copy/textlines.h"

using precomp::isLineEnd;

namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool showsDialog(const tString& line) {
  return line.findNoCase("ACTIVATE()") != tString::npos;
}

bool isContinued(std::string_view line) {
  const std::size_t last = line.find_last_not_of(" \t");
  return last != std::string_view::npos && line[last] == ';';
}

/// The value of an upper-case hexadecimal digit, or -1.
int digitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

bool SynchronizeDebugger(tString& text, std::int32_t line) {
  const tString pinned = tString::format("%s%d)", kSynchronizeMarker.data(), line);
  const std::size_t most = tString::maxSize();
  tString output;
  output.reserve(std::min(text.size() + text.size() / 2, most));
  std::string_view rest = text;
  bool continues = false;
  for (std::size_t end; (end = rest.find(kLineEnd)) != std::string_view::npos;) {
    const std::string_view statement = rest.substr(0, end);
    const std::size_t longest = std::max(pinned.size(), kIgnoreMarker.size());
    if (longest + end + 2 * kLineEnd.size() > most - output.size()) return false;
    if (!continues) {
      output += showsDialog(tString::borrow(statement)) ? pinned.view() : kIgnoreMarker;
      output += kLineEnd;
    }
    output += rest.substr(0, end + kLineEnd.size());
    rest.remove_prefix(end + kLineEnd.size());
    continues = isContinued(statement);
  }
  text = std::move(output);
  return true;
}

tString HexToStr(std::string_view hexText) {
  tString bytes;
  bytes.reserve(hexText.size() / 2 + 2);
  for (; hexText.size() >= 2; hexText.remove_prefix(2)) {
    if (isLineEnd(hexText[0]) || isLineEnd(hexText[1])) {
      bytes += hexText.substr(0, 2);
      continue;
    }
    const int high = digitValue(hexText[0]);
    const int low = digitValue(hexText[1]);
    if (high < 0 || low < 0) return tString();
    bytes += static_cast<char>(16 * high + low);
  }
  // Half a pair: a line end is kept, half a byte is no encoding.
  if (!hexText.empty() && !isLineEnd(hexText[0])) return tString();
  bytes += hexText;
  return bytes;
}

std::int32_t CalcCurLine(std::string_view text, std::ptrdiff_t position) {
  if (position < 0) return 0;
  text = text.substr(0, static_cast<std::size_t>(position) + 1);
  return static_cast<std::int32_t>(std::count(text.begin(), text.end(), '\n'));
}
