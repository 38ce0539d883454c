// The forms of messages, as the program prints them.

#include "cli/diagnostics.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <regex>
#include <string>
#include <utility>

#include "cli/sourcequote.h"
#include "tests/support/childprocess.h"

namespace {

std::string quotedPlainly(const std::string& source, int column) {
  return quoted(source, 7, column, tPaint(false));
}

TEST(SourceQuote, PutsTheCaretBelowTheCharacter) {
  EXPECT_EQ(quotedPlainly("\t  x := y", 4), "  7 | \t  x := y\n    | \t  ^\n");
  // A byte of Windows-1252 and a letter in UTF-8 are one column each.
  EXPECT_EQ(quotedPlainly("\x80\xC3\xA7\xE7 x", 6),
            "  7 | \xE2\x82\xAC\xC3\xA7\xC3\xA7 x\n    |     ^\n");
  EXPECT_EQ(quotedPlainly("ab", 9), "  7 | ab\n    |   ^\n");
  EXPECT_EQ(quotedPlainly("", 0), "  7 |\n");
  // What a terminal would obey, and what only looks like UTF-8.
  EXPECT_EQ(printable("\x1B[31m\x07\xC2\x9B\xED\xA0\x80\x7F"),
            "\\x1b[31m\\x07\\xc2\\x9b\xC3\xAD\xC2\xA0\xE2\x82\xAC\\x7f");
  EXPECT_EQ(quotedPlainly("a\x1B\xC2\x9Bz", 5), "  7 | a??z\n    |    ^\n");
}

TEST(SourceQuote, ShowsTheMiddleOfALongLine) {
  const std::string text =
      quotedPlainly(std::string(1000, 'a') + "b" + std::string(1000, 'c'), 1001);
  EXPECT_EQ(text, "  7 | ..." + std::string(50, 'a') + "b" + std::string(49, 'c') + "...\n    | " +
                      std::string(53, ' ') + "^\n");
  std::string letters;
  for (int i = 0; i < 1000; ++i) letters += "\xE2\x82\xAC";
  const std::string caret = quotedPlainly(letters + "x", 3001);
  EXPECT_NE(caret.find("\xE2\x82\xACx\n    | " + std::string(53, ' ') + "^\n"), std::string::npos);
}

TEST(Messages, ShowWarningsAndNotesInEachForm) {
  const krpre_place includer = {"main.prw", 4};
  const krpre_note notes[] = {
      {"here", "a.ch", 1, 3, 5, "  If x", 6, "hier"},
      {"of a rule \x1B", "b.ch", 7, 0, 0, "", 0, "of a rule \x1B"},
      {"take another", "", 0, 0, 0, "", 0, "take another"},
  };
  krpre_diagnostic warning{};
  warning.severity = KRPRE_SEVERITY_WARNING;
  warning.slug = "some-slug";
  warning.message = warning.translated = "something: is odd:";
  warning.file = "a.ch";
  warning.line = 2;
  warning.column = 1;
  warning.endColumn = 4;
  warning.source = "Odd";
  warning.sourceLength = 3;
  warning.includeCount = 1;
  warning.includedFrom = &includer;
  warning.noteCount = 3;
  warning.notes = notes;
  const auto german = [](const char* text) { return "<" + std::string(text) + ">"; };
  EXPECT_EQ(longHead(warning, tPaint(false), german) + longDetails(warning, tPaint(false), german),
            "a.ch(2) <Warning> something: is odd: [some-slug]\n"
            "  2 | Odd\n    | ^\n"
            "  <included from> main.prw:4\n"
            "  <note:> hier\n  1 |   If x\n    |   ^\n"
            "  <note:> of a rule \\x1b (b.ch:7)\n"
            "  <note:> take another\n");
  EXPECT_EQ(gccLines(warning),
            "a.ch:2:1: warning: something: is odd [some-slug]\n"
            "main.prw:4: note: included from here\n"
            "a.ch:1:3: note: here\n"
            "b.ch:7: note: of a rule \\x1b\n"
            "a.ch:2:1: note: take another\n");
  const std::string json = jsonLine(warning);
  EXPECT_NE(json.find("\"column\":1,\"endColumn\":4,\"code\":0"), std::string::npos) << json;
  EXPECT_NE(json.find("\"severity\":\"warning\""), std::string::npos) << json;
  EXPECT_NE(json.find("\"notes\":[{\"file\":\"a.ch\",\"line\":1,\"column\":3,\"endColumn\":5,"
                      "\"message\":\"here\"},"),
            std::string::npos)
      << json;
}

TEST(Messages, OnATerminalAreLongAndColouredUnlessThatIsUnwanted) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0) GTEST_SKIP() << "no terminals to be had";
  close(terminal);
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("main.prw", "x := 1\n  EndIf\n");
  const std::pair<const char*, const char*> kCases[] = {
      {"TERM=xterm", "\033[2m  2 |\033[0m   EndIf\n\033[2m    |\033[0m   \033[31m^\033[0m\n"},
      {"TERM=xterm NO_COLOR=1", "  2 |   EndIf\n    |   ^\n"},
      {"TERM=dumb", "  2 |   EndIf\n    |   ^\n"},
  };
  for (const auto& [environment, quote] : kCases) {
    const std::string program =
        std::string("env -u NO_COLOR ") + environment + " '" KRPRE_PROGRAM "' -I. main.prw";
    const tChildResult result = runChild(
        {KRPRE_PYTHON, "-c", "import pty, sys; pty.spawn(['sh', '-c', sys.argv[1]])", program},
        directory.path());
    const std::string told = std::regex_replace(result.output, std::regex("\r\n"), "\n");
    EXPECT_NE(told.find("ENDIF does not match IF\n" + std::string(quote)), std::string::npos)
        << told;
  }
}

}  // namespace
