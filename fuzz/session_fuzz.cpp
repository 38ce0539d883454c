// A session over a main source and headers in memory. Plain lines and the way through scanner and
// grammar must give the same, errors included, and no file may give more lines than it has.
//
// The first byte of the input chooses the kind of session, see eMode. Behind it stand the main
// source and, each behind "@@@", the headers a.ch, b.ch and std.ch.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "korelpre/korelpre.h"
#include "lib_base/output.h"
#include "lib_gzip/zipsource.h"
#include "tests/support/memorydisk.h"

namespace {

enum eMode : unsigned {
  kFromMemory = 1,  // the main source goes through compileStr
  kExtended = 2,    // it is an extended source
  kWithDefine = 4,  // a name is defined by an option
};

constexpr std::string_view kSeparator = "@@@";
constexpr std::string_view kHeaders[] = {"a.ch", "b.ch", "std.ch"};

class tPrinted : public tOutputSink {
 public:
  void write(std::string_view written) override { text.append(written); }
  std::string text;
};

/// The files of an input.
struct tSources {
  explicit tSources(tByteReader input) : mode(input.byte()) {
    name = (mode & kExtended) != 0 ? "main.zorb" : "main.prw";
    std::string_view rest = input.rest();
    main = cutPart(rest);
    if ((mode & kFromMemory) == 0) disk.put(name, main);
    for (const std::string_view header : kHeaders) disk.put(header, cutPart(rest));
  }

  unsigned mode;
  std::string name;
  std::string_view main;
  tDiskManMemory disk;
  bool anyPacked = false;

 private:
  std::string_view cutPart(std::string_view& rest) {
    const std::string_view part = rest.substr(0, rest.find(kSeparator));
    anyPacked = anyPacked || isZipSource(part);
    rest.remove_prefix(std::min(part.size() + kSeparator.size(), rest.size()));
    return part;
  }
};

struct tResult {
  std::string text;
  std::string error;
};

void compileAndWrite(precomp::KorelPre16& session, const tSources& sources, tString& output,
                     tString& error) {
  try {
    int depth = 0;
    session.compileStr(sources.name.c_str(), sources.main, output);
    session.processLines(output, depth);
  } catch (const SSException& failure) {
    error = tString::format("%d %s\n", session.errLine(), failure.message());
  }
}

tResult preprocess(tSources& sources, bool plainLines) {
  tAutoArray<tString> options;
  if ((sources.mode & kWithDefine) != 0) options.add(new tString("-DOne=1 + Two"));
  if ((sources.mode & kFromMemory) == 0) options.add(new tString("-F" + sources.name));
  tPrinted printed;
  const tOutputScope scope(printed);
  precomp::KorelPre16 session(sources.disk);
  session.setPlainLines(plainLines);
  session.Init(options, 1);
  tString output;
  tString error;
  if ((sources.mode & kFromMemory) != 0) {
    compileAndWrite(session, sources, output, error);
  } else {
    session.doIt(output, error);
    require(error.view() == printed.text, "the error is what is printed");
  }
  require(error.empty() || error.view().ends_with('\n'), "no invariant is broken");
  return {std::string(output.view()), std::string(error.view())};
}

std::size_t lineCount(std::string_view text) {
  std::size_t lines = 1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n' || (text[i] == '\r' && text.substr(i + 1, 1) != "\n")) ++lines;
  }
  return lines;
}

/// The lines that a file may add to the output whose opening marker this is; 0 for other markers.
std::size_t linesOpenedBy(std::string_view marker, const tDiskManMemory& disk) {
  for (const std::string_view header : kHeaders) {
    const std::string ending = std::string(header) + "\"";
    if (marker.starts_with("#line 1 \"") && marker.ends_with(ending)) {
      return lineCount(*disk.bytes(header));
    }
  }
  return 0;
}

void checkLineCount(const tSources& sources, const std::string& output) {
  std::size_t allowed = lineCount(sources.main);
  for (std::string_view rest = output; !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    if (line.starts_with("#line ")) allowed += 1 + linesOpenedBy(line, sources.disk);
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  }
  require(lineCount(output) <= allowed, "a file gives no more lines than it has");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tSources sources(tByteReader(bytes, size));
  const tResult plain = preprocess(sources, true);
  const tResult full = preprocess(sources, false);
  requireEqual(plain.text, full.text, "plain and full lines give the same output");
  requireEqual(plain.error, full.error, "plain and full lines give the same error");
  if (!sources.anyPacked && plain.error.empty()) checkLineCount(sources, plain.text);
  return 0;
}
