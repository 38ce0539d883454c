// The engine's matcher against the naive one: over all small patterns and statements, and over
// random larger ones. KRPRE_EXHAUSTIVE=1 in the environment runs all pairs of the first instead of
// a sample, and KRPRE_SEED=N other random ones.

#include "tests/korelpre/naivematch.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <sstream>

#include "korelpre/korelprecls.h"
#include "korelpre/rules/chainbuilder.h"
#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/restrictmarker.h"
#include "korelpre/text/tokenkinds.h"

using namespace precomp;

namespace {

std::uint32_t kindOf(const std::string& text) {
  if (text == ".") return kKindDot;
  if (text == ",") return kKindComma;
  if (text == "(") return kKindParenOpen;
  if (text == ")") return kKindParenClose;
  if (text == ";") return kKindSemicolon;
  if (text == "[") return kKindBracketOpen;
  if (text == "]") return kKindBracketClose;
  if (text == "+") return kKindPlus;
  return kKindIdentifier;
}

tSpcString token(const std::string& text) {
  tSpcString made{tString(text.c_str())};
  made.setKind(kindOf(text));
  return made;
}

tMatchMarker* engineMarker(char type) {
  const tSpcString name = token(std::string(1, type));
  switch (type) {
    case 'r':
      return new tMatchMarker(name);
    case 'e':
      return new tMatchMarkerExt(name);
    case 'l':
      return new tMatchMarkerList(name);
    case '*':
      return new tMatchMarkerWild(name);
    default: {
      auto* marker = new tMatchMarkerRestrict(name);
      marker->addWord(token("A"), true);
      marker->addWord(token("B"), true);
      marker->addWord(token("C"), false);
      return marker;
    }
  }
}

std::unique_ptr<tBaseXChg> engineRule(KorelPreYaccClass& processor, const std::string& text,
                                      bool command, bool abbreviate) {
  tChainBuilder builder(tChainBuilder::kPattern);
  std::istringstream stream(text);
  for (std::string piece; stream >> piece;) {
    if (piece[0] == '<') {
      builder.add(engineMarker(piece[1]));
    } else {
      builder.addToken(token(piece));
    }
  }
  const tString key = builder.head()->token();
  const tWordRule wordRule{abbreviate, false};
  if (command) {
    return std::make_unique<tCommand>(&processor, wordRule, builder.release(), nullptr, key);
  }
  return std::make_unique<tTranslate>(&processor, wordRule, builder.release(), nullptr, key);
}

std::string engineCaptures(const tMatchMarker* head) {
  std::ostringstream text;
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (marker->kind() != kMatchIdentifier && marker->kind() != kMatchMarkerOpt) {
      text << marker->token().view();
      const bool current = marker->isMatchOk() && marker->infos().empty();
      if (current) text << '(' << marker->first() << ',' << marker->last() << ')';
      for (const tMatchInfo& info : marker->infos()) {
        text << '{' << info.first << ',' << info.last << '}';
      }
      text << ' ';
    }
    for (int i = 0; i < marker->groups().count(); ++i) {
      text << engineCaptures(marker->groups()[i]);
    }
  }
  return text.str();
}

struct tStatement {
  std::vector<std::string> tokens;
  std::unique_ptr<tTknString> engine;

  explicit tStatement(const std::vector<std::string>& texts)
      : tokens(texts), engine(std::make_unique<tTknString>()) {
    for (const std::string& text : texts) {
      engine->tokens().add(new tSpcString(token(text)));
      engine->tokens().last()->setSpacing(tString(" "));
    }
  }
  std::string text() const {
    std::string joined;
    for (const std::string& piece : tokens) joined += piece + ' ';
    return joined;
  }
};

class tComparison {
 public:
  void setPattern(const std::string& text, bool command, bool abbreviate) {
    text_ = text;
    naive_ = naivePattern(text, command, abbreviate);
    rule_ = engineRule(processor_, text, command, abbreviate);
  }

  // Reports the first pairs that differ.
  bool agrees(tStatement& statement, int start) {
    statement.engine->startSteps();
    const int engine = rule_->matchCount(start, statement.engine.get());
    int end = start;
    const int naive = naiveMatch(naive_, statement.tokens, end);
    ++pairs;
    if (naive > 0) ++matches;
    const auto describe = [&] {
      return "pattern " + text_ + (naive_.command ? " (command)" : "") +
             (naive_.abbreviate ? " (abbreviating)" : "") + "\nstatement " + statement.text();
    };
    EXPECT_EQ(engine, naive) << describe();
    if (engine != naive) return false;
    if (engine == 0) return true;
    const int cursor = statement.engine->curTokenIdx();
    const int engineEnd = cursor < 0 ? statement.engine->count() : cursor;
    const std::string taken = engineCaptures(rule_->firstMatch());
    const std::string naiveTaken = naiveCaptures(naive_.chain);
    EXPECT_EQ(engineEnd, end) << describe();
    EXPECT_EQ(taken, naiveTaken) << describe();
    return engineEnd == end && taken == naiveTaken;
  }

  long pairs = 0;
  long matches = 0;

 private:
  KorelPreYaccClass processor_;
  std::string text_;
  tNaivePattern naive_;
  std::unique_ptr<tBaseXChg> rule_;
};

const std::vector<std::string> kElements = {"A", ",", "<r>", "<l>", "<e>", "<s>", "<*>"};
const std::vector<std::string> kTokens = {"K", "A", "B", "C", ",", "+", "(", ")", ";", "."};

// Appends to `patterns` every way to go on from `text` with up to `left` more elements.
void extend(const std::string& text, int left, int open, bool groupEmpty,
            std::vector<std::string>& patterns) {
  if (open == 0) patterns.push_back(text);
  if (open > 0 && !groupEmpty) extend(text + " ]", left, open - 1, false, patterns);
  if (left == 0) return;
  for (const std::string& element : kElements) {
    extend(text + ' ' + element, left - 1, open, false, patterns);
  }
  if (open < 2) extend(text + " [", left, open + 1, true, patterns);
}

std::vector<std::string> smallPatterns(int markers) {
  std::vector<std::string> patterns;
  extend("K", markers - 1, 0, false, patterns);
  return patterns;
}

// Statements that begin with the key, up to `most` tokens.
std::vector<tStatement> smallStatements(std::size_t most) {
  std::vector<std::vector<std::string>> texts = {{"K"}};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (texts[i].size() == most) continue;
    for (const std::string& text : kTokens) {
      std::vector<std::string> longer = texts[i];
      longer.push_back(text);
      texts.push_back(longer);
    }
  }
  std::vector<tStatement> statements;
  for (const auto& text : texts) statements.emplace_back(text);
  return statements;
}

TEST(NaiveMatch, AgreesOverAllSmallPatternsAndStatements) {
  const bool exhaustive = std::getenv("KRPRE_EXHAUSTIVE") != nullptr;
  const std::vector<std::string> patterns = smallPatterns(4);
  std::vector<tStatement> statements = smallStatements(5);
  const std::size_t step = exhaustive ? 1 : 997;
  tComparison comparison;
  std::size_t next = 0;
  for (std::size_t p = 0; p < patterns.size(); ++p) {
    comparison.setPattern(patterns[p], p % 2 == 0, false);
    for (; next < statements.size(); next += step) {
      ASSERT_TRUE(comparison.agrees(statements[next], 0));
    }
    next -= statements.size();
  }
  RecordProperty("pairs", std::to_string(comparison.pairs));
  std::cout << comparison.pairs << " pairs of " << patterns.size() << " patterns and "
            << statements.size() << " statements, " << comparison.matches << " matches\n";
  EXPECT_GT(comparison.matches, comparison.pairs / 200);
}

std::string randomPattern(std::mt19937& random) {
  static const std::vector<std::string> kLarger = {"A",   "B",   "WORDS", ",",   "+",
                                                   "(",   ")",   "<r>",   "<r>", "<l>",
                                                   "<e>", "<s>", "<r>",   "<l>", "<*>"};
  std::string text = "KEYWORD";
  int open = 0;
  bool groupEmpty = false;
  for (std::size_t left = 1 + random() % 10; left > 0;) {
    const auto choice = random() % 10;
    if (choice < 2 && open < 3) {
      text += " [";
      ++open;
      groupEmpty = true;
    } else if (choice < 4 && open > 0 && !groupEmpty) {
      text += " ]";
      --open;
    } else {
      text += ' ' + kLarger[random() % kLarger.size()];
      groupEmpty = false;
      --left;
    }
  }
  while (open-- > 0) text += " ]";
  return text;
}

std::vector<std::string> randomTokens(std::mt19937& random) {
  static const std::vector<std::string> kLarger = {"A", "b", "C", "word", "WORDS", "wordsy",
                                                   "x", "y", ",", "+",    "(",     ")",
                                                   "x", ",", "+", ".",    ";",     "Left"};
  std::vector<std::string> tokens(random() % 3, "x");
  tokens.emplace_back(random() % 2 == 0 ? "keyw" : "Keyword");
  for (std::size_t left = random() % 20; left > 0; --left) {
    tokens.push_back(kLarger[random() % kLarger.size()]);
  }
  return tokens;
}

TEST(NaiveMatch, AgreesOverRandomLargerPatterns) {
  const int patterns = std::getenv("KRPRE_EXHAUSTIVE") != nullptr ? 100000 : 2000;
  const char* seed = std::getenv("KRPRE_SEED");
  std::mt19937 random(seed != nullptr ? std::strtoul(seed, nullptr, 10) : 20240225);
  tComparison comparison;
  for (int i = 0; i < patterns; ++i) {
    comparison.setPattern(randomPattern(random), random() % 2 == 0, random() % 2 == 0);
    for (int j = 0; j < 20; ++j) {
      tStatement statement(randomTokens(random));
      const int start = static_cast<int>(random() % statement.tokens.size());
      ASSERT_TRUE(comparison.agrees(statement, start));
    }
  }
  std::cout << comparison.pairs << " pairs, " << comparison.matches << " matches\n";
  EXPECT_GT(comparison.matches, comparison.pairs / 100);
}

}  // namespace
