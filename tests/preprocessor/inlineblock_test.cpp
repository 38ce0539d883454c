#include "preprocessor/convert/inlineblock.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "lib_gzip/zipsource.h"
#include "testrun.h"

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

TEST(InlineBlock, KeepsTheIndentationOfItsFirstLine) {
  // A tab counts as one character and comes back as one blank.
  EXPECT_EQ(converted("\t BeginContent\tvar  c\tx  OPTIMIZ\n\tx\n     y\n\t\t\n EndContents\n"),
            "  \n  cx := 'x' + CHR(10)\n  cx += '   y' + CHR(10)\n  \n \n");
}

TEST(InlineBlock, LineEndsOfAllKindsEndItsLines) {
  EXPECT_EQ(converted("a\r\rBEGINCONTENT VAR c\r\nx\ry\n\nENDCONTENT\r\nb"),
            "a\n\n\nc := 'x' + CHR(10)\nc += 'y' + CHR(10)\n\n\nb\n");
}

TEST(InlineBlock, MustBeWhole) {
  EXPECT_EQ(converted(""), "(none)");
  EXPECT_EQ(converted("x := 1\r\n"), "(none)");
  EXPECT_EQ(converted("ENDCONTENT\n"), "(none)");
  EXPECT_EQ(converted("BEGINCONTENT\nx\nENDCONTENT\n"), "(none)");
  EXPECT_EQ(converted(block("x") + "BEGINCONTENT VAR d\nx\n"), "(none)");
  EXPECT_EQ(converted("begincontent of it\n" + block("x")), "\nc := 'x' + CHR(10)\n\n");
}

TEST(InlineBlock, TextThatGrowsTooLargeIsAResult) {
  tString::setMaxSize(1 << 20);
  std::string lines;
  for (int i = 0; i < 1000; ++i) lines += std::string(100, '\'') + "\n";
  for (const std::string& content : {lines, std::string(200000, '\'')}) {
    tString text(block(content));
    EXPECT_EQ(BCParse(text), eConversion::kTooLarge);
    EXPECT_EQ(text, block(content));
  }
  tString::setMaxSize(16 << 20);
}

TEST(InlineBlock, IsConvertedInProgramsAndTouchesNoFile) {
  for (const char* name : {"s/a.PRW", "s/a.zorb", "s/a.ch", "s/a"}) {
    tSources disk;
    const std::string text = "c := \"\"\n" + block("it's 5") + "#include \"a.pw_\"\n#endif\n";
    disk.put(name, text);
    disk.put("s/a.pw_", "y := 1\n");
    const bool program = std::string(name).find(".ch") == std::string::npos && name[3] == '.';
    // The line of the message is the source's.
    const std::string output = runOver(disk, {std::string("@F") + name}).printed;
    EXPECT_EQ(output.substr(0, output.find(' ')), std::string(name) + "(6)");
    EXPECT_EQ(disk.count(), 2U);

    disk.put(name, text.substr(0, text.size() - 7));
    EXPECT_EQ(runOver(disk, {std::string("@F") + name}).result, program ? 0 : 1);
    EXPECT_EQ(fileText(disk, "s/a.pw_"), "y := 1\n");
    if (!program) continue;
    const bool extended = std::string(name).ends_with("zorb");
    const std::string result = fileText(disk, extended ? "s/a.ppx_" : "s/a.ppo");
    EXPECT_EQ(result.substr(0, result.find("#line")),
              "c := \"\"\r\n\r\nc := 'it' + CHR(39) + 's 5' + CHR(10)\r\n");
    EXPECT_NE(result.find("y := 1"), std::string::npos);
  }
}

TEST(InlineBlock, OfAnIncludedFileIsLeftAlone) {
  tSources disk;
  disk.put("a.prw", block("x") + "#ifndef H\n#include \"h.ch\"\n#endif\n");
  disk.put("h.ch", "#define H\n#include \"a.prw\"\n");
  EXPECT_EQ(runOver(disk, {"@Fa.prw"}).result, 0);
  const std::string output = fileText(disk, "a.ppo");
  EXPECT_EQ(output.find("\r\nc := 'x' + CHR(10)\r\n"), 0U) << output;
  EXPECT_NE(output.find("BEGINCONTENT VAR c"), std::string::npos) << output;
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
