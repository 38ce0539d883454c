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
    EXPECT_EQ(run({"-MD", "-MF", name, "a.prw"}).status, 2) << name;
  }
  for (const char* target : {"a.prw", "b.prw", "new.apw"}) {
    fs::remove(path("link"));
    fs::create_symlink(target, path("link"));
    EXPECT_EQ(run({"-o", "link", "a.prw"}).status, 1);
    EXPECT_EQ(run({"-MD", "-MF", "link", "a.prw"}).status, 1);
  }
  EXPECT_EQ(bytes("a.prw") + bytes("b.prw") + bytes("own.ch"), "x := 1\nx := 2\n");
  EXPECT_EQ(files(), "a.prw b.prw link own.ch ");
  // A link that somebody has made of our own name goes; nobody has chosen it.
  fs::create_symlink("a.prw", path("a.ppo"));
  EXPECT_EQ(run({"a.prw"}).status, 0);
  EXPECT_EQ(bytes("a.prw") + bytes("a.ppo"), "x := 1\nx := 1\r\n");
}

TEST_F(Outputs, GoThroughLinksIntoPipesAndToStandardOutputWhereTheUserSaysSo) {
  write("a.prw", "x := 1\n");
  write("older", "old");
  write("sub/keep", "");
  fs::create_symlink("older", path("link"));
  fs::create_symlink("sub/new", path("dangling"));
  for (const std::string command :
       {"-q --always-write -o NAME a.prw", "pack -o NAME a.prw", "-q -MD -MF NAME a.prw"}) {
    const auto result = [&](const std::string& name, const std::string& behind = {}) {
      return shell("krpre " + std::regex_replace(command, std::regex("NAME"), name) + behind);
    };
    EXPECT_EQ(result("plain").status, 0);
    const std::string expected = bytes("plain");
    EXPECT_EQ(result("link").status + result("dangling").status, 0) << command;
    EXPECT_EQ(bytes("older"), expected) << command;
    EXPECT_EQ(bytes("sub/new"), expected) << command;
    EXPECT_TRUE(fs::is_symlink(path("link")) && fs::is_symlink(path("dangling")));
    EXPECT_EQ(result("/dev/fd/9", " 9>&1 | cat").output.find(expected), 0U) << command;
    for (const char* name : {"-", "/dev/stdout"}) {
      EXPECT_EQ(result(name).output, expected) << command;
      EXPECT_EQ(result(name, " >>into").status, 0);
    }
    EXPECT_EQ(bytes("into"), expected + expected);
    fs::remove(path("into"));
    // A source with an error takes no older output along that is no file.
    EXPECT_EQ(shell("mkfifo pipe; cat pipe >got & krpre " +
                    std::regex_replace(command, std::regex("NAME"), "pipe") + " >told; wait")
                  .status,
              0);
    EXPECT_EQ(bytes("got"), expected) << command;
    EXPECT_EQ(run({"-o", "pipe", "none.prw"}).status, 1);
    EXPECT_TRUE(fs::is_fifo(path("pipe"))) << command;
  }
  EXPECT_EQ(run({"-o", "-", "a.prw", "plain"}).status, 2);
  EXPECT_EQ(run({"-MD", "-o", "-", "a.prw"}).status, 2);
  EXPECT_FALSE(exists("-"));
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
