// What rules make of statements, row by row: directives, a statement, and what becomes of it.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "korelpre/text/tokenise.h"
#include "tests/support/preprocess.h"

namespace {

struct tCase {
  const char* rules;
  const char* statement;
  const char* text;
};

std::string rewrite(const std::string& rules, const std::string& statement) {
  const tPreprocessed result = preprocess(rules + "\n" + statement);
  if (!result.error.empty()) return result.error;
  const auto lines = static_cast<std::size_t>(std::count(rules.begin(), rules.end(), '\n')) + 1;
  return lines < result.text.size() ? result.text.substr(lines) : "";
}

template <std::size_t kCount>
void expectAll(const tCase (&cases)[kCount]) {
  for (const tCase& row : cases) {
    EXPECT_EQ(rewrite(row.rules, row.statement), row.text) << row.rules << "\n" << row.statement;
  }
}

TEST(Rules, MatchWholeStatementsOrParts) {
  expectAll({
      {"#command CLS => Clear()", "cls", "Clear()"},
      {"#command CLS => Clear()", "cls x", "cls x"},
      {"#command CLS => Clear()", "  cls ; b := 1", "  Clear() ; b := 1"},
      {"#command CLS => Clear()", "a ; cls", "a ; cls"},
      {"#command CLS =>", "cls", ""},
      {"#translate CLS => Clear()", "x := cls + y", "x := Clear() + y"},
      {"#translate CLS =>", "x  cls y", "x y"},
      {"#translate A B => C", "a b a  B c A", "C C c A"},
      {"#command ? <*x*> => Print <x>", "? a, b ; c", "Print a, b ; c"},
      {"#xtranslate .pi. => 3.14", "2*.Pi.", "2*3.14"},
  });
}

TEST(Rules, ChooseTheBestAndTheLatestAmongEquals) {
  expectAll({
      {"#command A <x> => one(<x>)\n#command A <x> => two(<x>)", "A 1", "two(1)"},
      {"#command A <x> B <y> => one(<x>)\n#command A <*x*> => two(<x>)", "A 1 B 2", "one(1)"},
      {"#command A [B <x>] => one(<x>)\n#command A => two()", "A B 1", "one(1)"},
      {"#command A [B <x>] => one(<x>)\n#command A => two()", "A", "two()"},
      // Rules of the whole word come before those that it abbreviates.
      {"#command DISPLAY => long\n#xcommand DISP => short", "DISP", "short"},
      {"#command DISPLAY => long\n#xcommand DISP <x> => short", "DISP", "long"},
      {"#xcommand DISPLAY => exact\n#command DISPLAY => any", "DISPLAY", "any"},
      {"#define A 1\n#translate A => 2", "A a", "1 2"},
      {"#command X => c\n#translate X => t", "X", "t"},
  });
}

TEST(Rules, BoundCaptures) {
  expectAll({
      {"#command F <x> TO <y> => g(<y>,<x>)", "F a + b TO c", "g(c,a + b)"},
      {"#command F <x>, <y> => g(<x>|<y>)", "F a(1,2), {3,4}", "g(a(1,2)|{3,4})"},
      {"#command F <x> <y> => g(<x>|<y>)", "F a b", "g(a|b)"},
      {"#command F <x> <y> => g(<x>|<y>)", "F a + b c", "g(a + b|c)"},
      {"#command F <x> END => g(<x>)", "F f(END) END", "g(f(END))"},
      {"#command F <x> => g(<x>)", "F a b + c d", "g(a b + c d)"},
      {"#command F <x> ; END => g(<x>)", "F a", "F a"},
      {"#translate F <x> => g(<x>)", "F a + b", "g(a + b)"},
      {"#translate F <x> ! => g(<x>)", "F a b !", "F a b !"},
      {"#command F <x,...> => g(<x>)", "F a, b + 1,, c", "g(a, b + 1,, c)"},
      {"#command F <x> => g(<x>)", "F a, b", "F a, b"},
      {"#command F <(x)> TO <y> => g(<y>,<x>)", "F name.ext TO z", "g(z,name.ext)"},
      {"#command F <x> LEFT <y> => g(<x>,<y>)", "F LEFT(a,1) + c LEFT d", "g(LEFT(a,1) + c,d)"},
      {"#command F <x> <*r*> => g(<x>|<r>)", "F a + b c", "g(a + b|c)"},
      {"#command F <a: ON, OFF> => g(<a>)", "F off", "g(OFF)"},
      {"#command F <a: ON, OFF> => g(<a>)", "F maybe", "F maybe"},
      {"#command F <a: ON TOP, ON> [<b>] => g(<a>,<b>)", "F on top", "g(ON TOP,)"},
      {"#command F <a: ON TOP, ON> [<b>] => g(<a>,<b>)", "F on bottom", "g(ON,bottom)"},
      {"#command F <a: &> <x> => g(<x>)", "F &x", "main.prw(1) Error C2001  Syntax error:\n"},
      {"#command F <a:&,ALL> => g(<a>)", "F &", "g(&)"},
  });
}

TEST(Rules, TakeOptionalGroupsInAnyOrder) {
  const char* const kRule = "#xcommand F <x> [TO <y>] [WITH <z>] => g(<x>,<y>,<z>)";
  expectAll({
      {kRule, "F a", "g(a,,)"},
      {kRule, "F a WITH 1", "g(a,,1)"},
      {kRule, "F a WITH 1 TO b + 2", "g(a,b + 2,1)"},
      {kRule, "F a TO b TO c", "g(a,b,)"},
      {kRule, "F a UPON b", "F a UPON b"},
      {"#xcommand F [<x>] [ON] => g(<x>)", "F", "g()"},
      {"#xcommand F [A [B <x>] <y>] => g(<x>,<y>)", "F A B 1 2", "g(1,2)"},
      {"#xcommand F [A [B <x>] <y>] => g(<x>,<y>)", "F A 2", "g(,2)"},
      {"#xcommand F [[A] B] => g()", "F A B B", "g()"},
      {"#xcommand F [A [B <x>] C] [A <y>] => g(<x>,<y>)", "F A B", "g(,B)"},
      // What a group that fails has recorded is forgotten.
      {"#xcommand F [A [B <x>] C] [A B <y> D] => g(<x>,<y>)", "F A B 1 D", "g(,1)"},
      {"#xcommand F [A <o: ON> C] [A <y>] => g(<o>,<y>,<.o.>)", "F A ON", "g(,ON,.F.)"},
  });
}

TEST(Rules, RepeatResultClauses) {
  expectAll({
      {"#command STORE <v> TO <x1> [, <xn>] => <x1> := <v> [; <xn> := <v>]", "STORE 0 TO a",
       "a := 0"},
      {"#command STORE <v> TO <x1> [, <xn>] => <x1> := <v> [; <xn> := <v>]", "  STORE 0 TO a, b, c",
       "  a := 0 ; b := 0 ; c := 0"},
      {"#command F <x> [A <y> B <z>] => g(<x>[, <y>] [, <z>])", "F 1 A 2 B 3 A 4 B 5",
       "g(1, 2, 4 , 3 , 5)"},
      {"#command F [A <x>] [B <y>] => g[(<y>)]", "F A 1", "g"},
      {"#command F [A <x>] [B <y>] => g[(<x>,<y>)]", "F A 1 A 2 B 3", "g(1,3)(2,)"},
      {"#command F <x> [A <y>] => [g(<x>)]", "F 1", "g(1)"},
      {"#command F <x> [A <y>] => [g(<x>,<y>)]", "F 1 A 2 A 3", "g(1,2) g(1,3)"},
      {"#command F [A <x>] => g[ [<x>] ]h", "F A 1 A 2", "g 1 2 h"},
      {"#command F [A <x>] => g[ nothing ]", "F A 1", "g"},
      {"#command F [A <x>] => g\\[<x>\\]", "F A 1", "g[1]"},
  });
}

TEST(Rules, DressCaptures) {
  expectAll({
      {"#command F <x> => g(#<x>)", "F a + b", "g(\"a + b\")"},
      {"#command F <x> => g( #<x> )", "F 'a'+\"b\"", "g(''a'+\"b\"' )"},
      {"#command F [<x>] => g(#<x>)", "F", "g()"},
      {"#command F <x> => g(<\"x\">)", "F  a  b", "g(\"a  b\")"},
      {"#command F <x,...> => g({<\"x\">})", "F a, b(1,2) , c", "g({\"a\", \"b(1,2)\" , \"c\"})"},
      {"#command F <x,...> => g(<\"x\">)", "F a,\"b\"", "g('a\",\"\"b\"')"},
      {"#command F <x,...> => g(<\"x\">)", "F , a", "g(\"\", \"a\")"},
      {"#command F <x> => g(<\"x\">)", "F &a", "g(a)"},
      {"#command F <x> => g(<\"x\">)", "F &a.", "g(a)"},
      {"#command F <x> => g(#<x>)", "F &a", "g(\"&a\")"},
      {"#command F <x> => g( <(x)> )", "F a", "g(\"a\" )"},
      {"#command F <x> => g( <(x)> )", "F \"a\"", "g( \"a\" )"},
      {"#command F <x> => g( <(x)> )", "F 'a'", "g(\"'a'\" )"},
      {"#command F <x> => g( <(x)> )", "F (a)", "g( (a) )"},
      {"#command F <x> => g( <(x)> )", "F &a.", "g( a )"},
      {"#command F [<x>] => g(<(x)>)", "F", "g()"},
      {"#command F <(x)> => g(<(x)>)", "F a.b", "g(\"a.b\")"},
      {"#command F <x> => g( <{x}> )", "F a", "g({||  a} )"},
      {"#command F <x> => g(<{x}>)", "F {|y| y}", "g({|y| y})"},
      {"#command F <x> => g(<{x}>)", "F { |y| y }", "g({ |y| y })"},
      {"#command F <x> => g(<{x}>)", "F &a", "g({|| &a})"},
      {"#command F [<x>] => g(<{x}>)", "F", "g()"},
      {"#command F [<o: ON>] => g( <.o.> )", "F ON", "g(.T. )"},
      {"#command F [<o: ON>] => g( <.o.>, <.none.> )", "F", "g(.F.,.F. )"},
      {"#command F [A <x>] => g(<.x.>,<\"x\">)", "F A 1 A 2", "g(.T.,\"1\")"},
  });
}

TEST(Rules, KeepTheSpacingOfWhatTheyReplace) {
  expectAll({
      {"#translate ONE => 1 + 1", "x :=   ONE*2", "x :=   1 + 1*2"},
      {"#translate ONE(<x>) => <x> + 1", "y:=ONE(2)", "y:= 2+ 1"},
      {"#command F <x> =>  <x> := g(<x>)", "\tF a", "\ta := g(a)"},
      {"#translate F[A] => g [ h ] i", "F", "g  i"},
  });
}

TEST(Rules, OfDefinesWithParameters) {
  expectAll({
      {"#define F(a) (a*a)", "F(x+1) f(2) F", "(x+1*x+1) f(2) F"},
      {"#define F(a, b) g(b,a)", "F( 1 , h(2,3) )", "g(h(2,3),1)"},
      {"#define F(a,b) g(b,a)", "F(1)", "F(1)"},
      {"#define F(a,b) g(b,a)", "F(1,2,3)", "F(1,2,3)"},
      {"#define F(a) g(a,A,\"a\",aa)", "F(1)", "g(1,A,\"a\",aa)"},
      {"#define F(a) a\n#define G(a) F(a)+F(a)", "x := G(F(1))", "x := 1+ 1"},
      {"#define F(a) [a]", "F(i)", "[i]"},
      {"#define F 1\n#define F(a) a", "F(2) F", " 2 F"},
      {"#define F(a) \\<a\\>", "x F(2)", "x <2>"},
      {"#define F(a) a\n#ifdef F\n#define G yes\n#endif", "G", "yes"},
      {"#define F() 1", "F()", "main.prw(1) Error C2001  Syntax error:\n"},
  });
}

TEST(Rules, WithoutSoundGroupsOrAFirstWordAreSyntaxErrors) {
  for (const char* rule : {"[A] B => c", "<x> A => c", "A [B => c", "A B] => c", "A => [b",
                           "A => b]", "[[A]] => c", "A <x => c", "A B"}) {
    for (const char* directive : {"#command ", "#xtranslate "}) {
      const std::string source = "\n" + std::string(directive) + rule + "\nA B";
      EXPECT_EQ(preprocess(source).error, "main.prw(2) Error C2001  Syntax error:\n") << source;
    }
  }
  const std::string nested = std::string(300, '[') + "B" + std::string(300, ']');
  EXPECT_EQ(rewrite("#command A " + nested + " => c", "A B"),
            "main.prw(1) Error C2001  Syntax error:\n");
}

TEST(Rules, TakeEffectBehindTheirLineAndFromIncludesAtOnce) {
  EXPECT_EQ(preprocess("CLS\n#command CLS => c()\nCLS").text, "CLS\n\nc()");
  EXPECT_EQ(preprocess("#command A => b #command C => d\nA\nC").text, "\nb\nd");
  EXPECT_EQ(preprocess("#command A ; // c\n  <x> ;\n => b(<x>)\nA 1").text, "\n\n\nb(1)");
  const tPreprocessed included = preprocessFiles(
      {{"main.prw", "CLS\n#include \"h.ch\"\nCLS"}, {"h.ch", "#command CLS => c()\n"}});
  EXPECT_EQ(included.text, "c()\n#line 1 \"h.ch\"\n#line 3 \"main.prw\"\nc()");
  EXPECT_EQ(preprocess("#ifdef X\n#command A => b\n#endif\nA").text, "\n\n\nA");
}

// Applies rules as the look-up of tables tells, always from the first token on.
std::string rewriteFromTheStart(precomp::KorelPreYaccClass& session, precomp::tTknString& t) {
  using precomp::tXChgArray;
  const auto apply = [&](tXChgArray& table, int at, int start, unsigned char exact) {
    int first = 0;
    int last = 0;
    const tString word = t.getToken(at);
    return !word.empty() && table.Find(word, first, last, exact) != 0 &&
           table.replace(&session, first, last, start, &t);
  };
  const auto applyAt = [&](int at) {
    int first = 0;
    int last = 0;
    if (apply(*session.defines(), at, at, 0)) return true;
    const bool found = session.translates()->Find(t.getToken(at), first, last, 0) != 0;
    return apply(*session.translates(), at, at, found ? 0 : 1);
  };
  t.startSteps();
  for (int rewrites = 0; rewrites <= 100; ++rewrites) {
    bool applied = false;
    for (int at = 0; at < t.count() && !applied; ++at) applied = applyAt(at);
    if (!applied) applied = apply(*session.commands(), 0, -1, 1);
    if (!applied) applied = apply(*session.commands(), 0, -1, 0);
    if (applied) continue;
    tString text;
    t.appendText(text);
    return std::string(text.view());
  }
  return "circular";
}

TEST(Rules, GiveWhatLookingFromTheStartGives) {
  const char* const kRules =
      "#define A B C\n#define F(x) (x A)\n#define Q R\n"
      "#translate B <x> D => E <x>\n#xtranslate E <*x*> Q => Q <x>\n#translate (R) => A\n"
      "#translate C E => D\n#translate LONGWORD [B] => A Q\n#xtranslate R <x>, => <x> D\n"
      "#command B <x> => C <x>\n#command LONGWORD <x,...> => x <x>\n#xcommand long <x> => R\n";
  const std::vector<std::string> kWords = {"A", "B", "C", "D",    "E", "F", "Q",
                                           "R", "(", ")", "long", ",", "x", "+"};
  std::mt19937 random(7);
  int rewritten = 0;
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    for (std::size_t left = 1 + random() % 9; left > 0; --left) {
      text += kWords[random() % kWords.size()] + (left > 1 ? " " : "");
    }
    const std::string quick = rewrite(kRules, text);
    tMemoryProcessor processor;
    processor.run("rules", kRules);
    precomp::tTknString statement(1);
    const std::string line = text + "\r\n";
    precomp::tokenisePlain(line.data(), line.data() + line.size(), 1, statement);
    const std::string slow = rewriteFromTheStart(*processor, statement);
    if (slow == "circular") {
      EXPECT_NE(quick.find("C2078"), std::string::npos) << text;
    } else if (quick.find("C2002") == std::string::npos) {  // brackets that nest
      EXPECT_EQ(quick, slow) << text;
      if (slow != text) ++rewritten;
    }
  }
  EXPECT_GT(rewritten, 500);
}

TEST(Rules, AreLookedForAgainAfterEachRewrite) {
  expectAll({
      {"#translate A B => C\n#define X B", "A X", "C"},
      {"#translate A B => C\n#translate A D => E\n#define X B", "A D A X A Y", "E C A Y"},
      {"#command GO <x> => x := <x>\n#define ONE 1", "GO ONE", "x := 1"},
      {"#command GO <x> => STOP <x>\n#command STOP <x> => s(<x>)", " GO a", " s(a)"},
      {"#command A => B\n#command B => A", "\nA",
       "main.prw(4) Error C2078  Circular #translate/#command/#define\n"},
  });
}

}  // namespace
