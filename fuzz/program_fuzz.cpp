// A program: a main source and headers in memory. What the engine saves itself must not show. An
// observer, the way through scanner and grammar, a session that has worked before, headers that are
// read once or lie in a saved file, and packed files give the same output and the same error as a
// plain session. No file gives more lines than it has.
//
// The first byte of the input chooses the kind of session, see eMode, the second what it is
// compared with. The program follows, as text or as choices of productions.

#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/check.h"
#include "fuzz/program.h"
#include "korelpre/headers/headercache.h"
#include "korelpre/korelpre.h"
#include "korelpre/rules/ruleobserver.h"
#include "korelpre/text/lineends.h"
#include "lib_gzip/zipsource.h"
#include "tests/support/memorydisk.h"

using namespace precomp;

namespace {

enum eMode : unsigned {
  kFromMemory = 1,  // the main source goes through compileStr
  kExtended = 2,    // it is an extended source
  kWithDefine = 4,  // a name is defined by an option
  kGrammar = 8,     // the grammar makes the program
};

enum eVariant : unsigned {
  kFullLines,
  kObserved,
  kFullAndObserved,
  kOnceMore,
  kSharedHeaders,
  kSavedHeader,
  kPacked,
  kVariants,
};

// Much more than what a statement may grow to before it is an error, and the blanks around it.
constexpr std::size_t kLongestLine = std::size_t{2} << 20;

struct tProgram {
  tProgram(unsigned m, tByteReader& input)
      : mode(m),
        name((m & kExtended) != 0 ? "main.zorb" : "main.prw"),
        texts(input, (m & kGrammar) != 0) {
    if (!fromMemory()) disk.put(name, texts.main);
    texts.putHeaders(disk);
  }
  bool fromMemory() const { return (mode & kFromMemory) != 0; }
  bool anyPacked() const {
    for (const std::string& header : texts.headers) {
      if (isZipSource(header)) return true;
    }
    return isZipSource(texts.main);
  }
  /// Replaces the files by packed ones.
  void pack() {
    for (std::string& header : texts.headers) header = packZipSource(header).view();
    texts.putHeaders(disk);
    if (!fromMemory()) disk.put(name, packZipSource(texts.main));
  }

  unsigned mode;
  std::string name;
  tProgramTexts texts;
  tDiskManMemory disk;
};

struct tResult {
  std::string text;
  std::string error;
};

// Looks at everything that an observer is shown.
class tWatcher : public tRuleObserver {
 public:
  void statementBegins(const tTknString& statement, const tString& /*file*/) override {
    require(!inStatement_, "a statement ends before the next begins");
    inStatement_ = true;
    checkSize(statement);
  }
  void ruleTried(const tRuleTrial& trial) override {
    require(trial.score >= 0, "a score is no negative number");
    require(trial.start >= -1 && trial.start < trial.statement.count(), "rules start at a token");
    require((trial.start == -1) == trial.rule.isCmd(), "a command takes a whole statement");
    require(trial.score > 0 || trial.failedToken < trial.statement.count(),
            "a match fails at a token");
    if (trial.score > 0) matched_ = true;
  }
  void ruleMatched(const tBaseXChg& rule, int /*start*/, const tTknString& statement) override {
    require(matched_, "only a rule that was tried matches");
    matched_ = false;
    for (const tCapture& capture : capturesOf(rule, statement)) {
      for (const tString& text : capture.texts) {
        require(text.size() <= kLongestLine, "a capture is a part of the statement");
      }
    }
  }
  void ruleApplied(const tBaseXChg& rule, int /*start*/, const tTknString& statement) override {
    tString listing;
    rule.print(&listing);
    require(listing.view().ends_with(" \n "), "a listing ends as all do");
    checkSize(statement);
    require(++applied_ <= 100 + 1, "a statement is rewritten a hundred times at most");
  }
  void statementEnds(const tTknString& /*statement*/) override {
    inStatement_ = matched_ = false;
    applied_ = 0;
  }

 private:
  static void checkSize(const tTknString& statement) {
    for (int i = 0; i < statement.count(); ++i) {
      require(statement.tokens().get(i) != nullptr, "a statement has no holes");
    }
  }

  bool inStatement_ = false;
  bool matched_ = false;
  int applied_ = 0;
};

void compileAndWrite(KorelPre16& session, const tProgram& program, tString& output,
                     tString& error) {
  try {
    int depth = 0;
    session.compileStr(program.name.c_str(), program.texts.main, output);
    session.processLines(output, depth);
  } catch (const SSException& failure) {
    error = tString::format("%d %s\n", session.errLine(), failure.message());
    // 0: no line of the main source, as for what the standard header says or what is left open.
    require(session.errLine() >= 0, "a line is no negative number");
  }
}

tResult preprocess(KorelPre16& session, const tProgram& program) {
  tAutoArray<tString> options;
  if ((program.mode & kWithDefine) != 0) options.add(new tString("-DOne=1 + Two"));
  if (!program.fromMemory()) options.add(new tString("-F" + program.name));
  const tSilence silence;
  session.Init(options, 1);
  tString output;
  tString error;
  if (program.fromMemory()) {
    compileAndWrite(session, program, output, error);
  } else {
    session.doIt(output, error);
  }
  require(error.empty() || error.view().ends_with('\n'), "no invariant is broken");
  return {std::string(output.view()), std::string(error.view())};
}

tResult preprocess(tProgram& program, bool plainLines, tRuleObserver* observer,
                   tHeaderCache* headers = nullptr) {
  KorelPre16 session(program.disk);
  session.setPlainLines(plainLines);
  session.setRuleObserver(observer);
  session.setHeaderCache(headers);
  return preprocess(session, program);
}

void requireSame(const tResult& left, const tResult& right, const char* property) {
  requireEqual(left.error, right.error, property);
  requireEqual(left.text, right.text, property);
}

void compareOnceMore(const tResult& plain, const tProgram& program) {
  tDiskManMemory disk = program.disk;
  KorelPre16 session(disk);
  for (int i = 0; i < 2; ++i) {
    requireSame(plain, preprocess(session, program), "a session does not remember the last one");
    session.clear();
  }
}

void compareWithHeaders(const tResult& plain, tProgram& program, bool saved) {
  for (int i = 0; i < 2; ++i) {
    tHeaderCache headers(saved ? tString("kept") : tString());
    for (int k = 0; k < 2; ++k) {
      requireSame(plain, preprocess(program, true, nullptr, &headers),
                  "headers that are read once change nothing");
    }
  }
}

void compare(const tResult& plain, tProgram& program, unsigned variant) {
  tWatcher watcher;
  switch (variant % kVariants) {
    case kFullLines:
      return requireSame(plain, preprocess(program, false, nullptr), "full lines change nothing");
    case kObserved:
      return requireSame(plain, preprocess(program, true, &watcher), "observers change nothing");
    case kFullAndObserved:
      return requireSame(plain, preprocess(program, false, &watcher), "both change nothing");
    case kOnceMore:
      return compareOnceMore(plain, program);
    case kSharedHeaders:
    case kSavedHeader:
      return compareWithHeaders(plain, program, variant % kVariants == kSavedHeader);
    default:
      if (program.anyPacked()) return;
      program.pack();
      requireSame(plain, preprocess(program, true, nullptr), "packed files change nothing");
  }
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
  for (const std::string_view header : tProgramTexts::kHeaders) {
    if (marker.starts_with("#line 1 \"") && marker.ends_with(std::string(header) + "\"")) {
      return lineCount(*disk.bytes(header));
    }
  }
  return 0;
}

void checkLines(const tProgram& program, const tResult& result) {
  std::size_t allowed = lineCount(program.texts.main);
  for (std::string_view rest = result.text; !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    require(line.size() <= kLongestLine, "no line is longer than a statement may grow");
    if (line.starts_with("#line ")) allowed += 1 + linesOpenedBy(line, program.disk);
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  }
  const bool counts = result.error.empty() && !program.anyPacked();
  require(!counts || lineCount(result.text) <= allowed, "a file gives no more lines than it has");
}

void checkLineEnds(std::string_view text) {
  std::string normal;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool ends = text[i] == '\r' || text[i] == '\n';
    ends ? normal.append("\r\n") : normal += text[i];
    if (text[i] == '\r' && text.substr(i + 1, 1) == "\n") ++i;
  }
  require(hasNormalLineEnds(text) == (text == normal), "line ends are judged right");
  tString given(text);
  normaliseLineEnds(given);
  requireEqual(given, normal, "line ends become normal");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  const unsigned mode = input.byte();
  const unsigned variant = input.byte();
  tProgram program(mode, input);
  checkLineEnds(program.texts.main);
  const tResult plain = preprocess(program, true, nullptr);
  checkLines(program, plain);
  compare(plain, program, variant);
  return 0;
}
