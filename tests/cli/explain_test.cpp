// `krpre explain` and `krpre rules`, run as a child in a directory of its own.

#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/program.h"

namespace {

const char kHeader[] =
    "#define ROW 5\n"
    "#command SHOW <what> => Plain(<what>)\n"
    "#command SHOW <what> [AT <row>] [, <more>] => ;\n"
    "   Placed(<row>, <what>[, <more>])\n"
    "#command SHOW ALL => All()\n"
    "#xtranslate TWICE(<x>) => (<x> + <x>)\n";

class Query : public Program {
 protected:
  Query() {
    write("std.ch", "");
    write("sub/show.ch", kHeader);
    write("a.prw",
          "#include \"sub/show.ch\"\n"
          "// nothing\n"
          "Show TWICE(a) , b;\n"
          "  , c AT ROW\n"
          "Beep()\n"
          "SHOUT\n");
  }
};

TEST_F(Query, ExplainShowsEveryRewriteWithItsRuleAndWhyOthersLost) {
  const char kStory[] =
      "a.prw:3 to line 4\n"
      "    Show TWICE(a) , b  , c AT ROW\n"
      "\n"
      "1.  #xtranslate TWICE(<x>) => (<x> + <x>)\n"
      "      sub/show.ch:6\n"
      "      x  a\n"
      "    Show (a + a) , b  , c AT ROW\n"
      "\n"
      "2.  #define ROW 5\n"
      "      sub/show.ch:1\n"
      "    Show (a + a) , b  , c AT 5\n"
      "\n"
      "3.  #command SHOW <what> [AT <row>] [, <more>] => Placed(<row>, <what>[, <more>])\n"
      "      sub/show.ch:3\n"
      "      what  (a + a)\n"
      "      row   5\n"
      "      more  b | c\n"
      "    Placed(5, (a + a), b, c)\n"
      "    not taken:\n"
      "      #command SHOW ALL => All()\n"
      "        sub/show.ch:5  fails at ALL: found '('\n"
      "      #command SHOW <what> => Plain(<what>)\n"
      "        sub/show.ch:2  ends before ','\n"
      "\n"
      "Final form after 3 rewrites.\n";
  for (const char* place : {"a.prw:3", "a.prw:4"}) {
    const tChildResult result = run({"explain", place});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, kStory) << place;
    EXPECT_EQ(result.errors, "");
  }
  EXPECT_FALSE(exists("a.ppo"));
}

TEST_F(Query, ExplainTellsWhichRulesWereTriedInVainAndWhereAnErrorEndedIt) {
  write("b.prw", "#include \"sub/show.ch\"\nShow\n#xtranslate LOOP(<x>) => LOOP((<x>))\nLOOP(1)\n");
  const tChildResult tried = run({"explain", "b.prw:2"});
  // An error elsewhere in the file is told behind the story.
  EXPECT_EQ(tried.status, 1);
  EXPECT_NE(
      tried.output.find("No rule applies.\n  tried:\n      #command SHOW ALL => All()\n"
                        "        sub/show.ch:5  fails at ALL: found the end of the statement\n"),
      std::string::npos)
      << tried.output;
  EXPECT_NE(tried.errors.find("b.prw(4) Error C2078"), std::string::npos);
  const tChildResult looped = run({"explain", "b.prw:4"});
  EXPECT_EQ(looped.status, 1);
  EXPECT_NE(looped.output.find("    ... 78 rewrites ...\n"), std::string::npos);
  EXPECT_NE(looped.output.find("\nAn error ended the rewriting after 101 rewrites.\n"),
            std::string::npos);
}

TEST_F(Query, WhereNothingStandsIsSaidSo) {
  for (const char* place : {"a.prw:1", "a.prw:2", "a.prw:99"}) {
    const tChildResult result = run({"explain", place});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors.find(std::string("krpre: ") + place + ": no statement on this line"),
              0U);
  }
  EXPECT_NE(run({"explain", "none.prw:1"}).errors.find("Cannot copy none.prw"), std::string::npos);
}

TEST_F(Query, RulesListsWhatIsInForceWithItsOrigin) {
  EXPECT_EQ(run({"rules", "a.prw", "-D", "ROW2=7"}).output,
            "sub/show.ch:1: define: ROW  => 5\n"
            "command line: define: ROW2  => 7\n"
            "sub/show.ch:6: translation: TWICE ( x)  => ( x + x )\n"
            "sub/show.ch:2: command: #xcommand SHOW what => Plain ( what )\n"
            "sub/show.ch:3: command: #xcommand SHOW what[AT row][, more] => Placed ( row , what [, "
            "more ])\n"
            "sub/show.ch:5: command: #xcommand SHOW ALL  => All ( )\n");
  // As a statement finds them: abbreviated and in any case, but a define as it is written.
  EXPECT_EQ(run({"rules", "--key", "twice", "a.prw"}).output,
            "sub/show.ch:6: translation: TWICE ( x)  => ( x + x )\n");
  EXPECT_EQ(run({"rules", "--key", "row", "a.prw"}).output, "");
}

TEST_F(Query, JsonHoldsTheSameAndStaysValidWhateverTheBytes) {
  const auto story = nlohmann::json::parse(run({"explain", "--json", "a.prw:4"}).output);
  EXPECT_EQ(story["line"], 3);
  EXPECT_EQ(story["lastLine"], 4);
  ASSERT_EQ(story["rewrites"].size(), 3U);
  EXPECT_EQ(story["rewrites"][2]["markers"][2],
            nlohmann::json::parse(R"({"name": "more", "texts": ["b", "c"]})"));
  EXPECT_EQ(story["rewrites"][2]["lost"][0]["failedMarker"], "ALL");
  EXPECT_EQ(story["final"], "Placed(5, (a + a), b, c)");

  write("c.prw", "#define A \"\xE7\x01\xFF\"\nx := A\n");
  EXPECT_EQ(nlohmann::json::parse(run({"explain", "--json", "c.prw:2"}).output)["before"],
            "x := A");
  EXPECT_EQ(nlohmann::json::parse(run({"rules", "--json", "c.prw"}).output)[0]["line"], 1);
}

TEST_F(Query, ColourIsForTerminalsOrOnRequest) {
  const std::string plain = run({"explain", "a.prw:3"}).output;
  EXPECT_EQ(plain.find('\033'), std::string::npos);
  const std::string coloured = run({"explain", "--color=always", "a.prw:3"}).output;
  EXPECT_NE(coloured.find("    Show (a + a) , b  , c AT \033[32m5\033[0m\n"), std::string::npos)
      << coloured;
}

TEST(Readme, ShowsWhatExplainPrints) {
  const tChildResult result =
      runChild({KRPRE_PROGRAM, "explain", "examples/orders/orders.prw:65"}, KRPRE_SOURCES);
  ASSERT_EQ(result.status, 0);
  std::string sample;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    sample += (line.empty() ? "" : "    " + line) + "\n";
  }
  EXPECT_NE(readBytes(KRPRE_SOURCES "/README.md").find(sample), std::string::npos) << sample;
}

}  // namespace
