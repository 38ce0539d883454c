// What the program says of its options, and of arguments that it cannot use.

#include <sstream>

#include "tests/cli/program.h"

namespace {

using Usage = Program;

TEST_F(Usage, IsInCompletionsAndManualAsInTheTable) {
  const std::pair<std::string, std::string> kFiles[] = {{"bash", "/completions/krpre.bash"},
                                                        {"zsh", "/completions/_krpre"},
                                                        {"man", "/docs/krpre.1"}};
  for (const auto& [format, name] : kFiles) {
    const std::string made = run({"--completions", format}).output;
    const std::string kept = readBytes(KRPRE_SOURCES + name);
    const bool same = format == "man" ? kept.find(made) != std::string::npos : kept == made;
    EXPECT_TRUE(same && !made.empty()) << name << " is not what --completions prints";
  }
}

TEST(Readme, ShowsWhatExplainPrints) {
  const tChildResult result =
      runChild({KRPRE_PROGRAM, "explain", "examples/orders/orders.prw:65"}, KRPRE_SOURCES);
  ASSERT_EQ(result.status, 0);
  std::string sample;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    sample += (line.empty() ? "" : "    " + line) + "\n";
  }
  EXPECT_NE(readBytes(KRPRE_SOURCES "/README.md").find(sample), std::string::npos) << sample;
}

}  // namespace
