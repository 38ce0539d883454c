// What a kill leaves behind, and what stands in the way.

#include <sys/stat.h>

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Failures = Program;

TEST_F(Failures, WhatAKillHasLeftGoesWithTheNextRun) {
  write("a.prw", "x := 1\n");
  const std::string trace = run({"-T", "a.prw"}).output;
  const std::size_t at = trace.find("krpre~");
  ASSERT_NE(at, std::string::npos);
  const std::string temporary = trace.substr(at, trace.find('.', at) - at);
  for (const bool changed : {false, true}) {
    write(temporary + ".ppo", "half");
    write(temporary + ".d", "half");
    if (changed) write("a.prw", "x := 2\n");
    EXPECT_EQ(run({"-q", "-MD", "a.prw"}).status, 0);
    EXPECT_EQ(files(), "a.d a.ppo a.prw ");
  }
  // Nor does what somebody else has put there hold a run up, or lead it elsewhere.
  write("other", "theirs");
  for (const std::string& name :
       {temporary + ".ppo", temporary + ".d", std::string("a.ppo"), std::string("a.d")}) {
    for (int kind = 0; kind < 3; ++kind) {
      fs::remove(path(name));
      if (kind == 0) fs::create_symlink("other", path(name));
      if (kind == 1) fs::create_hard_link(path("other"), path(name));
      const int made = kind == 2 ? mkfifo(path(name).c_str(), 0600) : 0;
      ASSERT_EQ(made, 0) << name;
      EXPECT_EQ(run({"-q", "--always-write", "-MD", "-MT", name, "a.prw"}).status, 0) << name;
      EXPECT_EQ(output("a.ppo"), "x := 2\n") << name << kind;
      EXPECT_EQ(bytes("a.d").substr(0, name.size() + 1), name + ":") << kind;
      EXPECT_EQ(bytes("other"), "theirs") << name << kind;
      EXPECT_FALSE(fs::is_symlink(path("a.ppo")) || fs::is_symlink(path("a.d"))) << name;
      EXPECT_EQ(files(), "a.d a.ppo a.prw other ");
    }
  }
}

}  // namespace
