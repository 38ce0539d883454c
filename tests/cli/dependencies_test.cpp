// Dependency files, read by those that they are for.

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Dependencies = Program;

// Names that mean something to make, to ninja or to their files. Tabs, semicolons and "'" have no
// spelling that both read.
const char* const kOddNames[] = {"a b",  "a  b",  "a$b", "$(a)",  "a#b",
                                 "a\\b", "a\\ b", "a:b", "{a},b", "~a"};

TEST_F(Dependencies, AreReadBackByMake) {
  for (const std::string name : kOddNames) {
    const tTemporaryDirectory place;
    place.write("s.prw", "#include \"" + name + ".ch\"\n");
    place.write(name + ".ch", "");
    place.write("Makefile", std::string("s.ppo:\n\t@'") + KRPRE_PROGRAM +
                                "' -q --always-write -MD -MP s.prw && echo made\n-include s.d\n");
    const auto make = [&] { return runChild({"/usr/bin/make", "s.ppo"}, place.path()); };
    EXPECT_EQ(make().output, "made\n") << name;
    EXPECT_EQ(make().output, "make: 's.ppo' is up to date.\n") << name;
    fs::last_write_time(place.path() / (name + ".ch"),
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
    const tChildResult result = make();
    EXPECT_EQ(result.output, "made\n") << name << result.errors;
    place.write("s.prw", "");
    fs::remove(place.path() / (name + ".ch"));
    EXPECT_EQ(make().output, "made\n") << name;  // for -MP has a rule for the header that is gone
  }
}

TEST_F(Dependencies, AreReadBackByNinja) {
  std::string build = std::string("rule krpre\n command = '") + KRPRE_PROGRAM +
                      "' -q --always-write -MD $in\n depfile = $stem.d\n deps = gcc\n";
  int number = 0;
  for (const std::string name : kOddNames) {
    const std::string stem = "s" + std::to_string(number++);
    write(stem + ".prw", "#include \"" + name + ".ch\"\n");
    write(name + ".ch", "");
    build += "build " + stem + ".ppo: krpre " + stem + ".prw\n stem = " + stem + "\n";
  }
  write("build.ninja", build);
  const auto ninja = [&] { return runChild({"/usr/bin/ninja", "-v"}, directory_.path()); };
  EXPECT_EQ(ninja().status, 0);
  const std::string again = ninja().output;
  EXPECT_NE(again.find("no work to do"), std::string::npos) << again;
  number = 0;
  for (const std::string name : kOddNames) {
    const std::string stem = "s" + std::to_string(number++);
    fs::last_write_time(path(name + ".ch"),
                        fs::file_time_type::clock::now() + std::chrono::hours(1));
    const std::string output = ninja().output;
    EXPECT_NE(output.find("-MD " + stem + ".prw"), std::string::npos) << name << output;
  }
}

}  // namespace
