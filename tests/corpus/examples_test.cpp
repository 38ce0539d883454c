// The programs in examples/ are preprocessed as their page says and must give the .ppo files that
// stand beside them.

#include <gtest/gtest.h>

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
  ASSERT_EQ(command.size(), 4U);

  const tChildResult result = runChild(command, directory.path());
  EXPECT_EQ(result.status, 0) << result.output;
  for (auto source = command.begin() + 1; source != command.end(); ++source) {
    const fs::path output = fs::path(*source).replace_extension(".ppo");
    EXPECT_EQ(readBytes(directory.path() / output), readBytes(orders / output.filename()))
        << *source;
  }
}

}  // namespace
