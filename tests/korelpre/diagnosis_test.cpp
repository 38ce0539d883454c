// What a session can tell of an error beside its message: the place, how it was reached, and the
// rules that made the statement.

#include "korelpre/errors/diagnostic.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "korelpre/rules/rule.h"
#include "tests/support/preprocess.h"

namespace {

// "code slug file:line:column", then what the caret points at, then "<" and the including
// directives, then "=" and the key of each rule with its place.
std::string shown(const precomp::tDiagnosis& diagnosis) {
  std::string text = std::to_string(diagnosis.code) + " " + diagnosis.slug.c_str() + " " +
                     diagnosis.file.c_str() + ":" + std::to_string(diagnosis.line) + ":" +
                     std::to_string(diagnosis.column);
  if (diagnosis.column > 0) {
    text += " [";
    text += diagnosis.sourceLine.view().substr(static_cast<std::size_t>(diagnosis.column) - 1);
    text += "]";
  }
  for (const precomp::tIncludePlace& place : diagnosis.includedFrom) {
    text += std::string(" <") + place.file.c_str() + ":" + std::to_string(place.line);
  }
  for (const precomp::tBaseXChg* rule : diagnosis.rules) {
    text += std::string(" =") + rule->key().c_str() + "@" + rule->originFile().c_str() + ":" +
            std::to_string(rule->originLine());
  }
  return text;
}

std::string diagnose(tFiles files) {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  for (const auto& [name, text] : files) disk.put(name, text);
  precomp::KorelPre16 session(disk);
  const tPreprocessed result = runSession(session, {"-Fmain.prw"});
  return result.error.empty() ? "none" : shown(session.diagnosis());
}

std::string diagnose(std::string_view source) {
  return diagnose({{"main.prw", source}});
}

TEST(Diagnosis, PointsAtWhatIsWrong) {
  const std::pair<std::string_view, std::string_view> kCases[] = {
      {"x\n\t#define\n", "2001 syntax-error main.prw:2:9 []"},
      {"  #ifdef  7 // no name\n", "2001 syntax-error main.prw:1:11 [7 // no name]"},
      {"#include // where?\n// nothing\n", "2001 syntax-error main.prw:1:9 [ // where?]"},
      {"#command A => \"x\" [\n", "2001 syntax-error main.prw:1:1 [#command A => \"x\" []"},
      {"#ifdef 'x'\n", "2001 syntax-error main.prw:1:8 ['x']"},
      {"x := 1 ;\n  + \"open\n", "2002 unterminated-statement main.prw:2:5 [\"open]"},
      {"\tx := (a + [b)\n", "2002 unterminated-statement main.prw:1:14 [)]"},
      {"\tx := f(a, (b)\n", "2002 unterminated-statement main.prw:1:8 [(a, (b)]"},
      {"x := 1 + ;\n", "2002 unterminated-statement main.prw:1:9 [ ;]"},
      {"x := y @ z\n", "2009 invalid-reference main.prw:1:8 [@ z]"},
      {"f()\nx := y\x7Fz\n", "5 invalid-character main.prw:2:7 [\x7Fz]"},
      {"x := 1\n  EndIf\n", "2027 endif-without-if main.prw:2:3 [EndIf]"},
      {"x := 1 ; f(x) ; Loop\n", "2012 loop-without-loop main.prw:1:17 [Loop]"},
      {"  #else\n", "2070 else-without-ifdef main.prw:1:3 [#else]"},
      {"  #ifdef X\n\n", "2069 unclosed-conditional main.prw:1:3 [#ifdef X]"},
      {"While .T.\n  If x\n", "2024 unclosed-structure main.prw:2:3 [If x]"},
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
            "2024 unclosed-structure a.ch:2:1 [If x] <main.prw:2");
  EXPECT_EQ(diagnose({{"main.prw", "x\n"}, {"std.ch", "#else\n"}}),
            "2070 else-without-ifdef std.ch:1:1 [#else] <main.prw:0");
  EXPECT_EQ(diagnose({{"std.ch", ""}}), "0 file-not-found main.prw:0:0");
}

TEST(Diagnosis, ListsTheRulesThatMadeTheStatement) {
  // Token by token, and by the plain writer, whose work is done once more to find out.
  EXPECT_EQ(diagnose({{"main.prw", "#include \"a.ch\"\nx := 1\n  CLOSE a IT\n"},
                      {"a.ch", "#define IT It()\n\n#command CLOSE <x> <y> => EndIf ; <y>\n"}}),
            "2027 endif-without-if main.prw:3:3 [CLOSE a IT] =IT@a.ch:1 =CLOSE@a.ch:3");
  EXPECT_EQ(diagnose("#define STOP DONE\n#define DONE EndIf\n\nSTOP\n"),
            "2027 endif-without-if main.prw:4:1 [STOP] =STOP@main.prw:1 =DONE@main.prw:2");
  EXPECT_EQ(diagnose("#define WHEN If\nWHEN x ;\n > 1\n\nx := 2\n"),
            "2024 unclosed-structure main.prw:2:1 [WHEN x ;] =WHEN@main.prw:1");
  EXPECT_EQ(diagnose("#define WHEN If\nWHEN x\n#define OTHER 1\n"),
            "2024 unclosed-structure main.prw:2:1 [WHEN x] =WHEN@main.prw:1");
  EXPECT_EQ(diagnose("#define ONE 1\nx := ONE\nEndIf\n"),
            "2027 endif-without-if main.prw:3:1 [EndIf]");
  // A parenthesis that came from the source keeps its place, one of a rule has none.
  EXPECT_EQ(diagnose("#command SAY <x> => Put(<x>\n\tSAY hello\n"),
            "2002 unterminated-statement main.prw:2:2 [SAY hello] =SAY@main.prw:1");
  EXPECT_EQ(diagnose("#command SAY <*x*> => Put(1 <x>)\n\tSAY @ (\n"),
            "2009 invalid-reference main.prw:2:6 [@ (] =SAY@main.prw:1");
}

// Neither a rule that is gone when the error is found nor one that came later is told of.
TEST(Diagnosis, TellsNoOtherRulesThanThoseOfThatTime) {
  EXPECT_EQ(diagnose("#define WHEN If\n#xtranslate X => y\nWHEN X\n#define WHEN While\n"),
            "2024 unclosed-structure main.prw:3:1 [WHEN X]");
  EXPECT_EQ(diagnose("#define A B\n#define A C\n#define STOP EndIf\nSTOP\n"),
            "2027 endif-without-if main.prw:4:1 [STOP] =STOP@main.prw:3");
  EXPECT_EQ(diagnose("If x\nz()\n#define x y\n"), "2024 unclosed-structure main.prw:1:1 [If x]");
}

TEST(Diagnosis, OfACircleHasEveryRound) {
  const std::string told = diagnose("#xtranslate A => B\n#xtranslate B => A\nA\n");
  EXPECT_EQ(told.substr(0, 60), "2078 circular-rule main.prw:3:1 [A] =A@main.prw:1 =B@main.pr");
  EXPECT_EQ(std::count(told.begin(), told.end(), '='), 101);
}

}  // namespace
