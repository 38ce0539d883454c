// The project of examples/ninja under ninja itself.

#include <sstream>

#include "tests/cli/program.h"

namespace {

class NinjaExample : public Program {
 protected:
  void SetUp() override {
    const tChildResult result =
        runChild({KRPRE_PYTHON, "-B", std::string(KRPRE_SOURCES) + "/examples/ninja/generate.py",
                  "--krpre", std::string("'") + KRPRE_PROGRAM + "'", directory_.path()},
                 directory_.path());
    ASSERT_EQ(result.status, 0) << result.errors;
  }

  /// How many sources the next build preprocesses and how often it joins their outputs: "10 1".
  std::string build() {
    const tChildResult result = runChild({"/usr/bin/ninja", "-v"}, directory_.path());
    EXPECT_EQ(result.status, 0) << result.output;
    int preprocessed = 0;
    int joined = 0;
    sources_.clear();
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
      if (line.find("] cat ") != std::string::npos) ++joined;
      if (line.find(" -MD ") == std::string::npos) continue;
      ++preprocessed;
      sources_ += line.substr(line.rfind('/') + 1, 6) + ' ';
    }
    return std::to_string(preprocessed) + " " + std::to_string(joined);
  }

  std::string sources_;  // of the last build
};

TEST_F(NinjaExample, RebuildsExactlyWhatAChangeReaches) {
  EXPECT_EQ(build(), "200 1");
  EXPECT_EQ(build(), "0 0");

  write("headers/part03.ch", "#define FACTOR 33\n");
  EXPECT_EQ(build(), "10 1");
  EXPECT_NE(sources_.find("job183"), std::string::npos) << sources_;
  EXPECT_NE(output("out/job003.ppo").find("nValue * 33"), std::string::npos);
  write("headers/part03.ch", "#define FACTOR 33 // of the third part\n");
  EXPECT_EQ(build(), "10 0");

  write("headers/common.ch", "#define LIMIT 2000\n");
  EXPECT_EQ(build(), "200 1");
  write("sources/job007.prw", "x := 1\n");
  EXPECT_EQ(build(), "1 1");
  EXPECT_EQ(build(), "0 0");
}

}  // namespace
