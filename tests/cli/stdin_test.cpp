// The source that is read from standard input.

#include "tests/cli/program.h"

namespace {

using StandardInput = Program;

TEST_F(StandardInput, BecomesStandardOutput) {
  const tChildResult result = shell("printf 'x := 1\\ny := \"a\\000b\"' | krpre -");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, std::string("x := 1\r\ny := \"a\0b\"\r\n", 20));
  EXPECT_EQ(result.errors, ok("stdin.prw"));
  EXPECT_EQ(shell("krpre -q - </dev/null").output, "");
  EXPECT_EQ(files(), "");
}

TEST_F(StandardInput, GivesTheOutputThatTheFileWouldGive) {
  write("sub/own.ch", "#define OWN {}\n");
  const std::string text = "#include \"own.ch\"\nx := OWN\n";
  for (const char* name : {"sub/a.prw", "sub/ a.zorb"}) {
    write(name, text);
    const std::string quoted = std::string("'") + name + "'";
    ASSERT_EQ(shell("krpre -o whole " + quoted).status, 0);
    const tChildResult result = shell("krpre -q - --stdin-name " + quoted + " < " + quoted);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, bytes("whole")) << name;
    EXPECT_EQ(shell("krpre -q - --stdin-name " + quoted + " -o other -MD < " + quoted).output, "");
    EXPECT_EQ(bytes("other"), bytes("whole"));
    EXPECT_NE(bytes("other.d").find("sub/own.ch"), std::string::npos);
  }
}

TEST_F(StandardInput, WithAnErrorGivesNothing) {
  const tChildResult result = shell("printf 'x := 1\\n#else\\n' | krpre - --stdin-name b/c.prw");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors,
            "b/c.prw(2) Error C2070  #else does not match #ifdef\n" + failed("b/c.prw"));
}

TEST_F(StandardInput, MayBeTooLongOrNotThereOrHaveNowhereToGo) {
  write("a.prw", "");
  const std::pair<const char*, const char*> kCases[] = {
      {"head -c 16777216 /dev/zero | tr '\\0' '\\n' | krpre -",
       "standard input: a source must be shorter than 16 MiB"},
      {"krpre - <.", "standard input: Is a directory"},
      {"krpre - <&-", "standard input: Bad file descriptor"},
      {"krpre -q - <a.prw >&-", ""},
      {"echo x | krpre -q - >/dev/full", "standard output: No space left on device"},
      {"echo x | krpre -q - >&-", "standard output: Bad file descriptor"},
  };
  for (const auto& [line, complaint] : kCases) {
    const tChildResult result = shell(line);
    const bool fails = *complaint != '\0';
    EXPECT_EQ(result.status, fails ? 1 : 0) << line;
    EXPECT_EQ(result.errors, fails ? std::string("krpre: ") + complaint + "\n" : "");
  }
}

}  // namespace
