#include "korelpre/text/tknstring.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "korelpre/korelprecls.h"
#include "tests/support/preprocess.h"

using namespace precomp;

namespace {

void fill(tAutoArray<tSpcString>& tokens, std::initializer_list<const char*> texts) {
  for (const char* text : texts) tokens.add(new tSpcString(tString(text)));
}

std::string textOf(const tTknString& statement) {
  tString text;
  statement.appendText(text);
  return std::string(text.view());
}

TEST(TokenString, SplicesTheReplacementIn) {
  tTknString t;
  fill(t.tokens(), {"a", "b", "c", "d"});
  fill(t.newTokens(), {"X", "Y", "Z"});
  t.curTokenIdx(3);
  t.doReset(nullptr, 1);
  EXPECT_EQ(textOf(t), "aXYZd");
  t.curTokenIdx(-1);
  t.doReset(nullptr, 4);
  EXPECT_EQ(textOf(t), "aXYZ");

  t.getToken(0).setSpacing(tString("  "));
  fill(t.newTokens(), {"N", "M"});
  t.doReset(nullptr, -1);
  EXPECT_EQ(textOf(t), "  NM");
  EXPECT_EQ(t.newTokens().count(), 0);
  t.doReset(nullptr, -1);
  EXPECT_EQ(t.count(), 0);
}

TEST(TokenString, CopiesATokenWithoutItsSecondCode) {
  tSpcString token(tString("a"));
  token.setAux(5);
  token.setKind(116);
  const tSpcString copied(token);
  EXPECT_EQ(copied.aux(), 0u);
  EXPECT_EQ(copied.kind(), 116u);
  tSpcString assigned;
  assigned = token;
  EXPECT_EQ(assigned.aux(), 5u);
}

TEST(TokenString, IsPrintedWithItsContinuations) {
  tDiskManMemory disk;
  KorelPreYaccClass processor(&disk);
  tTknString t;
  fill(t.tokens(), {"a", "b"});
  t.keepOriginal();
  t.tokens().removeAt(1);
  auto* continuation = new tTknString;
  fill(continuation->tokens(), {"c"});
  t.continuations().add(continuation);
  tStringSink sink;
  const tOutputScope scope(sink);
  processor.printLine(t, 0);
  processor.printLine(t, 1);
  EXPECT_EQ(sink.text, "a;c\nab;c\n");
}

}  // namespace
