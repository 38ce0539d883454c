#include "preprocessor/convert/inlineblock.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "lib_gzip/zipsource.h"
#include "testrun.h"
#include "tests/support/maxsizescope.h"

namespace {

/// The converted text, or "(none)".
std::string converted(std::string_view source) {
  tString text(source);
  if (BCParse(text) == eConversion::kDone) return std::string(text.view());
  EXPECT_EQ(text, source);
  return "(none)";
}

std::string block(const std::string& content, const std::string& option = "") {
  return "BEGINCONTENT VAR c " + option + "\n" + content + "\nENDCONTENT\n";
}

}  // namespace

TEST(InlineBlock, MustBeWhole) {
  EXPECT_EQ(converted(""), "(none)");
  EXPECT_EQ(converted("x := 1\r\n"), "(none)");
  EXPECT_EQ(converted("ENDCONTENT\n"), "(none)");
  EXPECT_EQ(converted("BEGINCONTENT\nx\nENDCONTENT\n"), "(none)");
  EXPECT_EQ(converted(block("x") + "BEGINCONTENT VAR d\nx\n"), "(none)");
  EXPECT_EQ(converted("begincontent of it\n" + block("x")), "\nc := 'x' + CHR(10)\n\n");
  EXPECT_EQ(converted("a\r\rBEGINCONTENT VAR c\r\nx\ry\n\nENDCONTENT\r\nb"),
            "a\n\n\nc := 'x' + CHR(10)\nc += 'y' + CHR(10)\n\n\nb\n");
}

TEST(InlineBlock, TextThatGrowsTooLargeIsAResult) {
  const tMaxSizeScope scope(1 << 20);
  std::string lines;
  for (int i = 0; i < 1000; ++i) lines += std::string(100, '\'') + "\n";
  for (const std::string& content : {lines, std::string(200000, '\'')}) {
    tString text(block(content));
    EXPECT_EQ(BCParse(text), eConversion::kTooLarge);
    EXPECT_EQ(text, block(content));
  }
}

TEST(InlineBlock, IsConvertedInPrograms) {
  for (const char* name : {"a.PRW", "a.zorb", "a.ch", "a"}) {
    tSources disk;
    disk.put(name, block("it's 5"));
    const bool program = std::string_view(name).size() > 4;
    EXPECT_EQ(runOver(disk, {std::string("@F") + name}).result, program ? 0 : 1) << name;
  }
}

TEST(InlineBlock, IsFoundWhereverItStands) {
  // At every place around the seam of two parts that are read.
  for (std::size_t before = 32740; before < 32790; ++before) {
    tSources disk;
    disk.put("a.prw", std::string(before, '\n') + block("x"));
    EXPECT_EQ(runOver(disk, {"@Fa.prw"}).result, 0);
    EXPECT_NE(fileText(disk, "a.ppo").find("c := 'x'"), std::string::npos) << before;
  }
  tSources disk;
  disk.put("a.prw", packZipSource(block("x")));
  EXPECT_EQ(runOver(disk, {"@Fa.prw"}).result, 0);
  EXPECT_EQ(fileText(disk, "a.ppo"), "\r\nc := 'x' + CHR(10)\r\n");
}
