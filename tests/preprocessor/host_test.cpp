// A host with Qt of its own that uses the library as it is shipped.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTranslator>
#include <climits>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "include/krpre.h"
#include "tests/support/childprocess.h"

namespace {

class tHostTranslator : public QTranslator {
 public:
  QString translate(const char* context, const char* text, const char*, int) const override {
    const bool known =
        std::strcmp(context, "Preprocessor") == 0 && std::strcmp(text, "with error") == 0;
    return known ? QStringLiteral("mit Fehler") : QString();
  }
  bool isEmpty() const override { return false; }
};

std::string messagesOf(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), "");
  std::vector<char*> vector;
  for (std::string& argument : arguments) vector.push_back(argument.data());
  testing::internal::CaptureStdout();
  doPreProc(static_cast<int>(vector.size()), vector.data());
  std::fflush(stdout);
  return testing::internal::GetCapturedStdout();
}

TEST(Host, SeesItsTranslationsInTheMessages) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("a.prw", "#else\n");
  const std::string path = directory.path().string() + "/";
  const std::vector<std::string> arguments = {"@F" + path + "a.prw", "-I" + path};
  EXPECT_NE(messagesOf(arguments).find("a.prw with error."), std::string::npos);

  char name[] = "host";
  char* applicationArguments[] = {name, nullptr};
  int count = 1;
  const QCoreApplication application(count, applicationArguments);
  tHostTranslator translator;
  ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
  EXPECT_NE(messagesOf(arguments).find("a.prw mit Fehler."), std::string::npos);
}

/// What one call printed, and the `.ppo` that it left of a source "x := ONE + TWO".
struct tLeft {
  int result;
  std::string printed;
  std::string output;
};

tLeft execute(int count, const std::string& commandLine) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("a b.prw", "x := ONE + TWO\n");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(directory.path());
  testing::internal::CaptureStdout();
  const int result = executeKrpreDll(count, commandLine.c_str());
  std::fflush(stdout);
  tLeft left = {result, testing::internal::GetCapturedStdout(), "(none)"};
  std::filesystem::current_path(before);
  if (std::filesystem::exists(directory.path() / "a b.ppo")) {
    left.output = readBytes(directory.path() / "a b.ppo");
  }
  return left;
}

TEST(CommandLine, IsReadAsFarAsTheHostCounts) {
  const std::string line = " @F\"a b.prw\"   /DONE=1 /DTWO=2";
  EXPECT_EQ(execute(2, line).output, "x := 1 + TWO\r\n");
  EXPECT_EQ(execute(1, line).output, "x := ONE + TWO\r\n");
  for (const int count : {3, 4, 1000000000, INT_MAX}) {
    EXPECT_EQ(execute(count, line).output, "x := 1 + 2\r\n") << count;
  }
  for (const int count : {0, -1, INT_MIN}) {
    const tLeft left = execute(count, line);
    EXPECT_EQ(left.result, 0);
    EXPECT_EQ(left.output, "(none)");
  }
}

TEST(CommandLine, IsTheVersionRequestWhenTheHostCountsOne) {
  EXPECT_NE(execute(1, " -V ").printed.find("Build"), std::string::npos);
  EXPECT_EQ(execute(2, "-v").printed, "");
}

TEST(CommandLine, MustNotBeNull) {
  try {
    executeKrpreDll(1, nullptr);
    ADD_FAILURE() << "no exception";
  } catch (const std::logic_error& error) {
    EXPECT_STREQ(error.what(), "basic_string::_M_construct null not valid");
  }
  // The library has a C++ runtime of its own; this one must have kept count.
  EXPECT_EQ(std::uncaught_exceptions(), 0);
}

TEST(Output, ThatCannotBeRedirectedLeavesNothingToRestore) {
  EXPECT_EQ(redirectOutPut(nullptr), -1);
  const int output = dup(STDOUT_FILENO), input = dup(STDIN_FILENO);
  close(STDIN_FILENO);  // the silencer gets the place of another descriptor than the output's
  close(STDOUT_FILENO);
  int silencer = 0;
  const int saved = redirectOutPut(&silencer);
  dup2(output, STDOUT_FILENO);
  dup2(input, STDIN_FILENO);
  close(output);
  close(input);
  EXPECT_EQ(std::pair(saved, silencer), std::pair(-1, -1));
}

}  // namespace
