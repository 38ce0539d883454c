// Where outputs go.

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Outputs = Program;

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

}  // namespace
