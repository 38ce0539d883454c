#include "preprocessor/copy/normalise.h"

#include <gtest/gtest.h>

#include "preprocessor/copy/linemarkers.h"
#include "testrun.h"
#include "tests/support/maxsizescope.h"

namespace {

std::tm januaryThird() {
  std::tm time = {};
  time.tm_year = 125;
  time.tm_mday = 3;
  time.tm_hour = 7;
  time.tm_sec = 9;
  return time;
}

/// The normalised copy of a source, after a failure the line that is too long and what the copy
/// holds.
std::string normalised(const std::string& source) {
  tDiskManMemory disk;
  disk.put("a.prw", source);
  unsigned char dialogFound = 0;
  tNormaliseFailure failure;
  const bool done =
      AdjustCRLF_and_CreateTemp(disk, "a.prw", "a.pw_", dialogFound, kLongestLine, &failure);
  EXPECT_TRUE(done || failure.what == eMessage::kLineTooLong);
  return (done ? "" : "(" + std::to_string(failure.line) + ") ") + fileText(disk, "a.pw_");
}

std::string rewritten(const std::string& source, bool expectDialog = false) {
  tAutoChar buffer;
  buffer.setText(source);
  unsigned char dialogFound = 0;
  BeforePreProcessor(buffer, dialogFound, januaryThird);
  EXPECT_EQ(dialogFound != 0, expectDialog) << source;
  EXPECT_EQ(buffer.data()[buffer.size() - 1], '\0');
  return std::string(buffer.text());
}

std::string hexOf(std::string_view text) {
  std::string hex;
  for (const char c : text) hex += tString::format("%02X", static_cast<unsigned char>(c)).view();
  return hex;
}

std::string dialog(std::string_view code) {
  return "//$BEGINDIALOGDEF_X //$DIALOGCODE=" + hexOf(code) + "//$ENDDIALOGDEF_X\r\n";
}

}  // namespace

TEST(Normalise, LinesAreLimited) {
  const std::string longest(4095, 'x');
  EXPECT_EQ(normalised(longest), longest + "\r\n");
  EXPECT_EQ(normalised(longest + "\n" + longest + "\n"), longest + "\r\n" + longest + "\r\n");
  EXPECT_EQ(normalised(longest + "x"), "(1) ");
  EXPECT_EQ(normalised("a\r\nb\n" + longest + "x\nc\n"), "(3) a\r\nb\r\n");
  // A line end that two slices of the copy share is one.
  const std::string lines(128 * 1024 - 4096, '\n');
  EXPECT_EQ(normalised(lines + longest + "\r\nb").size(), 2 * lines.size() + longest.size() + 5);
  // The line runs over several slices of the copy.
  EXPECT_EQ(normalised("a\n" + std::string(100000, 'x')), "(2) a\r\n");
  // It is a line of the source, where a block is one.
  const std::string blocks = dialog("A()\r\nB()\r\n") + "b\n" + dialog("C()\r\n") + "d\n";
  EXPECT_TRUE(normalised(blocks + longest + "x").starts_with("(5) "));
  EXPECT_TRUE(normalised(blocks + dialog("A()\r\n" + longest + "x\r\n")).starts_with("(5) "));
}

TEST(Normalise, TimeStampCountsMonthsFromZero) {
  EXPECT_EQ(rewritten("a __COMPTIMESTAMP____COMPTIMESTAMP__\nb"),
            "a \"20250003 07:00:09\"\"20250003 07:00:09\"\nb");
  EXPECT_EQ(rewritten("__COMPTIMESTAMP_"), "__COMPTIMESTAMP_");
  // Wherever the parts are cut in which a source is read.
  for (std::size_t filler = 32748; filler < 32772; ++filler) {
    const std::string copy = normalised(std::string(filler, '\n') + "__COMPTIMESTAMP__");
    ASSERT_EQ(copy.find("__COMP"), std::string::npos) << filler;
  }
}

TEST(Normalise, DialogBlocksAreExpanded) {
  const std::string code = "A()\r\nB;\r\nC()\r\nx:activate()\r\n";
  const auto expanded = [](int line) {
    return "__IGNOREDEBUGLINE__()\r\nA()\r\n__IGNOREDEBUGLINE__()\r\nB;\r\nC()\r\n"
           "__SYNCHRONIZEDEBUG__(" +
           std::to_string(line) + ")\r\nx:activate()\r\n";
  };
  EXPECT_EQ(rewritten("first\r\n" + dialog(code) + "a\n" + dialog(code) + "last", true),
            "first\r\n" + expanded(2) + "a\n" + expanded(10) + "last");
  EXPECT_EQ(
      rewritten("//$BEGINDIALOGDEF_\n//$DIALOGCODE=" + hexOf(code) + "\n//$ENDDIALOGDEF_", true),
      expanded(1));
  // A block in the code of a block counts the lines before it in the rewritten text.
  EXPECT_EQ(rewritten(dialog("Z()\r\n" + dialog(code)), true),
            "__IGNOREDEBUGLINE__()\r\nZ()\r\n__IGNOREDEBUGLINE__()\r\n" + expanded(4));
  for (const char* incomplete :
       {"//$BEGINDIALOGDEF_ //$DIALOGCODE=41", "//$BEGINDIALOGDEF_ //$ENDDIALOGDEF_",
        "//$BEGINDIALOGDEF_ //$ENDDIALOGDEF_ //$DIALOGCODE=41", "//$DIALOGCODE=//$ENDDIALOGDEF_"}) {
    EXPECT_EQ(rewritten(incomplete), incomplete);
  }
  // Lower-case digits are no encoding, and the block right behind is not seen.
  const std::string broken = "//$BEGINDIALOGDEF_//$DIALOGCODE=4a0D0A//$ENDDIALOGDEF_\r\n";
  EXPECT_EQ(rewritten(broken + dialog(code) + broken, true), dialog(code));
}

TEST(LineMarkers, MarkersNameTheSource) {
  const struct {
    const char *text, *expected;
  } rows[] = {
      {"plain", "plain"},
      {"#line 3 \"krpre0.pw_\"\nx", "#line 3 \"src/a.prw\"\nx"},
      {"krpre0.pw_ out/krpre0.pw_krpre0.pw_ ut/krpre0.pw_",
       "src/a.prw src/a.prwsrc/a.prw ut/src/a.prw"},
      {"  __IGNOREDEBUGLINE__()\n__IGNOREDEBUGLINE__( )",
       "  #line 0 \"src/a.prw\"\n__IGNOREDEBUGLINE__( )"},
      {"__SYNCHRONIZEDEBUG__( 1 2 )x\n__SYNCHRONIZEDEBUG__(99999999999999999999)",
       "#line 12 \"src/a.prw\"x\n#line 2147483647 \"src/a.prw\""},
      {"__SYNCHRONIZEDEBUG__()__SYNCHRONIZEDEBUG__(a)__SYNCHRONIZEDEBUG__(1__SYNCHRONIZEDEBUG__(2)",
       "__SYNCHRONIZEDEBUG__()__SYNCHRONIZEDEBUG__(a)__SYNCHRONIZEDEBUG__(1#line 2 \"src/a.prw\""},
      {"__IGNOREDEBUGLINE__() ; a(); __SYNCHRONIZEDEBUG__(2);\nb()",
       "#line 0 \"src/a.prw\"\na()\n#line 2 \"src/a.prw\"\nb()"},
      {"a();\n__IGNOREDEBUGLINE__();__SYNCHRONIZEDEBUG__(3) ; b()",
       "a();\n#line 0 \"src/a.prw\"\n#line 3 \"src/a.prw\"\nb()"},
  };
  for (const auto& row : rows) {
    tString text(row.text);
    finishLineMarkers(text, tString("out/krpre0.pw_"), tString("src/a.prw"));
    EXPECT_EQ(text, row.expected);
  }
}

TEST(LineMarkers, PrefixesOfNamesAreReplacedInMarkersOnly) {
  std::vector<tPrefix> prefixes;
  for (const auto& [from, to] : {std::pair("/w/", "s/"), {"/w/in\"", "never"}, {"/w/in", ""}}) {
    prefixes.push_back({tString(from), tString(to)});
  }
  const struct {
    const char *text, *expected;
  } rows[] = {
      {"#line 1 \"/w/a\"\r\nx := '#line 1 \"/w/a\"'\n \t#line 0 \"/w/in/b\"",
       "#line 1 \"s/a\"\r\nx := '#line 1 \"/w/a\"'\n \t#line 0 \"/b\""},
      {"#line 1 \"/w/in\"\n#line 12 \"/w/a\"b\"", "#line 1 \"\"\n#line 12 \"s/a\"b\""},
      {"#line 1 \"a/w/a\"\n#line /w/a\n#line 1 \"\n#line 1 \"/w/\n#line 1",
       "#line 1 \"a/w/a\"\n#line /w/a\n#line 1 \"\n#line 1 \"/w/\n#line 1"},
  };
  for (const auto& row : rows) {
    tString text(row.text);
    finishLineMarkers(text, tString("krpre0.pw_"), tString("a.prw"), prefixes);
    EXPECT_EQ(text, row.expected);
  }
}

TEST(Normalise, TextThatGrowsTooLargeIsRefused) {
  const tMaxSizeScope scope(37);
  tAutoChar buffer;
  unsigned char dialogFound = 0;
  buffer.setText("\n__COMPTIMESTAMP__\n__COMPTIMESTAMP__");
  EXPECT_EQ(BeforePreProcessor(buffer, dialogFound, januaryThird).tooBigAt, 3);
  tString named("krpre0.pw_, and this is behind it.");
  EXPECT_FALSE(finishLineMarkers(named, tString("krpre0.pw_"), tString("src/more/a.prw")));
}
