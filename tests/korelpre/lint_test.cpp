// What is told of sources that are allowed and hardly meant.

#include "korelpre/lint/lint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/support/preprocess.h"

namespace {

// Of each warning "slug file:line:column [what the caret is below]", then its message.
std::string lint(tFiles files, const char* wanted = "all") {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  for (const auto& [name, text] : files) disk.put(name, text);
  precomp::KorelPre16 session(disk);
  precomp::tWarningSet set;
  EXPECT_EQ(set.take(wanted), "");
  session.setWarnings(set);
  runSession(session, {"-Fmain.prw"});
  std::string text;
  for (const precomp::tDiagnosis& told : session.takeWarnings()) {
    const bool error = told.severity == precomp::tDiagnosis::kError;
    const auto size =
        static_cast<std::size_t>(told.endColumn > 0 ? told.endColumn - told.column : 0);
    text += std::string(error ? "error " : "") + told.slug.c_str() + " " + told.file.c_str() + ":" +
            std::to_string(told.line) + ":" + std::to_string(told.column) + " [";
    text += told.sourceLine.view().substr(static_cast<std::size_t>(told.column) - 1, size);
    text += std::string("] ") + told.message.c_str() + "\n";
    const std::string last = told.notes.back().message.c_str();
    if (last.starts_with("not told")) text += "  " + last + "\n";
  }
  return text;
}

std::string lint(std::string_view source, const char* wanted = "all") {
  return lint({{"main.prw", source}}, wanted);
}

struct tCase {
  std::string_view source;
  std::string_view told;
};

template <std::size_t count>
void expectTold(const tCase (&cases)[count]) {
  for (const tCase& row : cases) EXPECT_EQ(lint(row.source), row.told) << row.source;
}

#define FORM "#command DEFINE FORM <o> TITLE <t> => <o> := Form(<t>)\n"
#define NO_RULE(place, caret, word) \
  "unmatched-command main.prw:" place " [" caret "] no rule takes this " word " statement\n"

TEST(Lint, TellsOfCommandsThatNoRuleTakes) {
  expectTold({
      {FORM "  DEFINE FORM o TITEL \"x\"\n", NO_RULE("2:17", "TITEL", "DEFINE")},
      {FORM "DEFI FROM o TITLE 1\n", NO_RULE("2:6", "FROM", "DEFI")},
      {FORM "DEFINE FORM o\n", NO_RULE("2:1", "DEFINE", "DEFINE")},
      {FORM "DEF FORM o TITLE 1\n", NO_RULE("2:1", "DEF", "DEF")},
      {FORM "DEFIEN FORM o TITLE 1\nDEFIEN FORM o\nDESIGN FORM o TITLE 1\n",
       NO_RULE("2:1", "DEFIEN", "DEFIEN")},
      // Of each key one is tried.
      {repeated("#command defaults => D()\n", 8) + "#command DEFINED <x> => D(<x>)\nDEF x\n",
       NO_RULE("10:1", "DEF", "DEF")},
      {"#xcommand PUT <x> ON\t=> P(<x>)\nPUT a OF\n", NO_RULE("2:7", "OF", "PUT")},
      // Another rule of the key goes further.
      {"#command SET A TO <x> => A(<x>)\n#command SET BELL ON => B()\nSET BELL OF\n",
       NO_RULE("3:10", "OF", "SET")},
      // Variables, calls, statements of the language, what a rule makes.
      {FORM "DEFINE := 1\nDEFINE(2)\nDefine[1] := 3\nDEFINE->x := 1\nDEFINE:Run()\nDefine++\n", ""},
      {"#command RETURN VALUE <x> => Return <x>\nFunction A()\nReturn 1\n", ""},
      {"#command GO <x> => MOVE <x>\n#command MOVE <x> TO <y> => M(<x>, <y>)\nGO up\n", ""},
      {"#ifdef NO\n" FORM "DEFINE FORM\n#endif\nDEFINE FORM\n", ""},
  });
}

TEST(Lint, TellsOfOperandsWithNothingBetween) {
  expectTold({
      {FORM "DEFINE FORM o TITLE 1 x\nFoo(a, \"b\" c, d e)\n",
       "adjacent-operands main.prw:2:23 [x] nothing stands between 1 and x\n"
       "adjacent-operands main.prw:3:12 [c] nothing stands between \"b\" and c\n"},
      {"#command SAY <*t*> => Told(<\"t\">)\nSAY one two\n", ""},
      {"Function A(x as character, y)\nLocal z := {|a, b| a + b}\nFor x := (1) To 2 Step 3\n"
       "Next\nReturn (a->b .and. c:d) $ {1, {2}}[1]\n",
       ""},
  });
}

#define BELOW(place, word) \
  "define-below-use main.prw:" place " [" word "] " word " is used above its #define\n"
#define CASE(place, word, name)                                                                    \
  "define-case main.prw:" place " [" word "] " word " is not replaced: the #define is spelt " name \
  "\n"

TEST(Lint, TellsOfNamesThatNoDefineReplaces) {
  expectTold({
      {"x := MAX\n#define MAX 3\ny := MAX\n", BELOW("1:6", "MAX")},
      {"x := 1 + ;\n  MAX\ny := MAX\n#define MAX 3\n", BELOW("2:3", "MAX")},
      {"x := \"MAX\" // MAX\n#ifdef NO\nx := MAX\n#endif\n/* MAX */\n#define MAX 3\n", ""},
      {"#define MAX 1\nx := MAX\n#define MAX 3\n", ""},
      {"x := AREA(1) + AREA\n#define AREA(a) a\n", BELOW("1:6", "AREA")},
      {"#define MaxLines 1\nx := MAXLINES + maxlines + MAXLINES\n",
       CASE("2:6", "MAXLINES", "MaxLines") CASE("2:17", "maxlines", "MaxLines")},
      // The program's own words.
      {"#define TOTAL 1\nFunction A(x, Total)\nReturn Total\n", ""},
      {"#define TOTAL 1\nLocal a, total := 2\nx := total\n", ""},
      {"#define TOTAL 1\nx := Total(1) + o:Total + Total->x + a->Total\n", ""},
      {"#define TOTAL 1\nFor Total := 1 To 2\nx := Total\nNext\n", ""},
      {"#define TITLE 1\n#command SHOW <x> TITLE <t> => S(<x>, <t>)\nSHOW a Title b\n", ""},
      {"max := 3\nx := max\n#define max 3\n", ""},
      {"#define Debug\n#ifdef DEBUG\n#ifdef debug\n#endif\n#endif\n#ifndef Debug\n#endif\n",
       CASE("2:8", "DEBUG", "Debug") CASE("3:8", "debug", "Debug")},
      {"#define N 1\nx := {|a, n| a + n}\n", ""},
      {"#define END 1\n#define Nil 0\nBegin Sequence\nx := nil\nend\n", ""},
  });
}

TEST(Lint, TellsOfCallsWithAnotherNumberOfArguments) {
  constexpr const char* kMessage = "is not replaced: arguments given: ";
  EXPECT_EQ(
      lint("#define LAST(a, b) a + b\nx := 1 + LAST( f(2, {3, 4}) )\n"),
      std::string("argument-count main.prw:2:10 [LAST] LAST ") + kMessage + "1, expected: 2\n");
  EXPECT_EQ(
      lint("#define LAST(a, b) a + b\n#define PAIR 1, 2\nx := LAST(PAIR) + LAST({1,2}, f(3,4))\n"),
      "");
  EXPECT_EQ(lint({{"main.prw", "#include \"h.ch\"\nx := M()\nRUN 7\n"},
                  {"h.ch", "#define M(a) a\n#command RUN <x> => M(<x>, <x>)\n"}}),
            std::string("argument-count main.prw:2:6 [M] M ") + kMessage +
                "0, expected: 1\nargument-count main.prw:3:1 [] M " + kMessage +
                "2, expected: 1\n");
}

#define UNKNOWN(place, word) \
  "unknown-directive main.prw:" place " [" word "] " word " is no directive\n"

TEST(Lint, TellsOfWhatLooksLikeDirectives) {
  expectTold({
      {"#defin A 1\n", UNKNOWN("1:1", "#defin")},
      {"  # define A 1\n#if A\n#pragma\n",
       UNKNOWN("1:3", "# define") UNKNOWN("2:1", "#if") UNKNOWN("3:1", "#pragma")},
      {"#ifdef A\n#if B\n# define\n#endif\nIf x # y\nEndIf\n/*\n#if\n*/\n* #if\n", ""},
      {"#error give up; now\n#ifdef A\n#error\n#endif\n",
       "error-directive main.prw:1:1 [] this #error is reached, and has no effect: give up; now\n"},
      {"#define A 1\n#undef A\n",
       "undef-without-effect main.prw:2:1 [] #undef has no effect on A\n"},
      {"#undef A // gone\n#undef B\n#define B\n",
       "undef-without-effect main.prw:1:1 [] #undef has no effect on A\n"},
  });
}

#define LOSES(place, word, left) \
  "dropped-bytes main.prw:" place " [" word "] " word " loses bytes and becomes " left "\n"

TEST(Lint, TellsOfBytesThatVanish) {
  expectTold({
      {"x := nPre\xE7o + 1\n", LOSES("1:6", "nPre\xE7o", "nPreo")},
      {"x := 1 \xC2\xA0+ ;\n `a`\n", LOSES("1:8", "\xC2\xA0", "nothing") LOSES("2:2", "`a`", "a")},
      {"#define \xE7 1\n", LOSES("1:9", "\xE7", "nothing")},
      {"\xEF\xBB\xBFx := '\xE7' // \xE7\n\x1A\n", ""},
  });
}

TEST(Lint, TellsOfMarkersThatSqlDoesNotHave) {
  expectTold({
      {"BeginSql alias X\n  SELECT %Exp:a% FROM %Tabel:ORD%\n WHERE %notdel% AND %xfilial:A%\n"
       " AND A LIKE '%a:b%' AND %Temp-Table:T% %Order:A,1% %Table:A% %NoParser%\nEndSql\n",
       "unknown-sql-marker main.prw:2:23 [%Tabel:ORD%] %Tabel:ORD% is no marker of embedded SQL\n"},
      {"x := a %b: c% d\n", ""},
  });
}

TEST(Lint, TellsOfIncludesThatDoNotReadWhatTheyName) {
  EXPECT_EQ(
      lint({{"main.prw",
             "#include \"a.ch\"\n#include \"A.ch\"\n#include \"a.ch\"\n#include \"B.CH\"\n"
             "#include \"b.ch\"\n#include \"d/../a.ch\"\nx := A + B\n"},
            {"a.ch", "#define A 1\n"},
            {"B.CH", "#define B 2\n"},
            {"b.ch", ""},
            {"d/../a.ch", "#define A 1\n"}}),
      "include-case main.prw:2:1 [] A.ch differs in case from the name of the file, a.ch\n"
      "shadowed-include main.prw:5:1 [] b.ch is not read: B.CH was included under that name\n");
}

TEST(Lint, TellsOfIncludesThatNothingNeeds) {
  const auto unneeded = [](const char* line, const std::string& name) {
    return std::string("unneeded-include main.prw:") + line + ":11 [" + name + "] nothing of " +
           name + " is used\n";
  };
  EXPECT_EQ(
      lint({{"main.prw",
             "#include \"a.ch\"\n#include \"b.ch\"\n#include \"c.ch\"\n"
             "#include \"empty.ch\"\nx := 'A_ONE' // B_ONE\nSHOUT x\n"},
            {"a.ch", "#ifndef A_CH\n#define A_CH\n#define A_ONE 1\n#include \"deep.ch\"\n#endif\n"},
            {"b.ch", "#define B_ONE A_CHX\n#command SHOUTING <x> => S(<x>)\n"},
            {"c.ch", "#include \"code.ch\"\n"},
            {"deep.ch", "#define DEEP A_ONE\n"},
            {"code.ch", "Call()\n"},
            {"empty.ch", ""}}),
      unneeded("1", "a.ch") + unneeded("4", "empty.ch"));
  // Used by the condition of a conditional, by another header, as anything, in another case.
  EXPECT_EQ(lint({{"main.prw",
                   "#include \"a.ch\"\n#include \"b.ch\"\n#include \"c.ch\"\n#include \"d.ch\"\n"
                   "#ifdef A_ONE\n#endif\nb := d_one + D_ONE\n"},
                  {"a.ch", "#define A_ONE 1\n"},
                  {"b.ch", "#define B E_ONE\n"},
                  {"c.ch", "#translate <x> AND SO ON => <x>\n"},
                  {"d.ch", "#define D_ONE 1\n#include \"e.ch\"\n"},
                  {"e.ch", "#define E_ONE 1\n"}},
                 "unneeded-include"),
            "");
}

TEST(Lint, TellsOfSourcesWithAnErrorUpToThere) {
  constexpr const char* kUnknown = "unknown-directive main.prw:";
  EXPECT_EQ(
      lint({{"main.prw", "#include \"a.ch\"\n#ifdfe A\nx := 1\n#endif\n#if\n"}, {"a.ch", ""}}),
      std::string(kUnknown) + "2:1 [#ifdfe] #ifdfe is no directive\n");
  EXPECT_EQ(lint("#ifdef A\n#elif\n#endfi\n#else\n#end\n"),
            std::string(kUnknown) + "5:1 [#end] #end is no directive\n");
  EXPECT_EQ(lint({{"main.prw", "#if\n#include \"a.ch\"\n"}, {"a.ch", "#fi\n#define\n\n#if\n"}}),
            std::string(kUnknown) + "1:1 [#if] #if is no directive\n" +
                "unknown-directive a.ch:1:1 [#fi] #fi is no directive\n");
}

TEST(Lint, IsSwitchedByWordsAndComments) {
  const std::string source = "#if\nx := nPre\xE7o\n";
  const std::string both = lint(source);
  const std::string first = both.substr(0, both.find('\n') + 1);
  EXPECT_EQ(lint(source, "unknown-directive"), first);
  EXPECT_EQ(lint(source, "all,no-dropped-bytes"), first);
  EXPECT_EQ(lint(source, "all,no-all"), "");
  EXPECT_EQ(lint(source, "error=unknown-directive"), "error " + first);
  EXPECT_EQ(lint(source, "unknown-directive,error"), "error " + first);
  EXPECT_EQ(lint(source, "all,error,no-error=unknown-directive,no-dropped-bytes"), first);
  for (const char* word : {"al", "error=", "no-", "error-directives", "error=no-if"}) {
    EXPECT_NE(precomp::tWarningSet().take(word), "") << word;
  }
  EXPECT_EQ(precomp::tWarningSet().take("all,no-droped-bytes"),
            "unknown warning 'no-droped-bytes'; did you mean dropped-bytes?");
  expectTold({
      {"#if // krpre: no-unknown-directive\n#if\n", UNKNOWN("2:1", "#if")},
      {"// krpre: no-dropped-bytes, no-unknown-directive\n#if\n#if\n", UNKNOWN("3:1", "#if")},
      {"#if\n&& krpre: file no-all\n", ""},
      {"#if // krpre: no-dropped-bytes\n", UNKNOWN("1:1", "#if")},
      {"x := \"krpre: file no-all\"\n#if\n", UNKNOWN("2:1", "#if")},
  });
}

TEST(Lint, TellsOfHeadersWhereTheyAreRead) {
  EXPECT_EQ(lint({{"main.prw", "x := `1\n#include \"a.ch\"\nx := `2\n"}, {"a.ch", "#if\n"}}),
            LOSES("1:6", "`1", "1") "unknown-directive a.ch:1:1 [#if] #if is no directive\n" LOSES(
                "3:6", "`2", "2"));
}

TEST(Lint, TellsAThousandOfOneKindAtMost) {
  std::string source = repeated("#if\n", 1100) + "x := `1\n";
  const std::string told = lint(source);
  EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1002);
  EXPECT_NE(told.find("dropped-bytes main.prw:1101:6 [`1] `1 loses bytes and becomes 1\n"
                      "  not told: 100 more of unknown-directive\n"),
            std::string::npos);
}

TEST(Lint, StandsInTheManual) {
  std::ifstream file(KRPRE_SOURCES "/docs/warnings.md");
  std::string rows;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("| `") && line[3] != '-')
      rows += line.substr(0, line.find(" | ", line.find(" | ") + 3)) + "\n";
  }
  std::string expected;
  for (const precomp::tWarningText& text : precomp::warningTexts()) {
    expected += std::string("| `") + text.slug + "` | `" + text.text + "`\n";
  }
  EXPECT_EQ(rows, expected);
}

TEST(Lint, JudgesRulesByStatements) {
  const char* const rules = R"(
#command TELLER <text> => Told(<txt>)
#command TELL [<what>] => Told(<what>)
#command OPEN DOOR => OpenDoor()
#command OPEN <x> => OpenIt(<x>)
#command CLOSE <x> => CloseIt(<x>)
#command CLOSE DOOR => CloseDoor()
#define AREA (a, b) a * b
#define PING PONG
#define PONG PING
#xtranslate PRICE OF <x> => <x>:price
#xcommand WRITE <*x*> TO <y> => Write(<y>)
#xcommand ADD <x> [TO <y>] => Added(<x>[, <y>)]
)";
  EXPECT_EQ(lint(rules),
            "unknown-result-marker main.prw:2:33 [txt] the pattern has no marker txt\n"
            "abbreviated-word main.prw:3:1 [] TELL is a word of its own and an abbreviation of "
            "TELLER\n"
            "marker-only-group main.prw:3:17 [what] the group of what takes words that get lost\n"
            "never-wins main.prw:4:1 [] this rule is never used\n"
            "rules-tie main.prw:7:1 [] two rules fit equally well, and the later one is used\n"
            "blank-before-parameters main.prw:8:9 [AREA] AREA gets no parameters\n"
            "endless-rule main.prw:9:1 [] rewriting never ends: PING -> PONG -> PING\n"
            "open-ended-translation main.prw:11:23 [x] the translation ends in x, which takes all "
            "that can belong to an expression\n"
            "unreachable-pattern main.prw:12:19 [x] nothing is left for what stands behind x\n"
            "unbalanced-result main.prw:13:46 [)] the brackets of the result do not match\n");
  // What is meant, or only looks alike.
  for (const std::string_view sound :
       {"#xcommand A <x> [TO <y>] => D(<x>, <y>)\n#xcommand A <x> => C(<x>)\n",
        "#xcommand A <x> <y> => B(<x>, <y>)\n#xcommand A C <y> TO => D(<y>)\n",
        "#command OPEN <x> NOW => A(<x>)\n#xcommand OPEN <x> => B(<x>)\n",
        "#command A [<x,...>] => B(<x>)\n", "#command A <x> [<y>] [TO <z>] => F(<x>[, <y>], <z>)\n",
        "#command A [<x>] => B([<x>])\n", "#define LIMIT (10)\n#define NEXT (LIMIT + 1)\n",
        "#define A(a) A + a\n"}) {
    EXPECT_EQ(lint(sound), "") << sound;
  }
  // A statement in between is one that the first rule has taken; an included file may have one.
  for (const char* const between : {"A B\n", "#include \"b.ch\"\n"}) {
    const std::string text =
        std::string("#xcommand A B => C()\n") + between + "#xcommand A <x> => D(<x>)\n";
    EXPECT_EQ(lint({{"main.prw", text}, {"b.ch", "A B\n"}}).substr(0, 9), "rules-tie") << between;
  }
}

}  // namespace
