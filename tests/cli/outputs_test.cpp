// Where outputs go, and when they are written.

#include <chrono>

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Outputs = Program;

TEST_F(Outputs, OfOneSourceMayGoToAFile) {
  write("sub/a.prw", "#include \"own.ch\"\nx := OWN\n");
  write("sub/own.ch", "#define OWN 'own'\n");
  write("out/own.ch", "#define OWN 'wrong'\n");
  EXPECT_EQ(run({"-o", "out/b.txt", "sub/a.prw"}).status, 0);
  EXPECT_NE(output("out/b.txt").find("x := 'own'"), std::string::npos);
  for (const char* directory : {"out", "out/", "out//"}) {
    EXPECT_EQ(run({"-o", directory, "sub/a.prw"}).status, 0);
    EXPECT_EQ(bytes("out/a.ppo"), bytes("out/b.txt")) << directory;
    fs::remove(path("out/a.ppo"));
  }
  EXPECT_EQ(files(), "out sub ");
}

TEST_F(Outputs, NeedTheirDirectory) {
  write("a.prw", "x := 1\n");
  write("b.prw", "x := 1\n");
  const std::pair<std::vector<std::string>, std::string> kCases[] = {
      {{"-o", "no/such/a.ppo", "a.prw"}, "no/such/: no such directory"},
      {{"-o", "a.prw", "a.prw", "b.prw"}, "a.prw: not a directory"},
  };
  for (const auto& [arguments, complaint] : kCases) {
    const tChildResult result = run(arguments);
    EXPECT_EQ(result.status, 1) << complaint;
    EXPECT_EQ(result.errors, "krpre: " + complaint + "\n");
  }
  EXPECT_EQ(files(), "a.prw b.prw ");
}

TEST_F(Outputs, NeverReplaceASource) {
  write("a.prw", "x := 1\n");
  write("b.prw", "x := 2\n");
  write("own.ch", "");
  for (const char* name :
       {"b.prw", "a.prw", "new.PRW", "own.ch", "x.apl", "x.APW", "x.ppx", "x.ppp"}) {
    EXPECT_EQ(run({"-o", name, "a.prw"}).status, 2) << name;
  }
  fs::create_symlink("a.prw", path("link"));
  EXPECT_EQ(run({"-o", "link", "a.prw"}).status, 1);
  EXPECT_EQ(bytes("a.prw") + bytes("b.prw") + bytes("own.ch"), "x := 1\nx := 2\n");
  EXPECT_EQ(files(), "a.prw b.prw link own.ch ");
}

TEST_F(Outputs, KeepTheirTimesUnlessTheyChange) {
  write("a.prw", "x := 1\n");
  ASSERT_EQ(run({"a.prw"}).status, 0);
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
  fs::last_write_time(path("a.ppo"), longAgo);
  EXPECT_EQ(run({"a.prw"}).output, ok("a.prw"));
  EXPECT_EQ(fs::last_write_time(path("a.ppo")), longAgo);
  EXPECT_EQ(run({"--always-write", "a.prw"}).status, 0);
  EXPECT_NE(fs::last_write_time(path("a.ppo")), longAgo);

  fs::last_write_time(path("a.ppo"), longAgo);
  write("a.prw", "x := 2\n");
  EXPECT_EQ(run({"a.prw"}).status, 0);
  EXPECT_EQ(output("a.ppo"), "x := 2\n");
}

}  // namespace
