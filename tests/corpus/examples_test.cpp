// The programs in examples/ are preprocessed as their page says and must give the .ppo files that
// stand beside them. The examples of a chapter are cases of the corpus; the chapter must show them.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

TEST(Examples, GiveTheirGoldenFiles) {
  const fs::path orders = fs::path(KRPRE_EXAMPLES) / "orders";
  const tTemporaryDirectory directory;
  std::vector<std::string> command = {KRPRE_PROGRAM};
  for (const auto& entry : fs::directory_iterator(orders)) {
    const fs::path name = fs::path("examples/orders") / entry.path().filename();
    if (name.extension() == ".ppo") continue;
    directory.write(name, readBytes(entry.path()));
    if (name.extension() == ".prw") command.push_back(name);
  }
  ASSERT_EQ(command.size(), 5U);

  const tChildResult result = runChild(command, directory.path());
  EXPECT_EQ(result.status, 0) << result.output;
  for (auto source = command.begin() + 1; source != command.end(); ++source) {
    const fs::path output = fs::path(*source).replace_extension(".ppo");
    EXPECT_EQ(readBytes(directory.path() / output), readBytes(orders / output.filename()))
        << *source;
  }
}

// The text as a chapter shows it: indented, and without the empty lines that directives leave.
std::string asShown(const std::string& text) {
  std::istringstream lines(text);
  std::string shown;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) shown += "    " + line + "\n";
  }
  return "\n\n" + shown + "\n";
}

TEST(Examples, StandInTheChapterOnRules) {
  const std::string chapter = readBytes(KRPRE_CHAPTER);
  int cases = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(KRPRE_CORPUS) / "rules_doc")) {
    const std::size_t heading = chapter.find("\n`" + entry.path().stem().string() + "`: ");
    ASSERT_NE(heading, std::string::npos) << entry.path();
    EXPECT_NE(chapter.find(asShown(readBytes(entry.path())), heading), std::string::npos)
        << entry.path();
    ++cases;
  }
  EXPECT_GT(cases, 40);
}

}  // namespace
