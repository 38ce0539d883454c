// Rules as a whole; what single ones make of statements stands in the corpus.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "korelpre/text/tokenise.h"
#include "tests/support/preprocess.h"

namespace {

std::string rewrite(const std::string& rules, const std::string& statement) {
  const tPreprocessed result = preprocess(rules + "\n" + statement);
  if (!result.error.empty()) return result.error;
  const auto lines = static_cast<std::size_t>(std::count(rules.begin(), rules.end(), '\n')) + 1;
  return lines < result.text.size() ? result.text.substr(lines) : "";
}

TEST(Rules, WithoutSoundGroupsOrAFirstWordAreSyntaxErrors) {
  for (const char* rule : {"[A] B => c", "<x> A => c", "A [B => c", "A B] => c", "A => [b",
                           "A => b]", "[[A]] => c", "A <x => c", "A B"}) {
    for (const char* directive : {"#command ", "#xtranslate "}) {
      const std::string source = "\n" + std::string(directive) + rule + "\nA B";
      EXPECT_EQ(preprocess(source).error, "main.prw(2) Error C2001  Syntax error:\n") << source;
    }
  }
  const std::string nested = std::string(300, '[') + "B" + std::string(300, ']');
  EXPECT_EQ(rewrite("#command A " + nested + " => c", "A B"),
            "main.prw(1) Error C2001  Syntax error:\n");
}

// Applies rules as the look-up of tables tells, always from the first token on.
std::string rewriteFromTheStart(precomp::KorelPreYaccClass& session, precomp::tTknString& t) {
  using precomp::tXChgArray;
  const auto apply = [&](tXChgArray& table, int at, int start, unsigned char exact) {
    int first = 0;
    int last = 0;
    const tString word = t.getToken(at);
    return !word.empty() && table.Find(word, first, last, exact) != 0 &&
           table.replace(&session, first, last, start, &t);
  };
  const auto applyAt = [&](int at) {
    int first = 0;
    int last = 0;
    if (apply(*session.defines(), at, at, 0)) return true;
    const bool found = session.translates()->Find(t.getToken(at), first, last, 0) != 0;
    return apply(*session.translates(), at, at, found ? 0 : 1);
  };
  t.startSteps();
  for (int rewrites = 0; rewrites <= 100; ++rewrites) {
    bool applied = false;
    for (int at = 0; at < t.count() && !applied; ++at) applied = applyAt(at);
    if (!applied) applied = apply(*session.commands(), 0, -1, 1);
    if (!applied) applied = apply(*session.commands(), 0, -1, 0);
    if (applied) continue;
    tString text;
    t.appendText(text);
    return std::string(text.view());
  }
  return "circular";
}

TEST(Rules, GiveWhatLookingFromTheStartGives) {
  const char* const kRules =
      "#define A B C\n#define F(x) (x A)\n#define Q R\n"
      "#translate B <x> D => E <x>\n#xtranslate E <*x*> Q => Q <x>\n#translate (R) => A\n"
      "#translate C E => D\n#translate LONGWORD [B] => A Q\n#xtranslate R <x>, => <x> D\n"
      "#command B <x> => C <x>\n#command LONGWORD <x,...> => x <x>\n#xcommand long <x> => R\n";
  const std::vector<std::string> kWords = {"A", "B", "C", "D",    "E", "F", "Q",
                                           "R", "(", ")", "long", ",", "x", "+"};
  std::mt19937 random(7);
  int rewritten = 0;
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    for (std::size_t left = 1 + random() % 9; left > 0; --left) {
      text += kWords[random() % kWords.size()] + (left > 1 ? " " : "");
    }
    const std::string quick = rewrite(kRules, text);
    tMemoryProcessor processor;
    processor.run("rules", kRules);
    precomp::tTknString statement(1);
    const std::string line = text + "\r\n";
    precomp::tokenisePlain(line.data(), line.data() + line.size(), 1, statement);
    const std::string slow = rewriteFromTheStart(*processor, statement);
    if (slow == "circular") {
      EXPECT_NE(quick.find("C2078"), std::string::npos) << text;
    } else if (quick.find("C2002") == std::string::npos) {  // brackets that nest
      EXPECT_EQ(quick, slow) << text;
      if (slow != text) ++rewritten;
    }
  }
  EXPECT_GT(rewritten, 500);
}

}  // namespace
