#include "ssvp40xpf/ssyacc.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/scanning.h"

namespace {

using samples::raised;
using scanning::lexTable;

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

enum eAnswer { kOwn, kGiveUp, kErrorToken, kPanic };

/// Writes what it reduces in prefix form. Answers errors in one way, with the stack as it was when
/// it `restores` that.
class tParser : public SSYacc {
 public:
  tParser(const char* text, const SSYaccTable& by, eAnswer answer = kOwn, bool restores = false)
      : consumer_(text), scanner_(consumer_, lexTable()), answer_(answer), restores_(restores) {
    setLex(scanner_);
    setTable(by);
    tElement::taken.clear();
  }

  SSYaccStackElement* stackElement() override { return new tElement; }
  SSYaccStackElement* reduce(unsigned, unsigned size) override {
    if (onReduce) onReduce();
    if (size == 1 && elementFromProduction(0)->lexeme() == nullptr) {
      elementFromProduction(0)->refInc();
      return elementFromProduction(0);
    }
    auto* const made = new tElement;
    made->value = "[";
    for (unsigned i = 0; i < size; ++i) {
      const auto* const part = static_cast<tElement*>(elementFromProduction(i));
      made->value += part->lexeme() != nullptr ? part->lexeme()->text() : part->value;
    }
    made->value += "]";
    return made;
  }
  int error(unsigned state, SSLexLexeme& at) override {
    EXPECT_EQ(state, currentState());
    met = at.text() + (" " + std::to_string(tElement::alive));
    EXPECT_EQ(raised([&] { elementFromStack(0); }), "11 SSLifo0003e: Invalid index");
    for (SSRef<SSYaccStackElement>& element : kept_) pushStackElement(element.release());
    kept_.clear();
    static constexpr unsigned kWanted[] = {samples::kClose};
    if (answer_ == kGiveUp) return 1;
    if (answer_ == kOwn) return SSYacc::error(state, at);
    return answer_ == kPanic ? errorPanic(kWanted, 1) : errorToken();
  }
  void ClearprintCmdList() override {
    if (!restores_) return;
    for (unsigned depth = 0; raised([&] { elementFromStack(depth); }) == "none"; ++depth) {
      kept_.push_front(SSRef<SSYaccStackElement>::share(elementFromStack(depth)));
    }
  }

  std::function<void()> onReduce;
  std::string met;

 private:
  SSLexStringConsumer consumer_;
  SSLex scanner_;
  std::deque<SSRef<SSYaccStackElement>> kept_;
  const eAnswer answer_;
  const bool restores_;
};

TEST(Parser, ReducesAndRecovers) {
  const SSYaccTable any = tableOf(samples::linesImage(sstable::kRowAcceptAny));
  const SSYaccTable scanning = tableOf(samples::linesImage(sstable::kRowScanOnError));
  const struct {
    const char* text;
    const SSYaccTable& by;
    eAnswer answer;
    bool restores;
    unsigned shifted;  // since the last error
    const char* result;
  } kCases[] = {
      {"a + b*(c+d)", expressions(), kOwn, false, 9, "0 [[a]+[[b]*[([[c]+[d]])]]]"},
      {"a; b ( ) ; c;", lines(), kErrorToken, true, 3, "1 [[[[][a;]][%error;]][c;]]"},
      {"a; b ( ) ; c;", lines(), kOwn, false, 3,
       "16 SSYacc0105e: Error token failed, no valid token"},
      {"a; b (", lines(), kErrorToken, true, 3, "17 SSYacc0106e: Error token failed, eof"},
      // Without the error token, where a state says so.
      {"a ( ; b;", any, kErrorToken, true, 3, "1 [[[][a;]][b;]]"},
      {"a ( ; b;", scanning, kErrorToken, true, 3, "1 [[[][a;]][b;]]"},
      {"( a b * )", expressions(), kPanic, true, 1, "1 [([a])]"},
      {"( a b )", expressions(), kPanic, false, 2,
       "15 SSYacc0104e: Error panic failed, no valid token"},
      {"( a b", expressions(), kPanic, false, 2,
       "15 SSYacc0104e: Error panic failed, no valid token"},
  };
  for (const auto& row : kCases) {
    tParser parser(row.text, row.by, row.answer, row.restores);
    std::string result;
    const std::string error = raised([&] {
      result = std::to_string(parser.parse()) + " ";
      result += static_cast<tElement*>(parser.lastElement())->value;
    });
    EXPECT_EQ(error == "none" ? result : error, row.result) << row.text;
    EXPECT_EQ(parser.shiftedSinceError(), row.shifted) << row.text;
    EXPECT_EQ(parser.errorMet(), row.result[0] != '0');
  }
}

TEST(Parser, EndsOnAbortAndOnMissingElements) {
  tParser aborting("a+b", expressions());
  aborting.onReduce = [&] { aborting.setAbort(); };
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
    tParser parser("a + ( b c", expressions(), kGiveUp);
    EXPECT_EQ(parser.parse(), 1);
    EXPECT_EQ(parser.met, "c 5");
    EXPECT_EQ(tElement::taken, "b(+--");  // the top first; the rest have no lexeme
    EXPECT_EQ(tElement::alive, 5);
    parser.reset();
    EXPECT_EQ(tElement::alive, 1);
  }
  EXPECT_EQ(tElement::alive, 0);
}

TEST(Parser, TellsWhatIsMissingOrWrong) {
  tParser parser("a", expressions()), ended("a", expressions());
  unsigned count = 0;
  auto* const stray = new tElement;
  stray->setState(999);
  SSYacc bare;
  SSLexStringConsumer consumer("a"), bad("?");
  SSLex lex(consumer, lexTable()), badLex(bad, lexTable());
  SSYacc unhandled(lex, expressions()), passing(badLex, expressions());
  const std::pair<std::function<void()>, const char*> kCases[] = {
      {[&] {
         parser.onReduce = [&] { parser.elementFromProduction(1); };
         parser.parse();
       },
       "19 SSYacc0108e: Invalid index on elementFromProduction, 1"},
      {[&] {
         ended.parse();
         ended.parse();
       },
       "14 SSYacc0103e: Attempted read past eof"},
      {[&] { parser.elementFromProduction(-1); },
       "19 SSYacc0108e: Invalid index on elementFromProduction, -1"},
      {[&] { parser.elementFromStack(2); }, "11 SSLifo0003e: Invalid index"},
      {[&] { parser.validLookaheads(999, count); }, "35 SSYacc0114e: Invalid state specified, 999"},
      {[&] { parser.pushStackElement(stray); }, "35 SSYacc0114e: Invalid state specified, 999"},
      {[&] { bare.parse(); }, "20 SSYacc0109e: setTable missing, required"},
      {[&] { bare.setTable(lines()), bare.parse(); }, "21 SSYacc0110e: setLex missing, required"},
      {[&] { unhandled.parse(); }, "42 SSYaccEv0003e: Must override reduce function"},
      {[] { SSYacc("/no/such/table"); }, "12 SSYacc0101e: Open file failed, /no/such/table"},
      {[&] { passing.parse(); }, "5 SSLex0105e: Invalid token, Line 1, Offset 1, ?"},
  };
  for (const auto& [action, error] : kCases) EXPECT_EQ(raised(action), error);
  EXPECT_TRUE(parser.pushStackElement(new tElement));
  EXPECT_TRUE(parser.popStackElement());
  const std::unique_ptr<unsigned[]> tokens(parser.validLookaheads(0, count));
  EXPECT_EQ(std::vector<unsigned>(tokens.get(), tokens.get() + count),
            (std::vector<unsigned>{samples::kName, samples::kOpen}));
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
