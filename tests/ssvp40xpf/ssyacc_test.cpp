#include "ssvp40xpf/ssyacc.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/samples.h"
#include "tests/ssvp40xpf/scanning.h"

namespace {

using samples::raised;

const SSLexTable& lexTable() {
  static const tableimage::tImage image = samples::lexImage();
  static const SSLexTable loaded(image.data(), "sample");
  return loaded;
}

SSYaccTable tableOf(const tableimage::tImage& image) {
  return SSYaccTable(image.data(), tableimage::bytes(image), "sample");
}

const SSYaccTable& expressions() {
  static const SSYaccTable loaded = tableOf(samples::expressionImage());
  return loaded;
}

const SSYaccTable& lines() {
  static const SSYaccTable loaded = tableOf(samples::linesImage());
  return loaded;
}

class tElement : public SSYaccStackElement {
 public:
  tElement() { ++alive; }
  ~tElement() override { --alive; }
  void deleteInstr() override { taken += lexeme() != nullptr ? lexeme()->text() : "-"; }

  std::string value;
  static inline int alive = 0;
  static inline std::string taken;
};

/// Writes what it reduces in prefix form.
class tParser : public SSYacc {
 public:
  tParser(const char* text, const SSYaccTable& by)
      : consumer_(text), scanner_(consumer_, lexTable()) {
    setLex(scanner_);
    setTable(by);
    tElement::taken.clear();
  }

  using SSYacc::errorPanic;
  using SSYacc::errorToken;

  SSYaccStackElement* stackElement() override { return new tElement; }
  SSYaccStackElement* reduce(unsigned production, unsigned size) override {
    if (onReduce) onReduce(production);
    if (size == 1 && elementFromProduction(0)->lexeme() == nullptr) {
      elementFromProduction(0)->refInc();
      return elementFromProduction(0);
    }
    auto* const made = new tElement;
    made->value = std::to_string(production) + "[";
    for (unsigned i = 0; i < size; ++i) made->value += part(i);
    made->value += "]";
    return made;
  }
  SSLexLexeme* nextLexeme() override { return onNext ? onNext() : SSYacc::nextLexeme(); }
  int error(unsigned state, SSLexLexeme& at) override {
    return onError ? onError(state, at) : SSYacc::error(state, at);
  }
  void larLookahead(SSLexLexeme& lexeme) override { offered += lexeme.text(); }
  void ClearprintCmdList() override {
    if (!keepsStack) return;
    for (unsigned depth = 0; elementCount() > depth; ++depth) {
      kept.push_front(SSRef<SSYaccStackElement>::share(elementFromStack(depth)));
    }
  }

  std::string result() const { return static_cast<tElement*>(lastElement())->value; }
  /// Puts back what a syntax error took off the stack.
  void restoreStack() {
    for (SSRef<SSYaccStackElement>& element : kept) pushStackElement(element.release());
    kept.clear();
  }
  unsigned elementCount() {
    unsigned count = 0;
    while (raised([&] { elementFromStack(count); }) == "none") ++count;
    return count;
  }

  /// Answers errors by the error token, with the stack as it was.
  void recoverByErrorToken() {
    keepsStack = true;
    onError = [this](unsigned, SSLexLexeme&) {
      restoreStack();
      return errorToken();
    };
  }

  std::function<void(unsigned)> onReduce;
  std::function<SSLexLexeme*()> onNext;
  std::function<int(unsigned, SSLexLexeme&)> onError;
  std::string offered;
  std::deque<SSRef<SSYaccStackElement>> kept;
  bool keepsStack = false;

 private:
  std::string part(long index) {
    const auto* const element = static_cast<tElement*>(elementFromProduction(index));
    return element->lexeme() != nullptr ? scanning::textOf(*element->lexeme()) : element->value;
  }

  SSLexStringConsumer consumer_;
  SSLex scanner_;
};

TEST(Parser, ReducesInOrder) {
  tParser parser("a + b*(c+d)", expressions());
  EXPECT_EQ(parser.parse(), 0);
  EXPECT_EQ(parser.result(), "1[6[a]+3[6[b]*5[(1[6[c]+6[d]])]]]");
  EXPECT_FALSE(parser.errorMet());
  EXPECT_EQ(parser.shiftedSinceError(), 9u);
  EXPECT_EQ(raised([&] { parser.parse(); }), "14 SSYacc0103e: Attempted read past eof");
}

TEST(Parser, EndsOnAbortAndOnMissingElements) {
  tParser aborting("a+b", expressions());
  aborting.onReduce = [&](unsigned) { aborting.setAbort(); };
  EXPECT_EQ(aborting.parse(), 1);
  EXPECT_FALSE(aborting.errorMet());
  SSLexStringConsumer consumer("a");
  SSLex lex(consumer, lexTable());
  SSYacc handled(lex, expressions());
  handled.setReduceHandler(6, [](SSYacc&, unsigned) { return nullptr; });
  EXPECT_EQ(handled.parse(), 1);
}

TEST(Parser, EmptiesItsStackOnErrorsWithoutReleasingIt) {
  {
    tParser parser("a + ( b c", expressions());
    std::string met;
    int alive = 0;
    parser.onError = [&](unsigned state, SSLexLexeme& at) {
      alive = tElement::alive;
      met = std::string(at.text()) + (state == parser.currentState() ? "" : "?");
      EXPECT_EQ(parser.elementCount(), 0u);
      return 1;
    };
    EXPECT_EQ(parser.parse(), 1);
    EXPECT_EQ(met, "c");
    EXPECT_EQ(tElement::taken, "b(+--");  // the top first; the rest have no lexeme
    EXPECT_EQ(alive, 5);
    EXPECT_EQ(tElement::alive, 5);
    parser.reset();
    EXPECT_EQ(tElement::alive, 1);
  }
  EXPECT_EQ(tElement::alive, 0);
}

TEST(Parser, RecoversByTheErrorToken) {
  tParser parser("a; b ( ) ; c;", lines());
  parser.recoverByErrorToken();
  EXPECT_EQ(parser.parse(), 1);
  EXPECT_EQ(parser.result(), "1[1[1[2[]3[a;]]4[%error;]]3[c;]]");
  EXPECT_EQ(parser.shiftedSinceError(), 3u);  // the ";" behind the error token, "c", ";"

  tParser unrestored("a; b ( ) ; c;", lines());
  EXPECT_EQ(raised([&] { unrestored.parse(); }),
            "16 SSYacc0105e: Error token failed, no valid token");

  tParser ending("a; b (", lines());
  ending.recoverByErrorToken();
  EXPECT_EQ(raised([&] { ending.parse(); }), "17 SSYacc0106e: Error token failed, eof");
}

TEST(Parser, ResumesWithoutErrorTokenWhereAStateSaysSo) {
  for (const std::uint32_t flag : {sstable::kRowAcceptAny, sstable::kRowScanOnError}) {
    const SSYaccTable table = tableOf(samples::linesImage(flag));
    tParser parser("a ( ; b;", table);
    parser.recoverByErrorToken();
    EXPECT_EQ(parser.parse(), 1);
    EXPECT_EQ(parser.result(), "1[1[2[]3[a;]]3[b;]]");
  }
}

TEST(Parser, RecoversByPanic) {
  const unsigned wanted[] = {samples::kClose};
  tParser parser("( a b * )", expressions());
  parser.keepsStack = true;
  parser.onError = [&](unsigned, SSLexLexeme&) {
    parser.restoreStack();
    return parser.errorPanic(wanted, 1);
  };
  EXPECT_EQ(parser.parse(), 1);
  EXPECT_EQ(parser.result(), "5[(6[a])]");

  tParser unstacked("( a b )", expressions());
  unstacked.onError = [&](unsigned, SSLexLexeme&) { return unstacked.errorPanic(wanted, 1); };
  EXPECT_EQ(raised([&] { unstacked.parse(); }),
            "15 SSYacc0104e: Error panic failed, no valid token");
  tParser ending("( a b", expressions());
  ending.onError = [&](unsigned, SSLexLexeme&) { return ending.errorPanic(wanted, 1); };
  EXPECT_EQ(raised([&] { ending.parse(); }), "15 SSYacc0104e: Error panic failed, no valid token");
}

TEST(Parser, ChecksIndicesAndStates) {
  tParser parser("a", expressions());
  std::string found;
  parser.onReduce = [&](unsigned) {
    if (!found.empty()) return;
    found = raised([&] { parser.elementFromProduction(1); }) + "|" +
            raised([&] { parser.elementFromProduction(-1); }) + "|" +
            raised([&] { parser.elementFromStack(2); });
  };
  EXPECT_EQ(parser.parse(), 0);
  EXPECT_EQ(found,
            "19 SSYacc0108e: Invalid index on elementFromProduction, 1|"
            "19 SSYacc0108e: Invalid index on elementFromProduction, -1|"
            "11 SSLifo0003e: Invalid index");
  unsigned count = 0;
  const std::unique_ptr<unsigned[]> tokens(parser.validLookaheads(0, count));
  EXPECT_EQ(std::vector<unsigned>(tokens.get(), tokens.get() + count),
            (std::vector<unsigned>{samples::kName, samples::kOpen}));
  EXPECT_EQ(raised([&] { parser.validLookaheads(999, count); }),
            "35 SSYacc0114e: Invalid state specified, 999");
  auto* const stray = new tElement;
  stray->setState(999);
  EXPECT_EQ(raised([&] { parser.pushStackElement(stray); }),
            "35 SSYacc0114e: Invalid state specified, 999");
}

TEST(Parser, ReportsWhatIsMissing) {
  SSYacc bare;
  EXPECT_EQ(raised([&] { bare.parse(); }), "20 SSYacc0109e: setTable missing, required");
  bare.setTable(lines());
  EXPECT_EQ(raised([&] { bare.parse(); }), "21 SSYacc0110e: setLex missing, required");
  SSLexStringConsumer consumer("a");
  SSLex lex(consumer, lexTable());
  SSYacc unhandled(lex, expressions());
  EXPECT_EQ(raised([&] { unhandled.parse(); }), "42 SSYaccEv0003e: Must override reduce function");
  EXPECT_EQ(raised([] { SSYacc("/no/such/table"); }),
            "12 SSYacc0101e: Open file failed, /no/such/table");
  SSLexStringConsumer bad("?");
  SSLex badLex(bad, lexTable());
  SSYacc passing(badLex, expressions());
  EXPECT_EQ(raised([&] { passing.parse(); }), "5 SSLex0105e: Invalid token, Line 1, Offset 1, ?");
}

/// 1: line = (this many lines), which the automaton reduces again and again; 2: line = name.
tableimage::tImage endlessImage(std::uint32_t parts) {
  using namespace tableimage;
  const std::vector<tSymbol> atEnd = {sstable::kTokenEof};
  return parserImage({tRow{{{samples::kName, shift(1)}}, {{samples::kLine, 2}}}, reducing(2, atEnd),
                      reducing(1, atEnd)},
                     {{0, 1}, {samples::kLine, parts}, {samples::kLine, 1}});
}

TEST(Parser, StopsReductionsThatNeverEnd) {
  const SSYaccTable cyclic = tableOf(endlessImage(1));
  tParser parser("a", cyclic);
  EXPECT_EQ(raised([&] { parser.parse(); }), "13 SSYacc0102e: Parse failed, invalid table");
  const SSYaccTable growing = tableOf(endlessImage(0));  // each round leaves one more element
  tParser endless("a", growing);
  EXPECT_NE(raised([&] { endless.parse(); }), "none");
}

}  // namespace
