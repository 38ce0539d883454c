// Runs over foreign sources, with a stand-in for the external converter.

#include "preprocessor/convert/foreign.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "testrun.h"
#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

// Stands in for the external converter. It copies the source, tells its arguments, a zero behind
// each, in a file beside itself, and obeys what stands in the source.
constexpr const char* kStandIn = R"(#!/bin/sh
for argument; do
  case $argument in @F*) from=${argument#@F} ;; @Q*) to=${argument#@Q} ;; esac
done
read -r word code <"$from"
case $word in exit) exit $code ;; abort) kill -9 $$ ;; esac
echo converting
test "$word" = nothing && exit
cat "$from" >"$to"
printf '%s\0' "$@" >"$0.arguments"
)";

class tHostWithConverter : public tRunHost {
 public:
  explicit tHostWithConverter(const fs::path& directory) : directory_(directory.c_str()) {}
  tString converterDirectory() const override { return directory_; }

 private:
  tString directory_;
};

/// A directory with the stand-in under the converter's name, and a temporary directory of its own.
class Foreign : public testing::Test {
 public:
  ~Foreign() override { unsetenv("TMPDIR"); }

 protected:
  Foreign() {
    fs::create_directories(path("tmp"));
    fs::create_directories(path("out"));
    directory_.write("inc/std.ch", "");
    directory_.write("bin/abl2korel.so", kStandIn);
    fs::permissions(path("bin/abl2korel.so"), fs::perms::owner_all);
    setenv("TMPDIR", path("tmp").c_str(), 1);
  }
  std::string path(const std::string& name) const { return directory_.path() / name; }

  /// Runs over a source with the converter of `converters`; what it prints itself is not among
  /// the messages.
  tRun run(const std::string& name, const std::string& text,
           const std::string& converters = "bin") {
    directory_.write(name, text);
    std::vector<std::string> arguments = {"", "@F" + path(name), "-Ifirst;" + path("inc"),
                                          "@O" + path("out")};
    std::vector<char*> vector;
    for (std::string& argument : arguments) vector.push_back(argument.data());
    tDiskManLocal disk;
    tHostWithConverter host(path(converters));
    tPrinted printed;
    testing::internal::CaptureStdout();
    const int result = runPreprocessor(disk, static_cast<int>(vector.size()), vector.data(), host);
    childPrinted_ = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(fs::is_empty(path("tmp")));
    return {result, printed.text()};
  }

  /// What the stand-in was given last.
  std::vector<std::string> arguments() const {
    std::istringstream told(readBytes(path("bin/abl2korel.so.arguments")));
    std::vector<std::string> all;
    for (std::string argument; std::getline(told, argument, '\0');) all.push_back(argument);
    all.resize(4);
    return all;
  }

  tTemporaryDirectory directory_;
  std::string childPrinted_;
};

}  // namespace

TEST_F(Foreign, SourceIsConvertedFirst) {
  directory_.write("s/a.zorb", "the user's");
  const tRun result = run("s/a.W", "x := y\n");
  EXPECT_EQ(result.result, 0) << result.printed;
  EXPECT_EQ(childPrinted_, "converting\n");
  EXPECT_EQ(readBytes(path("out/a.ppx_")), "x := y\r\n");
  const std::vector<std::string> given = arguments();
  EXPECT_EQ(given[0], "@F" + path("s/a.W"));
  EXPECT_TRUE(given[1].starts_with("@Q" + path("tmp/krpre-"))) << given[1];
  EXPECT_TRUE(given[1].ends_with("/a.zorb"));
  EXPECT_EQ(given[2], "@DB" + path("inc"));
  EXPECT_EQ(given[3], "@D" + path("out/"));
  EXPECT_EQ(readBytes(path("s/a.zorb")), "the user's");
}

TEST_F(Foreign, NameIsNothingButAName) {
  for (const char* name : {"$(touch hacked).p", "a b'c\"d.p", "-x;touch hacked.p", "a\nb`id`.py"}) {
    EXPECT_EQ(run(name, "x := y\n").result, 0) << name;
    EXPECT_TRUE(fs::exists(fs::path(path("out")) / fs::path(name).replace_extension(".ppx_")));
    EXPECT_EQ(arguments()[0], "@F" + path(name));
  }
  EXPECT_FALSE(fs::exists("hacked"));
}

TEST_F(Foreign, FailureOfTheConverterIsThatOfTheFile) {
  directory_.write("out/a.ppx_", "older");
  const struct {
    const char* text;
    int result;
  } rows[] = {{"exit 3", 3}, {"exit 255", 255}, {"abort", 128 + 9}};
  for (const auto& row : rows) {
    const tRun result = run("a.p", row.text);
    EXPECT_EQ(result.result, row.result);
    EXPECT_EQ(result.printed, failed(path("a.p"), row.result));
    EXPECT_FALSE(fs::exists(path("out/a.ppx_")));
  }
  const tRun nothing = run("a.p", "nothing");
  EXPECT_EQ(nothing.result, 15);
  EXPECT_TRUE(nothing.printed.starts_with("KOREL Preprocessor: Cannot copy " + path("a.p")));
  EXPECT_EQ(run("a.p", "#endif\n").printed.substr(0, path("a.p(1) Error C2068").size()),
            path("a.p(1) Error C2068"));
}

TEST_F(Foreign, ConverterThatCannotRunIsNamed) {
  directory_.write("text/abl2korel.so", "no program");
  for (const char* converters : {"none", "text"}) {
    const tRun result = run("it's.p", "x := y\n", converters);
    EXPECT_EQ(result.result, -1);
    const std::string start = "KOREL Preprocessor. Could not execute '" + path(converters) +
                              "/abl2korel.so' '@F" + directory_.path().string() +
                              "/it'\\''s.p' '@Q";
    EXPECT_EQ(result.printed.substr(0, start.size()), start);
    EXPECT_TRUE(result.printed.ends_with("'.\n" + failed(path("it's.p"), -1))) << result.printed;
    EXPECT_EQ(childPrinted_, "");
  }
}

TEST_F(Foreign, ConverterIsExpectedBesideTheProgram) {
  EXPECT_EQ(tString(fs::read_symlink("/proc/self/exe").parent_path().string() + "/"),
            programDirectory());
}
