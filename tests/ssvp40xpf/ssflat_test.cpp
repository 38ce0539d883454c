#include "ssvp40xpf/ssflat.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/samples.h"

namespace {

std::string reports;

// What else the functions do is what the fuzz target "flat" calls in any order.
TEST(FlatFunctions, ReportHandlesOfTheWrongKind) {
  SSSetBadCorrelatorCallback([](void*, const char* text) { reports += text + std::string("\n"); });
  const tableimage::tImage image = samples::lexImage();
  SSObject* const table = SSLexTableCreate(image.data(), tableimage::bytes(image), "lex");
  SSObject* const consumer = SSLexConsumerCreate("a", 1, 0);
  SSObject* const lex = SSLexCreate(consumer, table);
  SSObject* const lexeme = SSLexGetNextLexeme(lex);
  EXPECT_EQ(SSLexGetNextLexeme(lexeme), nullptr);
  EXPECT_EQ(SSLexLexemeGetToken(lex), 0u);
  EXPECT_EQ(SSYaccParse(table), 1);
  EXPECT_EQ(SSLexCreate(table, consumer), nullptr);
  EXPECT_EQ(SSYaccStackElementGetState(nullptr), 0u);
  EXPECT_EQ(SSYaccCreate(lex, table, nullptr, nullptr, 0), nullptr);
  SSLexLexemeRefDec(lexeme, 2);
  EXPECT_EQ(reports,
            "Bad correlator, SSLX expected\nBad correlator, SSLM expected\n"
            "Bad correlator, SSYC expected\nBad correlator, SSCO expected\n"
            "Bad correlator, SSLT expected\nBad correlator, SSSE expected\n"
            "Bad correlator, SSYT expected\nSSRef0001e: Reference count less than zero\n");
  SSLexLexemeRefDec(lexeme, 1);
  SSLexDestroy(lex);
  SSLexConsumerDestroy(consumer);
  SSLexTableDestroy(table);
  SSSetBadCorrelatorCallback(nullptr);
}

}  // namespace
