// The programs and pages in examples/ are preprocessed and must give the .ppo files that stand
// beside them. The examples of a chapter are cases of the corpus; the chapter must show them.

#include <gtest/gtest.h>

#include <sstream>

#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

/// Preprocesses the sources of a folder of examples/ and compares what becomes of them.
void compareExample(const std::string& folder, std::size_t sources) {
  const fs::path golden = fs::path(KRPRE_EXAMPLES) / folder;
  const tTemporaryDirectory directory;
  std::vector<std::string> command = {KRPRE_PROGRAM};
  for (const auto& entry : fs::directory_iterator(golden)) {
    const fs::path name = fs::path("examples") / folder / entry.path().filename();
    if (name.extension() == ".ppo") continue;
    directory.write(name, readBytes(entry.path()));
    if (name.extension() == ".prw" || name.extension() == ".krh") command.push_back(name);
  }
  ASSERT_EQ(command.size(), sources + 1);

  const tChildResult result = runChild(command, directory.path());
  EXPECT_EQ(result.status, 0) << result.output;
  for (auto source = command.begin() + 1; source != command.end(); ++source) {
    const fs::path output = fs::path(*source).replace_extension(".ppo");
    EXPECT_EQ(readBytes(directory.path() / output), readBytes(golden / output.filename()))
        << *source;
  }
}

TEST(Examples, GiveTheirGoldenFiles) {
  compareExample("orders", 4);
  compareExample("pages", 1);
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

TEST(Examples, StandInTheChapterOnPages) {
  const std::string chapter = readBytes(fs::path(KRPRE_CHAPTER).replace_filename("pages.md"));
  for (const char* name : {"pages/hello.krh", "pages/hello.ppo"}) {
    const std::string text = asShown(readBytes(fs::path(KRPRE_CORPUS) / name));
    EXPECT_NE(chapter.find(text), std::string::npos) << name;
  }
}

}  // namespace
