// The source converters. A converted program has the lines of the program, but for those that open
// a block without naming a variable; a converted page has those of the page, and one more when the
// last is a directive's. A page without blocks is nothing but its text. And a run over the page
// ends with one of its results and leaves no file behind.
//
// The first byte of the input chooses the converter and its options; the source follows.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "lib_base/misc.h"
#include "preprocessor/convert/inlineblock.h"
#include "preprocessor/convert/page.h"
#include "tests/preprocessor/testrun.h"

namespace {

enum eOption : unsigned { kBlocks = 1, kDebugInfo = 2, kSend = 4, kRun = 8 };

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    lines.push_back(text.substr(0, text.find_first_of("\r\n")));
    text.remove_prefix(lines.back().size());
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(text.size(), 1));
  }
  return lines;
}

/// The lines that a conversion keeps.
std::size_t keptLines(const std::vector<std::string_view>& lines) {
  constexpr std::string_view kBegin = "BEGINCONTENT";
  std::size_t kept = 0;
  bool inside = false;
  for (const std::string_view line : lines) {
    const std::string_view statement = trimmed(line);
    const bool opens = !inside && startsWithNoCase(statement, kBegin);
    std::string rest(opens ? trimmed(statement.substr(kBegin.size())) : "");
    rest.erase(std::remove(rest.begin(), rest.end(), '\t'), rest.end());
    const bool names = startsWithNoCase(rest, "VAR");
    if (inside && startsWithNoCase(statement, "ENDCONTENT")) inside = false;
    if (names) inside = true;
    if (!opens || names) ++kept;
  }
  return kept;
}

void checkBlocks(std::string_view source) {
  tString text(source);
  if (BCParse(text) != eConversion::kDone) return requireEqual(text, source, "text left alone");
  require(linesOf(text).size() == keptLines(linesOf(source)), "lines of a program are kept");
  require(text.view().find('\r') == std::string_view::npos, "line ends are made alike");
}

/// The text that the code of a page without blocks gives.
std::string textOf(std::string_view code) {
  std::string text;
  while (!code.empty()) {
    std::size_t size = 1;
    if (code[0] == '"' || code[0] == '\'') {
      size = code.find(code[0], 1);
      require(size != std::string_view::npos, "literals are closed");
      text += code.substr(1, size++ - 1);
    } else if (code.starts_with("Chr(1")) {
      text += code[5] == '0' ? '\n' : '\r';
    }
    code.remove_prefix(size);
  }
  return text;
}

void checkPage(std::string_view source, const tPageForm& form) {
  tString text(source);
  tPageError error;
  const std::vector<std::string_view> lines = linesOf(source);
  if (HTMLParse(text, form, error) != eConversion::kDone) {
    require(error.line >= 1, "an error has a line");
    require(error.line <= static_cast<int>(lines.size()), "the line is one of the page");
    return requireEqual(text, source, "a page with an error stays as it was");
  }
  const std::vector<std::string_view> result = linesOf(text);
  const std::size_t expected = std::max<std::size_t>(lines.size(), 1);
  require(result.size() == expected || result.size() == expected + 1, "lines of a page are kept");
  require(result.back().find("Return ") != std::string_view::npos, "a page ends with a return");
  if (source.find("<%") != std::string_view::npos || form.httpSend || form.debugInfo) return;
  require(result.size() == expected, "text needs no line more");
  constexpr std::string_view kHead = "Function P(); Local __cPage := \"\"";
  requireEqual(textOf(text.view().substr(kHead.size())), source, "text comes through");
}

void checkRun(const char* name, std::string_view source, const tPageForm& form) {
  tSources files;
  files.put(name, source);
  std::vector<std::string> arguments = {std::string("@F") + name};
  if (form.debugInfo) arguments.emplace_back("/KRH_DEBUGINFO");
  if (form.httpSend) arguments.emplace_back("/DHTTPSEND");
  const int result = runOver(files, arguments).result;
  require(result == 0 || result == 1 || result == 15, "a result of the run");
  require(files.count() == (result == 0 ? 2U : 1U), "no other file is left");
  requireEqual(*files.bytes(name), source, "the source is as it was");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  const unsigned options = input.byte();
  const tPageForm form = {tString("P"), (options & kDebugInfo) != 0, (options & kSend) != 0};
  const bool blocks = (options & kBlocks) != 0;
  blocks ? checkBlocks(input.rest()) : checkPage(input.rest(), form);
  if ((options & kRun) != 0) checkRun(blocks ? "a.prw" : "a.krh", input.rest(), form);
  return 0;
}
