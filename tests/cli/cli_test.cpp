#include <gtest/gtest.h>

#include <cctype>
#include <sstream>

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

TEST_F(Program, HelpNamesEveryOption) {
  const tChildResult result = run({"--help", "--nonsense"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  for (const char* option :
       {"\n  -o, --output=NAME          write", "\n  -MF FILE                   write",
        "\n  -I, --include=DIR ", "\n  -D, --define=NAME[=VALUE]  define", "\n  -T, --trace ",
        "\n  -q, --quiet ", "\n      --classic ", "\n      --help ", "\n      --version "}) {
    EXPECT_NE(result.output.find(option), std::string::npos) << option;
  }
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) EXPECT_LT(line.size(), 80U) << line;
}

TEST_F(Program, VersionIsTheBannerOfTheLibrary) {
  const tChildResult result = run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.output.find("KOREL Preprocessor 9.x - Build 7.00.240223P - "),
            std::string::npos);
  EXPECT_EQ(result.output, run({"--classic", "-V"}).output);
}

TEST_F(Program, WrongUsageEndsWithAHintAndTouchesNothing) {
  write("a.prw", "x := 1\n");
  const std::pair<std::vector<std::string>, std::string> kCases[] = {
      {{}, "no file to preprocess"},
      {{"-q"}, "no file to preprocess"},
      {{"-x", "a.prw"}, "unknown option -x"},
      {{"a.prw", "-Tx"}, "unknown option -x"},
      {{"--nonsense=1", "a.prw"}, "unknown option --nonsense=1"},
      {{"--quiet=1", "a.prw"}, "--quiet takes no value"},
      {{"a.prw", "-D"}, "-D needs a value"},
      {{"a.prw", "--define"}, "--define needs a value"},
      {{"a.prw", "-o", ""}, "-o: the name of the output is empty"},
      {{"a.prw", "-o", "x", "-oy"}, "-o: given twice"},
      {{"a.prw", "--output", "x", "-oy"}, "-o: given twice"},
      {{"a.prw", "--include="}, "--include: the name of the directory is empty"},
      {{"a.prw", "-I", ""}, "-I: the name of the directory is empty"},
      {{"a.prw", "-D", "1+2"}, "-D 1+2: a name is made of letters, digits and underscores"},
      {{"a.prw", ""}, "FILE: the name is empty"},
      {{"-q", "--classic", "@Fa.prw"}, "--classic must be the first argument"},
  };
  for (const auto& [arguments, complaint] : kCases) {
    const tChildResult result = run(arguments);
    EXPECT_EQ(result.status, 2) << complaint;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "krpre: " + complaint + "\nTry 'krpre --help'.\n");
  }
  EXPECT_FALSE(exists("a.ppo"));
}

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

TEST_F(Program, LongOptionsMeanWhatTheShortOnesMean) {
  write("a.prw", "#include \"one.ch\"\nx := { ONE, TWO }\n");
  write("first/one.ch", "#define ONE 1\n");
  write("out/keep", "");
  const tChildResult result =
      run({"--output=out", "--include", "first", "--define=TWO=2", "--quiet", "--trace", "a.prw"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_NE(output("out/a.ppo").find("x := { 1, 2 }"), std::string::npos);
  EXPECT_NE(run({"--trac", "a.prw", "-Ifirst"}).output.find("[TRACE]"), std::string::npos);
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
  write("first, again/two.ch", "#define TWO 'first'\n");
  write("last/two.ch", "#define TWO 'last'\n");
  EXPECT_EQ(run({"-I", "first", "-Ifirst, again", "-I", "last", "a.prw"}).status, 0);
  EXPECT_NE(output("a.ppo").find("x := { 'first', 'first' }"), std::string::npos);
  EXPECT_EQ(run({"-I", "first", "-I", "last", "a.prw"}, "env").status, 0);
  EXPECT_NE(output("a.ppo").find("x := { 'env', 'last' }"), std::string::npos);

  write("b.prw", "x := __KOREL__\n");
  write("own/std.ch", "#define __KOREL__ 'own'\n");
  EXPECT_EQ(run({"b.prw"}).status, 0);
  EXPECT_EQ(output("b.ppo"), "x := 9\n");
  EXPECT_EQ(run({"b.prw", "-Iown"}).status, 0);
  EXPECT_EQ(output("b.ppo"), "x := 'own'\n");
}

TEST_F(Program, HeadersBesideASourceAreFoundWhereverTheOutputGoes) {
  fs::create_directories(directory_.path() / "one");
  fs::create_directories(directory_.path() / "two");
  fs::create_directories(directory_.path() / "out");
  for (const char* number : {"one", "two"}) {
    const std::string name = number;
    write(name + "/" + name + ".prw", "#include \"own.ch\"\nx := OWN\n");
    write(name + "/own.ch", "#define OWN \"" + name + "\"\n");
  }
  const tChildResult result = run({"-o", "out", "one/one.prw", "two/two.prw"});
  EXPECT_EQ(result.status, 0) << result.output;
  EXPECT_NE(output("out/one.ppo").find("x := \"one\""), std::string::npos);
  EXPECT_NE(output("out/two.ppo").find("x := \"two\""), std::string::npos);
}

TEST_F(Program, DefinesHoldFromTheFirstLine) {
  write("a.prw", "x := { A, B, C, HTTPSEND, SIGN }\n#ifdef EMPTY\ny := EMPTY 1\n#endif\n");
  const tChildResult result = run(
      {"-DA=1", "-D", "B=\"b;c\"", "-DC=a=b", "-DHTTPSEND=/d", "-DSIGN=-1", "-DEMPTY", "a.prw"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(output("a.ppo"), "x := { 1, \"b;c\", a=b, /d, -1 }\n\ny := 1\n");
}

TEST_F(Program, OneFailureLeavesTheOtherFilesDone) {
  write("a.prw", "x := 1\n");
  write("bad.prw", "\n#ifdef\n");
  write("c.prw", "x := 3\n");
  const std::string messages =
      ok("a.prw") + "bad.prw(2) Error C2001  Syntax error:\n" + failed("bad.prw") + ok("c.prw");
  const tChildResult result = run({"a.prw", "bad.prw", "c.prw"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, messages);
  EXPECT_EQ(output("c.ppo"), "x := 3\n");
  EXPECT_FALSE(exists("bad.ppo"));

  EXPECT_EQ(run({"missing.prw"}).status, 1);

  const tChildResult quiet = run({"-q", "a.prw", "bad.prw", "c.prw"});
  EXPECT_EQ(quiet.status, 1);
  EXPECT_EQ(quiet.output, messages);
}

TEST_F(Program, QuietRunsPrintNothing) {
  write("a.prw", "x := 1\n");
  const tChildResult result = run({"-qT", "a.prw"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output + result.errors, "");
  EXPECT_EQ(output("a.ppo"), "x := 1\n");
}

TEST_F(Program, ClassicHandsEverythingOnUnchanged) {
  write("a.prw", "x := { A, B }\n");
  write("--help", "a.prw;;b.prw;");
  write("b.prw", "x := B\n");
  write("std/std.ch", "#define B 2\n");
  EXPECT_EQ(run({"--classic", "@L--help", "/DA=1 /DC", "-Istd"}).status, 0);
  EXPECT_EQ(output("a.ppo"), "x := { 1, 2 }\n");
  EXPECT_EQ(output("b.ppo"), "x := 2\n");

  EXPECT_EQ(run({"--classic"}).status, 0);
  EXPECT_EQ(run({"--classic", "--help"}).output, "");

  // The shipped headers are not searched.
  const tChildResult result = run({"--classic", "@Fa.prw"});
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.output.find("C2090  File not found std.ch\n"), std::string::npos);
}

}  // namespace
