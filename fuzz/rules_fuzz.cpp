// Rules applied to statements. What the engine saves itself must not show: an observer, the way
// through scanner and grammar, and a session that has worked before give the same as a plain one.
//
// The input is the text of a header and, behind the first "@@@", the statements.

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "korelpre/korelpre.h"
#include "korelpre/rules/ruleobserver.h"
#include "lib_base/diskman.h"
#include "tests/support/memorydisk.h"

using namespace precomp;

namespace {

constexpr std::string_view kSeparator = "@@@";

// Much more than what a statement may grow to before it is an error, and the blanks around it.
constexpr std::size_t kLongestLine = std::size_t{2} << 20;

// What a statement with rules can fail by; everything else is a fault of ours.
constexpr int kErrors[] = {2001, 2002, 2003, 2006, 2009, 2011, 2012, 2013,        2014,
                           2024, 2025, 2026, 2027, 2028, 2029, 2030, 2032,        2033,
                           2051, 2069, 2070, 2078, 2086, 2090, 2091, SSErrorToken};

struct tSources {
  explicit tSources(std::string_view input) {
    const std::string_view header = input.substr(0, input.find(kSeparator));
    disk.put("std.ch", "");
    disk.put("rules.ch", header);
    main = "#include \"rules.ch\"\n";
    if (header.size() < input.size()) main += input.substr(header.size() + kSeparator.size());
  }

  tDiskManMemory disk;
  std::string main;
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

struct tResult {
  std::string text;
  std::string error;
  int code = 0;
};

bool isExpected(int code) {
  for (const int expected : kErrors) {
    if (code == expected) return true;
  }
  return false;
}

tResult preprocess(KorelPre16& session, const tSources& sources) {
  tResult result;
  tString output;
  try {
    int depth = 0;
    session.compileStr("main.prw", sources.main, output);
    session.processLines(output, depth);
  } catch (const SSException& failure) {
    result.code = static_cast<int>(failure.errorId());
    result.error = tString::format("%d %d %s\n", session.errLine(), result.code, failure.message());
    require(isExpected(result.code), "errors are those of statements and directives");
    require(session.errLine() >= 1, "an error has a line");
  }
  result.text = output.view();
  return result;
}

tResult preprocess(tSources& sources, bool plainLines, tRuleObserver* observer) {
  KorelPre16 session(sources.disk);
  session.setPlainLines(plainLines);
  session.setRuleObserver(observer);
  return preprocess(session, sources);
}

void requireSame(const tResult& left, const tResult& right, const char* property) {
  requireEqual(left.error, right.error, property);
  requireEqual(left.text, right.text, property);
}

void checkLines(std::string_view text) {
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    require(line.size() <= kLongestLine, "no line is longer than a statement may grow");
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const tSilence silence;
  tSources sources(tByteReader(bytes, size).rest());
  KorelPre16 session(sources.disk);
  const tResult plain = preprocess(session, sources);
  checkLines(plain.text);
  session.clear();
  requireSame(plain, preprocess(session, sources), "a session does not remember the last one");
  tWatcher watcher;
  requireSame(plain, preprocess(sources, true, &watcher), "an observer changes nothing");
  tWatcher fullWatcher;
  requireSame(plain, preprocess(sources, false, &fullWatcher),
              "plain and full lines give the same");
  return 0;
}
