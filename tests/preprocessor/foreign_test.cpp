// Runs over foreign sources, with a stand-in for the external converter.

#include "preprocessor/convert/foreign.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "testrun.h"
#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

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
    fs::create_directories(path("bin"));
    fs::create_directories(path("tmp"));
    fs::create_directories(path("out"));
    directory_.write("inc/std.ch", "");
    fs::create_symlink(KRPRE_STANDIN, path("bin/abl2korel.so"));
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

  tTemporaryDirectory directory_;
  std::string childPrinted_;
};

/// The arguments that the stand-in has written into the output.
std::vector<std::string> argumentsIn(const std::string& output) {
  std::vector<std::string> arguments;
  std::istringstream lines(output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string word;
    if (!(words >> word) || word != "Argument") continue;
    arguments.emplace_back();
    for (int c = 0; words >> c;) arguments.back() += static_cast<char>(c);
  }
  return arguments;
}

}  // namespace

TEST_F(Foreign, SourceIsConvertedFirst) {
  directory_.write("s/a.zorb", "the user's");
  const tRun result = run("s/a.W", "x := y\n");
  EXPECT_EQ(result.result, 0) << result.printed;
  EXPECT_EQ(childPrinted_, "converting\n");
  const std::string output = readBytes(path("out/a.ppx_"));
  EXPECT_TRUE(output.starts_with("x := y\r\n"));
  const std::vector<std::string> arguments = argumentsIn(output);
  ASSERT_EQ(arguments.size(), 4U);
  EXPECT_EQ(arguments[0], "@F" + path("s/a.W"));
  EXPECT_TRUE(arguments[1].starts_with("@Q" + path("tmp/krpre-"))) << arguments[1];
  EXPECT_TRUE(arguments[1].ends_with("/a.zorb"));
  EXPECT_EQ(arguments[2], "@DB" + path("inc"));
  EXPECT_EQ(arguments[3], "@D" + path("out/"));
  EXPECT_EQ(readBytes(path("s/a.zorb")), "the user's");
}

TEST_F(Foreign, NameIsNothingButAName) {
  for (const char* name : {"$(touch hacked).p", "a b'c\"d.p", "-x;touch hacked.p", "a\nb`id`.py"}) {
    EXPECT_EQ(run(name, "x := y\n").result, 0) << name;
    const fs::path output = fs::path(path("out")) / fs::path(name).replace_extension(".ppx_");
    const std::vector<std::string> arguments = argumentsIn(readBytes(output));
    ASSERT_EQ(arguments.size(), 4U);
    EXPECT_EQ(arguments[0], "@F" + path(name));
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
