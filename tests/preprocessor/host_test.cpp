// A host with Qt of its own that uses the library as it is shipped.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>
#include <cstring>
#include <string>
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

TEST(Host, MayHandOverNullSlotsAndNothing) {
  char* nothing[] = {nullptr, nullptr, nullptr};
  EXPECT_EQ(doPreProc(3, nothing), 0);
  EXPECT_EQ(doPreProc(0, nullptr), 0);
  EXPECT_EQ(doPreProc(-7, nullptr), 0);
}

}  // namespace
