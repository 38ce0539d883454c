#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

TEST_F(Program, OutputsGoBesideTheirSourcesOrIntoTheDirectory) {
  write("a.prw", "x := 1\n");
  write("sub/B.PRW", "y := 2\n");
  const tChildResult result = run({"a.prw", "sub/B.PRW"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, ok("a.prw") + ok("sub/B.PRW"));
  EXPECT_EQ(output("a.ppo"), "x := 1\n");
  EXPECT_EQ(output("sub/B.ppo"), "y := 2\n");

  write("out dir/keep", "");
  EXPECT_EQ(run({"sub/B.PRW", "-oout dir", "a.prw"}).status, 0);
  EXPECT_EQ(output("out dir/a.ppo"), "x := 1\n");
  EXPECT_EQ(output("out dir/B.ppo"), "y := 2\n");
}

TEST_F(Program, OddNamesAreTakenAsTheyAre) {
  const char* kNames[] = {"[a,b].prw",    "\"q\".prw", " blank.prw", "-v.prw", "@F.prw",
                          "-F1/-I/N.prw", "{}.prw",    "a;b.prw",    "%s.prw", "\"q/x.prw"};
  for (const char* name : kNames) {
    write(name, "x := 1\n");
    EXPECT_EQ(run({"--", name}).status, 0) << name;
    EXPECT_EQ(output(fs::path(name).replace_extension(".ppo")), "x := 1\n") << name;
  }
  EXPECT_EQ(run({"-o", "\"q", "--", "-v.prw"}).status, 0);
  EXPECT_TRUE(exists("\"q/-v.ppo"));
}

TEST_F(Program, IncludeDirectoriesAreSearchedInOrderAndTheShippedHeadersLast) {
  write("a.prw",
        "#include \"one.ch\"\n#include \"two.ch\"\n#ifdef __KOREL__\nx := { ONE, TWO }\n#endif\n");
  write("env/one.ch", "#define ONE 'env'\n");
  write("first/one.ch", "#define ONE 'first'\n");
  write("\"first\"; again/two.ch", "#define TWO 'first'\n");
  write("last/two.ch", "#define TWO 'last'\n");
  EXPECT_EQ(run({"-I", "first", "--incl=\"first\"; again", "-I", "last", "a.prw"}).status, 0);
  EXPECT_NE(output("a.ppo").find("x := { 'first', 'first' }"), std::string::npos);
  EXPECT_EQ(run({"-I", "first", "-Ilast", "a.prw"}, "env").status, 0);
  EXPECT_NE(output("a.ppo").find("x := { 'env', 'last' }"), std::string::npos);

  write("b.prw", "x := __KOREL__\n");
  write("own/std.ch", "#define __KOREL__ 'own'\n");
  EXPECT_EQ(run({"b.prw"}).status, 0);
  EXPECT_EQ(output("b.ppo"), "x := 9\n");
  EXPECT_EQ(run({"b.prw", "-Iown"}).status, 0);
  EXPECT_EQ(output("b.ppo"), "x := 'own'\n");
}

TEST_F(Program, DefinesHoldFromTheFirstLine) {
  write("a.prw", "x := { A, B, C, HTTPSEND, SIGN }\n#ifdef EMPTY\ny := EMPTY 1\n#endif\n");
  EXPECT_EQ(run({"-DA=1", "-D", "B=\"b; c\"", "-DC=a=b", "-DHTTPSEND=/D /N", "-DSIGN=0", "-DEMPTY",
                 "--define=SIGN=-F1", "a.prw"})
                .status,
            0);
  EXPECT_EQ(output("a.ppo"), "x := { 1, \"b; c\", a=b, /D /N, -F1 }\n\ny := 1\n");
}

TEST_F(Program, OneFailureLeavesTheOtherFilesDoneAndIsNeverQuiet) {
  write("a.prw", "x := 1\n");
  write("bad.prw", "\n#ifdef\n");
  write("c.prw", "x := 3\n");
  for (const char* option : {"-j1", "-q"}) {
    const tChildResult result = run({option, "a.prw", "bad.prw", "c.prw"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, ok("a.prw") + "bad.prw(2) Error C2001  Syntax error:\n" +
                                 failed("bad.prw") + ok("c.prw"));
  }
  EXPECT_EQ(output("c.ppo"), "x := 3\n");
  EXPECT_FALSE(exists("bad.ppo"));
  EXPECT_EQ(run({"missing.prw"}).status, 1);
  const tChildResult quiet = run({"-qT", "a.prw"});
  EXPECT_EQ(quiet.output + quiet.errors, "");
}

TEST_F(Program, ClassicHandsEverythingOnUnchanged) {
  write("a.prw", "x := { A, B }\n");
  write("--help", "a.prw;;b.prw;");
  write("b.prw", "x := B\n");
  write("std/std.ch", "#define B 2\n");
  EXPECT_EQ(run({"--classic", "@L--help", "/DA=1 /DC", "-Istd"}).status, 0);
  EXPECT_EQ(output("a.ppo"), "x := { 1, 2 }\n");
  EXPECT_EQ(output("b.ppo"), "x := 2\n");
  EXPECT_EQ(run({"--version"}).output, run({"--classic", "-V"}).output);

  // The shipped headers are not searched.
  const tChildResult result = run({"--classic", "@Fa.prw"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.output.find("C2090  File not found std.ch\n"), std::string::npos);
}

}  // namespace
