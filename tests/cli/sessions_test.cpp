// Sessions at a shell: sessions/NAME.txt holds commands, each behind "$ ", and what they must
// print, standard error behind "! ", and "[status]" unless that is 0. The commands run in one
// directory; `lines` prints a file without the carriage returns of its line ends, and $program,
// $sources and $python are what their names say. The folder of the build is printed as $build.
//
// With KRPRE_ACCEPT=1 in the environment the sessions are written instead. Read the difference.

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <sstream>

#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

const std::string kPrelude =
    "program='" KRPRE_PROGRAM "'; PATH=${program%/*}:$PATH; sources='" KRPRE_SOURCES
    "'; python='" KRPRE_PYTHON "'; lines() { tr -d '\\r' <\"$1\"; }; ";

const std::regex kBuild(fs::path(KRPRE_PROGRAM).parent_path().parent_path().string());

class Session : public testing::TestWithParam<fs::path> {};

std::string withPrefix(const std::string& prefix, const std::string& text) {
  std::istringstream lines(text);
  std::string all;
  for (std::string line; std::getline(lines, line);) all += prefix + line + '\n';
  return all;
}

TEST_P(Session, ComesOutAsItStands) {
  const std::string expected = readBytes(GetParam());
  const tTemporaryDirectory directory;
  std::istringstream lines(expected);
  std::string found;
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("$ ")) continue;
    const tChildResult result =
        runChild({"/bin/sh", "-c", kPrelude + line.substr(2)}, directory.path());
    const std::string output = std::regex_replace(result.output, kBuild, "$$build");
    found += line + '\n' + withPrefix("", output) + withPrefix("! ", result.errors);
    if (result.status != 0) found += '[' + std::to_string(result.status) + "]\n";
  }
  if (std::getenv("KRPRE_ACCEPT") != nullptr) return writeBytes(GetParam(), found);
  EXPECT_EQ(found, expected);
}

std::vector<fs::path> allSessions() {
  const fs::directory_iterator all(KRPRE_SOURCES "/tests/cli/sessions");
  return {begin(all), end(all)};
}

INSTANTIATE_TEST_SUITE_P(Files, Session, testing::ValuesIn(allSessions()),
                         [](const auto& session) { return session.param.stem().string(); });

}  // namespace
