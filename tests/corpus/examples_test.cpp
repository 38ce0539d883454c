// The programs and pages in examples/ are preprocessed and must give the .ppo files that stand
// beside them.

#include <gtest/gtest.h>

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

}  // namespace
