// What shells and the manual page are told of the options.

#include <gtest/gtest.h>

#include "tests/cli/program.h"

namespace {

std::string made(const std::string& target) {
  const tTemporaryDirectory directory;
  return runChild({KRPRE_PROGRAM, "--completions", target}, directory.path()).output;
}

TEST(Completions, AreThoseOfTheProgram) {
  const std::string sources = KRPRE_SOURCES;
  EXPECT_EQ(readBytes(sources + "/completions/krpre.bash"), made("bash"));
  EXPECT_EQ(readBytes(sources + "/completions/_krpre"), made("zsh"));
  EXPECT_NE(readBytes(sources + "/docs/krpre.1").find(made("man")), std::string::npos);
}

TEST(Completions, OfBashKnowOptionsTheirValuesAndSources) {
  const tTemporaryDirectory directory;
  directory.write("a b.prw", "");
  directory.write("notes.txt", "");
  directory.write("sub/x", "");
  const std::string load = "source '" KRPRE_SOURCES "/completions/krpre.bash'; ";
  const std::pair<std::string, std::string> kCases[] = {
      {"COMP_WORDS=(krpre --diag) COMP_CWORD=1", "--diagnostics\n"},
      {"COMP_WORDS=(krpre --diagnostics = j) COMP_CWORD=3", "json\n"},
      {"COMP_WORDS=(krpre --diagnostics =) COMP_CWORD=2", "auto\nclassic\nlong\njson\ngcc\n"},
      {"COMP_WORDS=(krpre -I '') COMP_CWORD=2", "sub\n"},
      {"COMP_WORDS=(krpre -q '') COMP_CWORD=2", "sub\na b.prw\n"},
      {"COMP_WORDS=(krpre ex) COMP_CWORD=1", "explain\n"},
  };
  for (const auto& [words, expected] : kCases) {
    const tChildResult result =
        runChild({"/bin/bash", "-c", load + words + R"(; _krpre; printf '%s\n' "${COMPREPLY[@]}")"},
                 directory.path());
    EXPECT_EQ(result.output + result.errors, expected) << words;
  }
}

}  // namespace
