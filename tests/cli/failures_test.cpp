// What a failure, or a kill, leaves behind.

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Failures = Program;

std::string linesOf(const std::string& line, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += line;
  return text;
}

// Kills the program after this many microseconds. Whether it was still running.
bool killAfter(const fs::path& directory, unsigned delay) {
  const pid_t child = fork();
  if (child == 0) {
    if (chdir(directory.c_str()) != 0) _exit(126);
    execl(KRPRE_PROGRAM, "krpre", "-q", "-MD", "-j2", "a.prw", "b.prw", nullptr);
    _exit(127);
  }
  usleep(delay);
  kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);
  return WIFSIGNALED(status);
}

TEST_F(Failures, AKillLeavesTheOldOutputOrTheNewOne) {
  const int lines = 20000;
  const std::string kTexts[] = {linesOf("x := 1\n", lines), linesOf("y := 22\n", lines)};
  const std::string kOutputs[] = {linesOf("x := 1\r\n", lines), linesOf("y := 22\r\n", lines)};
  write("a.prw", kTexts[0]);
  write("b.prw", kTexts[0]);
  const auto begun = std::chrono::steady_clock::now();
  ASSERT_EQ(run({"-q", "-MD", "a.prw", "b.prw"}).status, 0);
  const auto whole = std::chrono::duration_cast<std::chrono::microseconds>(
                         std::chrono::steady_clock::now() - begun)
                         .count();
  const std::string rule = bytes("a.d");
  std::mt19937 random(1);
  int killed = 0;
  for (int round = 1; round <= 50; ++round) {
    write("a.prw", kTexts[round % 2]);
    write("b.prw", kTexts[round % 2]);
    if (killAfter(directory_.path(),
                  static_cast<unsigned>(random() % static_cast<unsigned>(whole))))
      ++killed;
    for (const char* output : {"a.ppo", "b.ppo"}) {
      const std::string found = bytes(output);
      EXPECT_TRUE(found == kOutputs[0] || found == kOutputs[1]) << found.size();
    }
    EXPECT_EQ(bytes("a.d"), rule);
  }
  EXPECT_GT(killed, 10);
  EXPECT_EQ(run({"-q", "-MD", "a.prw", "b.prw"}).status, 0);
  EXPECT_EQ(bytes("a.ppo"), kOutputs[0]);
  EXPECT_EQ(files(), "a.d a.ppo a.prw b.d b.ppo b.prw ");
}

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
}

TEST_F(Failures, AFullDiskLeavesNothingCut) {
  write("a.prw", linesOf("x := 1\n", 20000));
  write("b.prw", "y := 1\n");
  write("a.ppo", "old");
  // Files may have 8 blocks of 512 bytes; 160,000 are wanted.
  const tChildResult result = shell("ulimit -f 8; krpre -MD a.prw b.prw");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "KOREL Preprocessor: Error creating a.ppo.\n" + failed("a.prw", -1) + ok("b.prw"));
  EXPECT_EQ(output("b.ppo"), "y := 1\n");
  EXPECT_EQ(files(), "a.prw b.d b.ppo b.prw ");

  // The output fits, its dependency file does not.
  const std::string target(5000, 'x');
  const tChildResult cut = shell("ulimit -f 8; krpre -q -MD -MT " + target + " b.prw");
  EXPECT_EQ(cut.status, 1);
  EXPECT_EQ(cut.errors, "krpre: b.d: File too large\n");
  EXPECT_FALSE(exists("b.ppo"));
}

TEST_F(Failures, AClosedOutputNeverBecomesAFile) {
  write("a.prw", "x := 1\n");
  const tChildResult result = shell("krpre a.prw >&-");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "krpre: cannot write messages: Bad file descriptor\n");
  EXPECT_EQ(output("a.ppo"), "x := 1\n");
  for (const std::string arguments : {"a.prw", "--help", "--version", "--completions=bash",
                                      "pack b", "rules a.prw", "--classic -v"}) {
    write("b", "x");
    const tChildResult full = shell("krpre " + arguments + " >/dev/full");
    EXPECT_EQ(full.errors, "krpre: cannot write messages: No space left on device\n") << arguments;
    EXPECT_EQ(full.status, 1) << arguments;
    EXPECT_EQ(shell("(krpre " + arguments + "; echo $? >status) | true; cat status").output, "0\n");
  }
  EXPECT_EQ(shell("krpre -q a.prw <&- >&- 2>&-").status, 0);
}

TEST_F(Failures, AClosedOutputIsNotTheFileThatAnotherThreadWrites) {
  const int lines = 20000;
  const std::string expected = linesOf("x := 1\r\n", lines);
  write("b.prw", linesOf("x := 1\n", lines));
  // In some round the message of the first comes while the second is written.
  for (int fewer = 0; fewer < lines / 2; fewer += lines / 80) {
    write("a.prw", linesOf("x := 1\n", lines - fewer));
    const tChildResult result = shell("krpre -j2 --always-write a.prw b.prw >&-");
    EXPECT_EQ(result.errors, "krpre: cannot write messages: Bad file descriptor\n");
    EXPECT_TRUE(bytes("b.ppo") == expected) << fewer;
  }
}

}  // namespace
