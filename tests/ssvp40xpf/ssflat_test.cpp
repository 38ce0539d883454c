#include "ssvp40xpf/ssflat.h"

#include <string>

#include <gtest/gtest.h>

#include "ssvp40xpf/sslexlexeme.h"
#include "tests/ssvp40xpf/samples.h"

namespace {

std::string reports;

/// The objects of one parse, made and destroyed by the functions.
class FlatFunctions : public testing::Test {
 protected:
  void SetUp() override {
    reports.clear();
    SSSetBadCorrelatorCallback(
        [](void*, const char* text) { reports += text + std::string("\n"); });
    lexImage_ = samples::lexImage();
    yaccImage_ = samples::expressionImage();
    lexTable_ = SSLexTableCreate(lexImage_.data(), tableimage::bytes(lexImage_), "lex");
    yaccTable_ = SSYaccTableCreate(yaccImage_.data(), tableimage::bytes(yaccImage_), "yacc");
  }
  void TearDown() override {
    close();
    SSLexTableDestroy(lexTable_);
    SSYaccTableDestroy(yaccTable_);
    SSSetBadCorrelatorCallback(nullptr);
  }
  void open(const std::string& text) {
    close();
    consumer_ = SSLexConsumerCreate(text.data(), text.size(), 0);
    lex_ = SSLexCreate(consumer_, lexTable_);
  }
  void openParser(const std::string& text, SSYaccReduceCallback reduce, void* user) {
    open(text);
    yacc_ = SSYaccCreate(lex_, yaccTable_, reduce, user, sizeof(int));
  }
  void close() {
    if (yacc_ != nullptr) SSYaccDestroy(yacc_);
    if (lex_ != nullptr) SSLexDestroy(lex_);
    if (consumer_ != nullptr) SSLexConsumerDestroy(consumer_);
    yacc_ = lex_ = consumer_ = nullptr;
  }

  tableimage::tImage lexImage_;
  tableimage::tImage yaccImage_;
  SSObject* lexTable_ = nullptr;
  SSObject* yaccTable_ = nullptr;
  SSObject* consumer_ = nullptr;
  SSObject* lex_ = nullptr;
  SSObject* yacc_ = nullptr;
};

TEST_F(FlatFunctions, ReportHandlesOfTheWrongKind) {
  open("a");
  SSObject* const lexeme = SSLexGetNextLexeme(lex_);
  EXPECT_EQ(SSLexGetNextLexeme(lexeme), nullptr);
  EXPECT_EQ(SSLexLexemeGetToken(lex_), 0u);
  EXPECT_EQ(SSYaccParse(lexTable_), 1);
  EXPECT_EQ(SSLexCreate(lexTable_, consumer_), nullptr);
  EXPECT_EQ(SSYaccStackElementGetState(nullptr), 0u);
  EXPECT_EQ(SSYaccCreate(lex_, lexTable_, nullptr, nullptr, 0), nullptr);
  SSLexLexemeRefDec(lexeme, 2);
  EXPECT_EQ(reports,
            "Bad correlator, SSLX expected\nBad correlator, SSLM expected\n"
            "Bad correlator, SSYC expected\nBad correlator, SSCO expected\n"
            "Bad correlator, SSLT expected\nBad correlator, SSSE expected\n"
            "Bad correlator, SSYT expected\nSSRef0001e: Reference count less than zero\n");
  SSLexLexemeRefInc(lexeme);
  SSLexLexemeRefDec(lexeme, 2);
}

/// Counts the names below each element in the element's own bytes.
SSObject* countNames(SSObject* yacc, unsigned, unsigned size, void* user) {
  SSObject* const made = SSYaccStackElementCreate(sizeof(int));
  int& total = *static_cast<int*>(SSYaccStackElementGetExtra(made));
  for (unsigned i = 0; i < size; ++i) {
    SSObject* const part = SSYaccGetElementFromProduction(yacc, i);
    SSObject* const lexeme = SSYaccStackElementGetLexeme(part);
    total += lexeme != nullptr && SSLexLexemeGetToken(lexeme) == samples::kName ? 1 : 0;
    total += *static_cast<int*>(SSYaccStackElementGetExtra(part));
  }
  *static_cast<int*>(user) = total;
  return made;
}

TEST_F(FlatFunctions, ParseWithCallbacks) {
  int names = 0;
  openParser("a*(b+c)", countNames, &names);
  EXPECT_EQ(SSYaccParse(yacc_), 0);
  EXPECT_EQ(names, 3);
  EXPECT_EQ(SSYaccGetShiftedSinceError(yacc_), 7u);
  unsigned count = 0;
  unsigned* const valid = SSYaccGetValidLookaheads(yacc_, 0, &count);
  EXPECT_EQ(count, 2u);
  SSYaccFreeValidLookaheads(valid);
  SSYaccReset(yacc_);
  EXPECT_EQ(SSYaccPopStackElement(yacc_), 0);  // nothing is left below
  SSExceptionDestroy(SSYaccGetLastException(yacc_));
  SSYaccClearLastException(yacc_);
  EXPECT_EQ(SSYaccPushStackElement(yacc_, SSYaccStackElementCreate(0)), 1);
  EXPECT_NE(SSYaccGetElementFromStack(yacc_, 0), nullptr);

  openParser("a b", countNames, &names);
  SSYaccSetErrorCallback(
      yacc_,
      [](SSObject* yacc, unsigned, SSObject*, void*) {
        SSYaccSetAbort(yacc, 1);
        return SSYaccProcessError(yacc);
      },
      nullptr);
  EXPECT_EQ(SSYaccParse(yacc_), 1);
  EXPECT_EQ(SSYaccGetError(yacc_), 1);
  EXPECT_EQ(SSYaccGetAbort(yacc_), 1);
  EXPECT_EQ(SSExceptionGetErrorId(SSYaccGetLastException(yacc_)), 16);
  SSExceptionDestroy(SSYaccGetLastException(yacc_));
  EXPECT_EQ(reports, "");
}

}  // namespace
