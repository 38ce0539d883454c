// The project of examples/ninja under ninja itself.

#include <sstream>

#include "tests/cli/program.h"

namespace {

/// What a build did.
struct tBuilt {
  int preprocessed = 0;
  int joined = 0;
  std::string sources;

  bool operator==(const tBuilt& other) const {
    return preprocessed == other.preprocessed && joined == other.joined;
  }
};

std::ostream& operator<<(std::ostream& stream, const tBuilt& built) {
  return stream << built.preprocessed << " preprocessed, " << built.joined << " joined";
}

class NinjaExample : public Program {
 protected:
  void SetUp() override {
    const tChildResult result =
        runChild({KRPRE_PYTHON, "-B", std::string(KRPRE_SOURCES) + "/examples/ninja/generate.py",
                  "--krpre", KRPRE_PROGRAM, directory_.path()},
                 directory_.path());
    ASSERT_EQ(result.status, 0) << result.errors;
  }

  tBuilt build() const {
    const tChildResult result = runChild({"/usr/bin/ninja", "-v"}, directory_.path());
    EXPECT_EQ(result.status, 0) << result.output;
    tBuilt built;
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) {
      if (line.find("] cat ") != std::string::npos) ++built.joined;
      if (line.find(" -MD ") == std::string::npos) continue;
      ++built.preprocessed;
      built.sources += line.substr(line.rfind('/') + 1, 6) + ' ';
    }
    return built;
  }
};

TEST_F(NinjaExample, RebuildsExactlyWhatAChangeReaches) {
  EXPECT_EQ(build(), (tBuilt{200, 1, {}}));
  EXPECT_EQ(build(), (tBuilt{0, 0, {}}));

  write("headers/part03.ch", "#define FACTOR 33\n");
  const tBuilt part = build();
  EXPECT_EQ(part, (tBuilt{10, 1, {}}));
  for (const char* source : {"job003", "job023", "job183"}) {
    EXPECT_NE(part.sources.find(source), std::string::npos) << part.sources;
  }
  EXPECT_NE(output("out/job003.ppo").find("nValue * 33"), std::string::npos);

  write("headers/part03.ch", "#define FACTOR 33 // of the third part\n");
  EXPECT_EQ(build(), (tBuilt{10, 0, {}}));
  EXPECT_EQ(build(), (tBuilt{0, 0, {}}));

  write("headers/common.ch", "#define LIMIT 2000\n");
  EXPECT_EQ(build(), (tBuilt{200, 1, {}}));
  write("sources/job007.prw", "x := 1\n");
  EXPECT_EQ(build(), (tBuilt{1, 1, {}}));
  EXPECT_EQ(build(), (tBuilt{0, 0, {}}));
}

}  // namespace
