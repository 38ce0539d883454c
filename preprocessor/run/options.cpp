#include "preprocessor/run/options.h"

#include "lib_base/misc.h"
#include "preprocessor/run/cachedirectory.h"

namespace {

std::string_view unquoted(std::string_view value) {
  const bool quoted = value.size() >= 2 && value.front() == '"' && value.back() == '"';
  return quoted ? value.substr(1, value.size() - 2) : value;
}

void setIncludePath(std::string_view list, tAutoArray<tString>& directories) {
  directories.Destroy();
  if (!list.empty()) splitAt(list, ';', directories);
}

void readListFile(tDiskMan& disk, std::string_view name, tAutoArray<tString>& files) {
  const auto file = disk.open(tString(name).c_str());
  tString text;
  if (file == nullptr || !file->readAll(text) || text.empty()) return;
  splitAt(text, ';', files);
}

void addSessionOption(std::string_view argument, tAutoArray<tString>& options) {
  if (argument.find(' ') == std::string_view::npos) {
    options.add(new tString(argument));
    return;
  }
  tAutoArray<tString> pieces;
  splitAt(argument, ' ', pieces);
  while (!pieces.empty()) {
    options.add(pieces.takeAt(0));
    options.last()->trim();
  }
}

/// One spelling: the argument begins with it, and `apply` gets the rest.
struct tRule {
  std::string_view start;
  void (*apply)(tDiskMan& disk, std::string_view rest, tRunOptions& options);
};

// The first rule that fits decides, so an argument such as -Ifoo or -TRACE never reaches the
// session.
const tRule kRules[] = {
    {"-I", [](tDiskMan&, std::string_view rest,
              tRunOptions& options) { setIncludePath(unquoted(rest), options.includePath); }},
    {"-T", [](tDiskMan&, std::string_view, tRunOptions& options) { options.trace = true; }},
    {"/DHTTPSEND",
     [](tDiskMan&, std::string_view, tRunOptions& options) { options.httpSend = true; }},
    {"/KRH_DEBUGINFO",
     [](tDiskMan&, std::string_view, tRunOptions& options) { options.pageDebugInfo = true; }},
    {"@F", [](tDiskMan&, std::string_view rest,
              tRunOptions& options) { options.files.add(new tString(unquoted(rest))); }},
    {"@L", [](tDiskMan& disk, std::string_view rest,
              tRunOptions& options) { readListFile(disk, rest, options.files); }},
    {"@I",
     [](tDiskMan&, std::string_view rest, tRunOptions& options) { options.tag = tString(rest); }},
    {"@O", [](tDiskMan&, std::string_view rest,
              tRunOptions& options) { options.outputDirectory = tString(rest); }},
    {"@@DEBUG", [](tDiskMan&, std::string_view, tRunOptions& options) { options.debug = true; }},
    {"@@PRECOMPILED",
     [](tDiskMan&, std::string_view rest, tRunOptions& options) {
       options.cache = rest.starts_with('=') ? tString(rest.substr(1)) : cacheDirectory();
     }},
    {"@@NOCAPTFATAL",
     [](tDiskMan&, std::string_view, tRunOptions& options) { options.captureFatal = false; }},
    {"", [](tDiskMan&, std::string_view rest,
            tRunOptions& options) { addSessionOption(rest, options.sessionOptions); }},
};

void applyArgument(tDiskMan& disk, std::string_view argument, tRunOptions& options) {
  for (const tRule& rule : kRules) {
    if (!argument.starts_with(rule.start)) continue;
    rule.apply(disk, argument.substr(rule.start.size()), options);
    return;
  }
}

}  // namespace

bool isVersionRequest(int count, char* const* vector) {
  return count == 2 && vector != nullptr && vector[1] != nullptr && equalNoCase(vector[1], "-v");
}

bool ParseCommandLine(tDiskMan& disk, int count, char* const* vector, tRunOptions& options) {
  if (count < 1 || vector == nullptr) return false;
  options.debug = false;
  options.captureFatal = true;
  for (int i = 1; i < count; ++i) {
    if (vector[i] != nullptr) applyArgument(disk, vector[i], options);
  }
  return !options.files.empty();
}

void splitKorelc(std::string_view text, std::string_view separators,
                 std::vector<std::string>& pieces) {
  std::string piece;
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted || separators.find(c) == std::string_view::npos) {
      piece += c;
    } else if (!piece.empty()) {
      pieces.push_back(std::move(piece));
      piece.clear();
    }
  }
  if (!piece.empty()) pieces.push_back(std::move(piece));
}

void splitAt(std::string_view text, char separator, tAutoArray<tString>& pieces) {
  for (;;) {
    const std::size_t end = text.find(separator);
    pieces.add(new tString(text.substr(0, end)));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}
