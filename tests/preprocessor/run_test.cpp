#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "korelpre/headers/headerimage.h"
#include "lib_base/fatal.h"
#include "lib_base/misc.h"
#include "testrun.h"

TEST(Run, VersionRequestPrintsTheBanner) {
  tSources disk;
  disk.put("-v", "x");
  const tRun run = runOver(disk, {"-V"});
  EXPECT_EQ(run.result, 0);
  EXPECT_TRUE(run.printed.starts_with("\n" + std::string(70, '-') + "\nKOREL Preprocessor 9.x - "));
  std::string build = KRPRE_VERSION "P";
  build.insert(build.find('.') + 1, "0");  // the second number has two digits
  EXPECT_NE(run.printed.find("Build " + build + " - "), std::string::npos) << run.printed;
  EXPECT_TRUE(run.printed.ends_with(" \nThe krpre authors - Released under the MIT licence.\n\n"));
  EXPECT_EQ(disk.count(), 1U);
  EXPECT_EQ(runOver(disk, {"-v", "-v"}).printed, "");
}

TEST(Run, NoFilesIsSuccess) {
  tSources disk;
  EXPECT_EQ(runOver(disk, {}).result, 0);
  EXPECT_EQ(runOver(disk, {"@F", "@F  ", "@Lnone", "-T"}).printed, "");
  EXPECT_EQ(runPreprocessor(disk, -3, nullptr), 0);
  EXPECT_EQ(runPreprocessor(disk, 3, nullptr), 0);
}

TEST(Run, ASavedHeaderThatIsDamagedIsMadeAnew) {
  tSources disk;
  disk.put("std.ch", "#define A 1\n");
  disk.put("a.prw", "x := A\n");
  ASSERT_EQ(runOver(disk, {"@Fa.prw", "@@PRECOMPILED=kept"}).result, 0);
  const std::string name = "kept/" + disk.namesIn("kept").at(0);
  const std::string sound = fileText(disk, name);
  std::string damaged = sound;
  precomp::tImageHead head;
  precomp::tStoredRule rule;
  std::memcpy(&head, damaged.data(), sizeof head);
  std::memcpy(&rule, damaged.data() + head.tables[0].rules, sizeof rule);
  damaged[rule.home + rule.body] = '\xff';
  precomp::tHeaderImage::seal(damaged.data(), damaged.size());
  disk.put(name, damaged);
  EXPECT_EQ(runOver(disk, {"@Fa.prw", "@@PRECOMPILED=kept"}).printed, ok("a.prw"));
  EXPECT_EQ(fileText(disk, "a.ppo"), "x := 1\r\n");
  EXPECT_TRUE(fileText(disk, name) == sound);
}

TEST(Run, OutputStandsBesideTheSourceOrInTheDirectory) {
  const struct {
    const char *source, *directory, *output;
  } rows[] = {
      {"a.prw", "", "a.ppo"},
      {"src/a.b.PRG", "", "src/a.b.ppo"},
      {" /x/page.prx\n", "", "/x/page.ppo"},
      {"src/a.zorb", "@Oout", "out/a.ppx_"},
      {"src/a", "@Oout/", "out/a.ppo"},
  };
  for (const auto& row : rows) {
    tSources disk;
    const std::string name(trimmed(row.source));
    disk.put(name, "x := 1\n");
    const tRun run = runOver(disk, {std::string("@F") + row.source, row.directory});
    EXPECT_EQ(run.printed, ok(name));
    EXPECT_EQ(fileText(disk, row.output), "x := 1\r\n");
    EXPECT_EQ(disk.count(), 2U) << name;
  }
}

TEST(Run, TraceTellsEachStep) {
  tSources disk;
  disk.put("s/a.prw", "x := 1\n\ny := 2\n");
  const tRun run = runOver(disk, {"@Fs/a.prw", "-T", "-Iinc;;lib", "@Oo", "@I7"});
  EXPECT_EQ(run.printed,
            "[TRACE] copying s/a.prw to o/krpre7.pw_...\n"
            "[TRACE] adding include paths\n"
            "[TRACE] preprocessing... s/a.prw\n"
            "[TRACE] generated lines 3\n"
            "[TRACE] creating file o/a.ppo...\n"
            "[TRACE] Renaming files o/krpre7.ppo to o/a.ppo..." +
                ok("s/a.prw"));
}

TEST(Run, FailedFilesLeaveNothingAndTheOthersAreDone) {
  tSources disk;
  disk.put("a.prw", "\n#endif\n");
  disk.put("a.ppo", "older");
  disk.put("b.prw", "fine := 1\n");
  disk.put("c.prw", std::string(5000, 'x'));
  disk.put("c.ppo", "older");
  disk.put("e.ppo", "older, of a source that is gone");
  const std::string message = "a.prw(2) Error C2068  #ifdef/#ifndef without #endif\n";
  tRun run = runOver(disk, {"@Fc.prw", "@Fa.prw", "@Fb.prw", "-T"});
  EXPECT_EQ(run.result, 1);  // that of the last one that failed
  EXPECT_NE(run.printed.find(message + "[TRACE] pre-processor error msg " + message),
            std::string::npos)
      << run.printed;
  run = runOver(disk, {"@Fa.prw", "@Fb.prw", "@Fc.prw", "@Fe.prw"});
  EXPECT_EQ(run.result, 15);
  EXPECT_EQ(run.printed, message + failed("a.prw", 1) + ok("b.prw") +
                             "KOREL Preprocessor: source line TOO BIG - file c.prw line 0\n" +
                             failed("c.prw", 15) +
                             "KOREL Preprocessor: Cannot copy e.prw to krpre0.pw_...\n" +
                             failed("e.prw", 15));
  EXPECT_EQ(fileText(disk, "b.ppo"), "fine := 1\r\n");
  EXPECT_EQ(disk.count(), 4U);
}

TEST(Run, FilesThatCannotBeReadAreNotTakenForMissing) {
  struct tCase {
    const char* refused;
    int error;
    std::vector<std::string> arguments;
    const char* printed;
    int result;
    int times = 1000;
  };
  const std::string inBad = "y/a.prw(1) Error C9999  ERRO generico: ";
  const tCase kCases[] = {
      {"y/h.ch", EACCES, {"@Fy/a.prw", "-Iinc"}, "y/h.ch: Permission denied\n", 1},
      // The header has been read before, and found elsewhere.
      {"y/h.ch", EMFILE, {"@Fx/a.prw", "@Fy/a.prw", "-Iinc"}, "y/h.ch: Too many open files\n", 1},
      {"std.ch", EIO, {"@Fy/a.prw", "-Iinc"}, "(0) Error C9999  ERRO generico: std.ch: Input", 1},
      {"y/a.prw", ELOOP, {"@Fy/a.prw"}, "_...\ny/a.prw: Too many levels of symbolic", 15},
      // What converts a source must have seen it, even if it can be read after that.
      {"y/a.prw", EINTR, {"@Fy/a.prw", "-Iinc"}, "y/a.prw: Interrupted system call\n", 15, 1},
      {"y/p.krh", ENFILE, {"@Fy/p.krh"}, "y/p.krh: Too many open files in system\n", 15, 1},
  };
  for (const bool opens : {false, true}) {
    for (const tCase& row : kCases) {
      tSources disk;
      for (const char* name : {"x/a.prw", "y/a.prw"}) disk.put(name, "#include \"h.ch\"\n");
      disk.put("y/p.krh", "<p>");
      disk.put("inc/h.ch", "#define WRONG 1\n");
      if (opens) disk.put(row.refused, "//" + std::string(1000, 'x') + "\n");
      disk.refuse(row.refused, {row.error, opens, row.times});
      const tRun run = runOver(disk, row.arguments);
      EXPECT_EQ(run.result, row.result) << row.printed << opens;
      EXPECT_NE(run.printed.find(row.printed), std::string::npos) << run.printed << opens;
    }
  }
}

TEST(Run, OutputFailuresAreReported) {
  tSources disk;
  for (const char* name : {"a", "b", "c"}) {
    disk.put(std::string(name) + "/x.prw", "x := 1\n");
    disk.put(std::string(name) + "/x.ppo", "older");
  }
  disk.refuseCreate("a/krpre0.ppo");
  disk.limitWrites("b/krpre0.ppo", 3);
  disk.refuseRename("c/krpre0.ppo");
  const tRun run = runOver(disk, {"@Fa/x.prw", "@Fb/x.prw", "@Fc/x.prw"});
  EXPECT_EQ(run.result, -1);
  EXPECT_EQ(
      run.printed,
      "KOREL Preprocessor. Error creating out file a/x.ppo.\na/x.ppo: Permission denied\n" +
          failed("a/x.prw", -1) +
          "KOREL Preprocessor: Error creating b/x.ppo.\nb/x.ppo: No space left on device\n" +
          failed("b/x.prw", -1) +
          "KOREL Preprocessor: Error creating c/x.ppo.\nc/x.ppo: Invalid cross-device link\n" +
          failed("c/x.prw", -1));
  EXPECT_EQ(disk.count(), 3U);
}

TEST(Run, ExceptionsAreFailuresOfTheirFile) {
  class tThrowing : public tSources {
    std::unique_ptr<tFile> open(const char* name, int& error) override {
      if (*name == 'a') fatalError("broken", "unit", 7);
      if (*name == 'b') throw std::runtime_error("bad luck");
      if (*name == 'c') throw 0;
      return tSources::open(name, error);
    }
  } disk;
  for (const char* name : {"a.prw", "b.prw", "c.prw", "d.prw"}) disk.put(name, "");
  EXPECT_EQ(runOver(disk, {"@Fa.prw", "@Fb.prw", "@Fc.prw", "@Fd.prw"}).printed,
            "broken in file unit at line 7\n" + failed("a.prw", -1) +
                "KOREL Preprocessor: bad luck\n" + failed("b.prw", -1) +
                "KOREL Preprocessor: unknown failure\n" + failed("c.prw", -1) + ok("d.prw"));
}

TEST(Run, SourceIsNeverOverwritten) {
  tSources disk;
  disk.put("a.ppo", "precious");
  disk.put("krpre0.pw_", "precious");
  const tRun run = runOver(disk, {"@Fa.ppo", "@Fkrpre0.pw_"});
  EXPECT_EQ(run.result, 15);
  EXPECT_EQ(run.printed,
            "KOREL Preprocessor: Cannot copy a.ppo to a.ppo...\n" + failed("a.ppo", 15) +
                "KOREL Preprocessor:  krpre0.pw_ and krpre0.pw_ are the same file....\n" +
                failed("krpre0.pw_", 15));
  EXPECT_EQ(runOver(disk, {"@F./a.ppo", "@O."}).result, 15);
  // A name with a zero byte would be cut to that of another file.
  disk.put("list", std::string_view("a\0.prw", 6));
  EXPECT_EQ(runOver(disk, {"@Llist"}).result, 15);
  disk.remove("list");
  EXPECT_EQ(fileText(disk, "a.ppo"), "precious");
  EXPECT_EQ(fileText(disk, "krpre0.pw_"), "precious");
  EXPECT_EQ(disk.count(), 2U);
}

TEST(Run, ControlBytesOfNamesAreShownAndNotSent) {
  tSources disk;
  disk.put("\x1B[2J\nok\x7F.prw", "#include \"\x1B\xC2\x9B\tx\"\n");
  disk.put("list", "\x1B[2J\nok\x7F.prw;\r;\a.prw");
  EXPECT_EQ(runOver(disk, {"@Llist"}).printed,
            "\\x1b[2J\\x0aok\\x7f.prw(1) Error C2090  File not found \\x1b\\xc2\\x9b\tx\n" +
                failed("\\x1b[2J\\x0aok\\x7f.prw", 1) +
                "KOREL Preprocessor: Cannot copy \\x07.prw to krpre0.pw_...\n" +
                failed("\\x07.prw", 15));
}

TEST(Run, ErrorTextOfAHostGetsTheNameOfTheSource) {
  tSources disk;
  disk.put("a.zorb", "#endif\n");
  disk.put("krpre0.erx_", "text");
  runOver(disk, {"@Fa.zorb"});
  EXPECT_EQ(fileText(disk, "a.erx_"), "text");
  EXPECT_EQ(disk.count(), 2U);
}
