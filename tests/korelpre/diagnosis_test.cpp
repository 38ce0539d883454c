// What a session can tell of an error beside its message: the place, how it was reached, and the
// rules that made the statement.

#include "korelpre/errors/diagnostic.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "korelpre/rules/rule.h"
#include "tests/support/preprocess.h"

namespace {

std::string pointedAt(std::string_view line, int column, int endColumn) {
  if (column == 0) return {};
  const std::size_t size = endColumn > 0 ? static_cast<std::size_t>(endColumn - column) : 0;
  return " [" + std::string(line.substr(static_cast<std::size_t>(column) - 1, size)) + "]";
}

// "code slug file:line:column", then what is pointed at, then "<" and the including directives,
// then "=" and the key of each rule with its place.
std::string shown(const precomp::tDiagnosis& diagnosis) {
  std::string text = std::to_string(diagnosis.code) + " " + diagnosis.slug.c_str() + " " +
                     diagnosis.file.c_str() + ":" + std::to_string(diagnosis.line) + ":" +
                     std::to_string(diagnosis.column);
  text += pointedAt(diagnosis.sourceLine, diagnosis.column, diagnosis.endColumn);
  for (const precomp::tIncludePlace& place : diagnosis.includedFrom) {
    text += std::string(" <") + place.file.c_str() + ":" + std::to_string(place.line);
  }
  for (const precomp::tBaseXChg* rule : diagnosis.rules) {
    text += std::string(" =") + rule->key().c_str() + "@" + rule->originFile().c_str() + ":" +
            std::to_string(rule->originLine());
  }
  return text;
}

// The notes, each behind "~", with place and what they point at.
std::string shownNotes(const precomp::tDiagnosis& diagnosis) {
  std::string text;
  for (const precomp::tNote& note : diagnosis.notes) {
    text += std::string(text.empty() ? "~" : " ~") + note.message.c_str();
    if (!note.file.empty()) {
      text += std::string(" ") + note.file.c_str() + ":" + std::to_string(note.line);
    }
    text += pointedAt(note.sourceLine, note.column, note.endColumn);
  }
  return text;
}

std::string tell(tFiles files, std::string (*show)(const precomp::tDiagnosis&)) {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  for (const auto& [name, text] : files) disk.put(name, text);
  precomp::KorelPre16 session(disk);
  const tPreprocessed result = runSession(session, {"-Fmain.prw"});
  return result.error.empty() ? "none" : show(session.diagnosis());
}

std::string diagnose(tFiles files) {
  return tell(files, shown);
}

std::string diagnose(std::string_view source) {
  return diagnose({{"main.prw", source}});
}

std::string notesOf(tFiles files) {
  return tell(files, shownNotes);
}

std::string notesOf(std::string_view source) {
  return notesOf({{"main.prw", source}});
}

TEST(Diagnosis, PointsAtWhatIsWrong) {
  const std::pair<std::string_view, std::string_view> kCases[] = {
      {"x\n\t#define\n", "2001 syntax-error main.prw:2:9 []"},
      {"  #ifdef  7 // no name\n", "2001 syntax-error main.prw:1:11 [7]"},
      {"#include // where?\n// nothing\n", "2001 syntax-error main.prw:1:9 [ ]"},
      {"#command A => \"x\" [\n", "2001 syntax-error main.prw:1:19 [[]"},
      {"#ifdef 'x'\n", "2001 syntax-error main.prw:1:8 ['x']"},
      {"x := 1 ;\n  + \"open\n", "2002 unterminated-statement main.prw:2:5 [\"open]"},
      {"\tx := (a + [b)\n", "2002 unterminated-statement main.prw:1:14 [)]"},
      {"\tx := f(a, (b)\n", "2002 unterminated-statement main.prw:1:8 [(]"},
      {"x := 1 + ;\n", "2002 unterminated-statement main.prw:1:9 [ ]"},
      {"x := 1\nBeginSql alias T\nselect 1\n",
       "2002 unterminated-statement main.prw:2:1 [BeginSql]"},
      {"x := y @ z\n", "2009 invalid-reference main.prw:1:8 [@]"},
      {"f()\nx := y\x7Fz\n", "5 invalid-character main.prw:2:7 [\x7F]"},
      {"x := 1\n  EndIf\n", "2027 endif-without-if main.prw:2:3 [EndIf]"},
      {"x := 1 ; f(x) ; Loop\n", "2012 loop-without-loop main.prw:1:17 [Loop]"},
      {"  #else\n", "2070 else-without-ifdef main.prw:1:3 [#else]"},
      {"  #ifdef X\n\n", "2069 unclosed-conditional main.prw:1:3 [#ifdef]"},
      {"While .T.\n  If x\n", "2024 unclosed-structure main.prw:2:3 [If]"},
  };
  for (const auto& [source, expected] : kCases) EXPECT_EQ(diagnose(source), expected) << source;
}

TEST(Diagnosis, NamesTheFileOfTheErrorAndTheDirectivesThatLedThere) {
  EXPECT_EQ(diagnose({{"main.prw", "\n#include \"a.ch\"\n"},
                      {"a.ch", "#define A\n#include \"b.ch\"\n"},
                      {"b.ch", "\n\n#ifdef 1\n"}}),
            "2001 syntax-error b.ch:3:8 [1] <a.ch:2 <main.prw:2");
  EXPECT_EQ(diagnose({{"main.prw", "\n#include \"a.ch\"\n"}, {"a.ch", "\n  #include \"no.ch\"\n"}}),
            "2090 include-not-found a.ch:2:12 [\"no.ch\"] <main.prw:2");
  // Found when the lines are walked over, and only after the last of them.
  EXPECT_EQ(diagnose({{"main.prw", "\n#include \"a.ch\"\nx := 1\n"}, {"a.ch", "x := 1\nIf x\n"}}),
            "2024 unclosed-structure a.ch:2:1 [If] <main.prw:2");
  EXPECT_EQ(diagnose({{"main.prw", "x\n"}, {"std.ch", "#else\n"}}),
            "2070 else-without-ifdef std.ch:1:1 [#else] <main.prw:0");
  EXPECT_EQ(diagnose({{"std.ch", ""}}), "0 file-not-found main.prw:0:0");
}

TEST(Diagnosis, ListsTheRulesThatMadeTheStatement) {
  // Token by token, and by the plain writer, whose work is done once more to find out.
  EXPECT_EQ(diagnose({{"main.prw", "#include \"a.ch\"\nx := 1\n  CLOSE a IT\n"},
                      {"a.ch", "#define IT It()\n\n#command CLOSE <x> <y> => EndIf ; <y>\n"}}),
            "2027 endif-without-if main.prw:3:3 [CLOSE] =IT@a.ch:1 =CLOSE@a.ch:3");
  EXPECT_EQ(diagnose("#define STOP DONE\n#define DONE EndIf\n\nSTOP\n"),
            "2027 endif-without-if main.prw:4:1 [STOP] =STOP@main.prw:1 =DONE@main.prw:2");
  EXPECT_EQ(diagnose("#define WHEN If\nWHEN x ;\n > 1\n\nx := 2\n"),
            "2024 unclosed-structure main.prw:2:1 [WHEN] =WHEN@main.prw:1");
  EXPECT_EQ(diagnose("#define WHEN If\nWHEN x\n#define OTHER 1\n"),
            "2024 unclosed-structure main.prw:2:1 [WHEN] =WHEN@main.prw:1");
  EXPECT_EQ(diagnose("#define ONE 1\nx := ONE\nEndIf\n"),
            "2027 endif-without-if main.prw:3:1 [EndIf]");
  // A parenthesis that came from the source keeps its place, one of a rule has none.
  EXPECT_EQ(diagnose("#command SAY <x> => Put(<x>\n\tSAY hello\n"),
            "2002 unterminated-statement main.prw:2:2 [SAY] =SAY@main.prw:1");
  EXPECT_EQ(diagnose("#command SAY <*x*> => Put(1 <x>)\n\tSAY @ (\n"),
            "2009 invalid-reference main.prw:2:6 [@] =SAY@main.prw:1");
}

// Neither a rule that is gone when the error is found nor one that came later is told of.
TEST(Diagnosis, TellsNoOtherRulesThanThoseOfThatTime) {
  EXPECT_EQ(diagnose("#define WHEN If\n#xtranslate X => y\nWHEN X\n#define WHEN While\n"),
            "2024 unclosed-structure main.prw:3:1 [WHEN]");
  EXPECT_EQ(diagnose("#define A B\n#define A C\n#define STOP EndIf\nSTOP\n"),
            "2027 endif-without-if main.prw:4:1 [STOP] =STOP@main.prw:3");
  EXPECT_EQ(diagnose("If x\nz()\n#define x y\n"), "2024 unclosed-structure main.prw:1:1 [If]");
}

TEST(Diagnosis, NotesSayWhatOpenedAStructure) {
  const std::pair<std::string_view, std::string_view> kCases[] = {
      {"EndIf\n", "~no control structure is open"},
      {"If x\n While y\nEndIf\n", "~opened by While, line 2 main.prw:2 [While]"},
      {"If x\nElse\nElseIf y\n", "~opened by If, line 1 main.prw:1 [If] ~it has an Else already"},
      {"If x\nElse\nEndDo\n", "~opened by If, line 1 main.prw:1 [If]"},
      {"While x ; Begin Sequence ; If y\nExit\n",
       "~opened by Begin Sequence, line 1 main.prw:1 [Begin]"},
      {"Exit\n", ""},
      {"x := 1\nx()\n  Function A()\n",
       "~the first function begins in line 3 main.prw:3 [Function]"},
      {"Function A()\nx := 1\nLocal y\n", "~its function begins in line 1 main.prw:1 [Function]"},
      {"Namespace a\n", "~only sources of the extended language have it"},
      {"#command WHEN <x> => If <x>\n  WHEN x\nNext\n", "~opened by If, line 2 main.prw:2 [WHEN]"},
      {"Function a()\nFor i := 1 to 2\nIf x\nFunction b()\n",
       "~opened by If, line 3 main.prw:3 [If] ~opened by For, line 2 main.prw:2 [For] "
       "~still open where a function begins, line 4 main.prw:4 [Function]"},
      {"Try\nDo Case\nTry\nTry\nTry\n",
       "~opened by Try, line 5 main.prw:5 [Try] ~opened by Try, line 4 main.prw:4 [Try] "
       "~opened by Try, line 3 main.prw:3 [Try] ~opened by Do Case, line 2 main.prw:2 [Do] "
       "~still open at the end of the file"},
  };
  for (const auto& [source, expected] : kCases) EXPECT_EQ(notesOf(source), expected) << source;
  EXPECT_EQ(notesOf({{"main.prw", "#include \"a.ch\"\nNext\n"}, {"a.ch", "\n If x\n"}}),
            "~opened by If, line 2 a.ch:2 [If]");
}

TEST(Diagnosis, NotesSayWhereAFileWasSearchedAndWhatIsNearIt) {
  const std::pair<std::string_view, std::string_view> kCases[] = {
      {"inc\\oRder.ch", " ~upper and lower case differ in Inc/Order.ch"},
      {"Inc/ordre.ch", " ~did you mean Inc/Order.ch?"},
      {"TAXSE.CH", " ~did you mean taxes.ch?"},
      {"tax.prw", ""},
      {"b.ch", ""},
      {"old/std.ch", " ~add the directory of the shipped headers to the include directories"},
  };
  for (const auto& [name, expected] : kCases) {
    const std::string source = "#include \"" + std::string(name) + "\"\n";
    EXPECT_EQ(notesOf({{"main.prw", source}, {"Inc/Order.ch", ""}, {"taxes.ch", ""}, {"a.ch", ""}}),
              "~searched in: ." + std::string(expected))
        << name;
  }
}

TEST(Diagnosis, NotesSayWhatADirectiveExpects) {
  const std::pair<std::string_view, std::string_view> kCases[] = {
      {"#define\n", "~expected a name"},
      {"#include order.ch\n", "~expected a name in quotes"},
      {"#undef\n", "~expected a word"},
      {"#endif x\n", "~expected the end of the line"},
      {"x := 1 #else\n", "~a directive stands at the beginning of its line"},
      {"#define A(b c\n", "~expected ',' or ')'"},
      // The grammar alone would take any token here, for the sake of other places.
      {"#command SAY <x => Put(<x>)\n", "~expected ':', ',' or '>'"},
      {"#command SAY <x:A,B => Put(<x>)\n", "~expected a name, ',' or '>'"},
      {"#command SAY <x,...> => Put(<{x>)\n", "~expected '}'"},
      {"#command SAY <x> Put(<x>)\n", "~expected '=>'"},
      {"#xtranslate <x> => y\n", "~a pattern begins with a word"},
      {"BEGINSQL x\n", "~expected 'alias'"},
      {"#command SAY \"[\" \\] [AT <x> [,<y>] => Put(<x>)\n",
       "~expected ']' for the '[' in column 21 main.prw:1 [[]"},
      {"#command SAY <x> => Put(<x> ;\n   [, <y>)\n",
       "~expected ']' for the '[' in column 4 main.prw:2 [[]"},
      {"#command SAY [a] ] => Put(]\n", "~the ']' in column 18 has no '[' main.prw:1 []]"},
  };
  for (const auto& [source, expected] : kCases) EXPECT_EQ(notesOf(source), expected) << source;
}

TEST(Diagnosis, OfWhatARuleLeftOpenPointsAtTheCause) {
  EXPECT_EQ(diagnose("#command TELL <*x*> => Told(<x>)\n  TELL f(a\n"),
            "2002 unterminated-statement main.prw:2:9 [(] =TELL@main.prw:1");
  EXPECT_EQ(notesOf("#command TELL <*x*> => <x> Told(\\])\nTELL f(a, ;\n  b\n"),
            "~the '(' has no partner main.prw:2 [(]");
  EXPECT_EQ(notesOf({{"main.prw", "#include \"a.ch\"\nTELL IT\n"},
                     {"a.ch", "#define IT Its(1)\n\n#command TELL <x> => Told(<x>[, <x>]))\n"}}),
            "~in the result of #command TELL the ')' has no partner a.ch:3");
}

TEST(Diagnosis, OfACircleHasEveryRound) {
  const std::string told = diagnose("#xtranslate A => B\n#xtranslate B => A\nA\n");
  EXPECT_EQ(told.substr(0, 60), "2078 circular-rule main.prw:3:1 [A] =A@main.prw:1 =B@main.pr");
  EXPECT_EQ(std::count(told.begin(), told.end(), '='), 101);
}

}  // namespace
