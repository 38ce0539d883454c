// Several sources in one run.

#include <random>

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Jobs = Program;

TEST_F(Jobs, NothingDependsOnTheirNumber) {
  std::mt19937 random(1);
  std::vector<std::string> names;
  for (int i = 0; i < 40; ++i) {
    const std::string name = "s" + std::to_string(i) + ".prw";
    names.push_back(name);
    // Sizes differ, so that threads overtake each other; every seventh source fails.
    std::string text = i % 7 == 3 ? "\n#else\n" : "";
    for (auto k = random() % 3000; k > 0; --k) text += "x := " + std::to_string(k) + "\n";
    write(name, text);
  }
  names.insert(names.begin() + 5, "missing.prw");
  const auto outcome = [&](std::vector<std::string> options) {
    for (const auto& entry : fs::directory_iterator(directory_.path())) {
      if (entry.path().extension() == ".ppo") fs::remove(entry.path());
    }
    options.insert(options.end(), names.begin(), names.end());
    const tChildResult result = run(options);
    std::string all = std::to_string(result.status) + result.output + result.errors + files();
    for (const std::string& name : names) {
      const std::string ppo = fs::path(name).replace_extension(".ppo");
      if (exists(ppo)) all += bytes(ppo);
    }
    return all;
  };
  const std::string alone = outcome({"-j1"});
  EXPECT_EQ(alone.substr(0, 1), "1");
  EXPECT_NE(alone.find(failed("s3.prw") + ok("s4.prw")), std::string::npos);
  for (const char* jobs : {"-j2", "-j7", "-j200", "-j0", "--jobs="}) {
    EXPECT_TRUE(outcome({jobs}) == alone) << jobs;  // too much to be shown
  }
  EXPECT_TRUE(outcome({"-q", "-j3"}) == alone);
  for (const char* form : {"-T", "--diagnostics=gcc"}) {
    EXPECT_TRUE(outcome({form, "-j3"}) == outcome({form, "-j1"})) << form;
  }
}

}  // namespace
