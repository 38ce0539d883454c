// The forms of messages, as the program prints them.

#include "cli/diagnostics.h"

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "cli/sourcequote.h"
#include "tests/cli/program.h"

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

class Messages : public Program {
 protected:
  Messages() {
    write("std.ch", "");
    // An error in the main file, in a header two includes deep, of a header's command; an unclosed
    // quote, a missing file and a missing include, too long a line.
    write("main.prw", "x := 1\n  EndIf\n");
    write("deep.prw", "\n#include \"h/a.ch\"\n");
    write("h/a.ch", "#include \"h/b.ch\"\n");
    write("h/b.ch", "x := 1\n\tNext\n");
    write("rule.prw", "#include \"h/rule.ch\"\nCLOSE IT\n");
    write("h/rule.ch", "#define IT It()\n#command CLOSE <x> => EndIf ; <x>\n");
    write("quote.prw", "x := 'open\n");
    write("lost.prw", "\n#include \"no.ch\" // gone\n");
    write("long.prw", "x\r\r\nx := '" + std::string(4090, 'y') + "'\n");
    write("good.prw", "x := 1\n");
  }
  std::string run(std::vector<std::string> arguments, const std::string& environment = {}) const {
    std::vector<std::string> command = {"/usr/bin/env", "-u", "LANGUAGE", "LC_ALL=C"};
    if (!environment.empty()) command.push_back(environment);
    command.insert(command.end(), {KRPRE_PROGRAM, "-I."});
    command.insert(command.end(), arguments.begin(), arguments.end());
    const tChildResult result = runChild(command, directory_.path());
    EXPECT_EQ(result.errors, "");
    return result.output;
  }
};

const std::vector<std::string> kFiles = {"main.prw", "deep.prw", "rule.prw", "quote.prw",
                                         "none.prw", "lost.prw", "long.prw", "good.prw"};

std::vector<std::string> with(const std::string& option, std::vector<std::string> files = kFiles) {
  files.insert(files.begin(), option);
  return files;
}

TEST_F(Messages, InTheLongFormStandBelowTheirClassicLines) {
  const std::string expected =
      "deep.prw(2) Error b.ch(2) Error C2029  NEXT does not match FOR\n"
      "  at h/b.ch:2:2\n"
      "  2 | \tNext\n"
      "    | \t^\n"
      "  included from h/a.ch:1\n"
      "  included from deep.prw:2\n" +
      failed("deep.prw") +
      "rule.prw(2) Error C2027  ENDIF does not match IF\n"
      "  2 | CLOSE IT\n"
      "    | ^\n"
      "  in the expansion of #define IT (h/rule.ch:1)\n"
      "  in the expansion of #command CLOSE (h/rule.ch:2)\n" +
      failed("rule.prw") +
      "KOREL Preprocessor: source line TOO BIG - file long.prw line 2\n"
      "  3 | ..." +
      std::string(50, 'y') + "y'\n    | " + std::string(53, ' ') + "^\n" + failed("long.prw", 15) +
      ok("good.prw");
  EXPECT_EQ(run(with("--diagnostics=long", {"deep.prw", "rule.prw", "long.prw", "good.prw"})),
            expected);
}

TEST_F(Messages, OnATerminalAreLongAndColouredUnlessThatIsUnwanted) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0) GTEST_SKIP() << "no terminals to be had";
  close(terminal);
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
        directory_.path());
    EXPECT_EQ(std::regex_replace(result.output, std::regex("\r\n"), "\n"),
              "main.prw(2) Error C2027  ENDIF does not match IF\n" + std::string(quote) +
                  failed("main.prw"));
  }
}

TEST_F(Messages, InTheFormOfCompilersAreOneLineEachWithNotes) {
  EXPECT_EQ(run(with("--diagnostics=gcc")),
            "main.prw:2:3: error: ENDIF does not match IF [2027]\n"
            "h/b.ch:2:2: error: NEXT does not match FOR [2029]\n"
            "h/a.ch:1: note: included from here\n"
            "deep.prw:2: note: included from here\n"
            "rule.prw:2:1: error: ENDIF does not match IF [2027]\n"
            "h/rule.ch:1: note: in the expansion of #define IT\n"
            "h/rule.ch:2: note: in the expansion of #command CLOSE\n"
            "quote.prw:1:6: error: Statement unterminated at end of line/unbalanced "
            "parentesis/brackets [2002]\n"
            "none.prw: error: File not found [file-not-found]\n"
            "lost.prw:2:10: error: File not found no.ch [2090]\n"
            "long.prw:3:4096: error: Source line too big: 4096 bytes or more [line-too-long]\n");
}

std::string firstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

const char* const kDeep =
    R"({"file":"h/b.ch","line":2,"column":2,"code":2029,"slug":"next-without-for",)"
    R"("severity":"error","message":"C2029  NEXT does not match FOR","includedFrom":)"
    R"([{"file":"h/a.ch","line":1},{"file":"deep.prw","line":2}],"rules":[]})";

const char* const kCommand =
    R"({"directive": "#command", "key": "CLOSE", "listing": "#xcommand CLOSE x => EndIf ; x",)"
    R"("file": "h/rule.ch", "line": 2})";

TEST_F(Messages, InJsonAreOneObjectEach) {
  EXPECT_EQ(firstLine(run(with("--diagnostics=json", {"deep.prw"}))), kDeep);
  const auto rule = nlohmann::json::parse(firstLine(run(with("--diagnostics=json", {"rule.prw"}))));
  EXPECT_EQ(rule["rules"][1], nlohmann::json::parse(kCommand));
  const std::string all = run({"--diagnostics=json", "-T", "none.prw"});
  EXPECT_EQ(nlohmann::json::parse(firstLine(all))["severity"], "trace");
  const auto last = nlohmann::json::parse(all.substr(all.rfind('\n', all.size() - 2) + 1));
  EXPECT_EQ(last["severity"], "result");
  EXPECT_EQ(last["code"], 15);
}

TEST_F(Messages, InJsonSurviveHostileNames) {
  write("\xE7\"\n\\.prw", "#include \"\xFF\x01.ch\"\n");
  const std::string all = run(with("--diagnostics=json", {"--", "\xE7\"\n\\.prw"}));
  const nlohmann::json json = nlohmann::json::parse(firstLine(all));
  EXPECT_EQ(json["file"], "\xEF\xBF\xBD\"\n\\.prw");
  EXPECT_EQ(json["message"], "C2090  File not found \xEF\xBF\xBD\x01.ch");
}

TEST_F(Messages, FollowTheLocaleInTheFormsForPeopleOnly) {
  const std::string german = "LC_ALL=de_DE.UTF-8";
  EXPECT_EQ(run(with("--diagnostics=long", {"deep.prw"}), german),
            "deep.prw(2) Fehler b.ch(2) Fehler C2029  NEXT does not match FOR\n"
            "  bei h/b.ch:2:2\n  2 | \tNext\n    | \t^\n"
            "  eingebunden von h/a.ch:1\n  eingebunden von deep.prw:2\n"
            "KOREL Pr\xC3\xA4prozessor. Vor\xC3\xBC"
            "bersetzung der Datei deep.prw mit Fehler. R\xC3\xBC"
            "ckgabewert gleich 1\n");
  for (const char* form : {"--diagnostics=json", "--diagnostics=gcc"}) {
    EXPECT_EQ(run(with(form), german), run(with(form)));
  }
  EXPECT_EQ(run({"good.prw"}, "LC_ALL=pt_BR.ISO-8859-1"),
            "KOREL Pr\xE9-processador: Pr\xE9-compila\xE7\xE3o do arquivo good.prw conclu\xED"
            "da.\n");
}

}  // namespace
