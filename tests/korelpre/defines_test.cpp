#include <gtest/gtest.h>

#include <string>

#include "tests/support/preprocess.h"

namespace {

TEST(Defines, OfTheCommandLineAreReplacedByTheirText) {
  EXPECT_EQ(preprocess("A B", {"/DA=B + 2", "-dB"}).text, "B + 2");
  // A later one stands behind the earlier and wins.
  EXPECT_EQ(preprocess("A", {"/DA=1", "/DA=2"}).text, "2");
  EXPECT_EQ(preprocess("b A c A", {"/DA=1 "}).text, "b 1  c 1 ");
  EXPECT_EQ(preprocess("x + 1.5 + \"A\"", {"/D+=-", "/D1.5=\"A\"", "/D\"A\"=y"}).text, "x - y - y");
}

// What a text that failed has left behind must not be touched.
TEST(Defines, OfATextThatFailedAreForgotten) {
  tMemoryProcessor processor;
  EXPECT_THROW(processor.run("a", "#define A 1\n#ifdef A\n"), SSException);
  EXPECT_EQ(processor.run("b", "#ifdef A\nx\n#endif\n#define A 2\nA"), "\n\n\n\n2");
  EXPECT_THROW(processor.run("c", "\n#else"), SSException);
  EXPECT_EQ(processor->errLine(), 2);
}

}  // namespace
