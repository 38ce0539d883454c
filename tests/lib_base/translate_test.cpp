#include "lib_base/translate.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTranslator>
#include <clocale>
#include <cstring>

#include "tests/lib_base/fatalof.h"

namespace {

/// The translations of a host.
class tHostTranslator : public QTranslator {
 public:
  QString translate(const char* context, const char* text, const char*, int) const override {
    if (std::strcmp(context, "Preprocessor") != 0) return {};
    if (std::strcmp(text, "Compiling") == 0) return QStringLiteral("Übersetze");
    if (std::strcmp(text, "long") == 0) return QString(100000, QLatin1Char('x'));
    if (std::strcmp(text, "Memory Allocation Failure") == 0) return QStringLiteral("Speicher");
    return {};
  }
  bool isEmpty() const override { return false; }
};

TEST(Translate, AsksTheTranslatorOfTheHost) {
  if (!std::setlocale(LC_ALL, "C.UTF-8")) GTEST_SKIP() << "no locale that has the letters";
  testing::internal::CaptureStderr();
  EXPECT_EQ(translate("Compiling"), "Compiling");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "without an application object";
  {
    char name[] = "host";
    char* arguments[] = {name, nullptr};
    int count = 1;
    QCoreApplication application(count, arguments);
    EXPECT_EQ(translate("Compiling"), "Compiling") << "without a translator";
    tHostTranslator translator;
    ASSERT_TRUE(QCoreApplication::installTranslator(&translator));
    EXPECT_EQ(translate("Compiling"), "Übersetze");
    EXPECT_EQ(translate("Finished"), "Finished");
    EXPECT_EQ(translate("long").view(), std::string(100000, 'x'));
    EXPECT_EQ(fatalOf([] { fatalAllocation(8, "lib_base/some", 1); }), "Speicher ( 8 Bytes )");
    QCoreApplication::removeTranslator(&translator);
  }
  EXPECT_EQ(translate("Compiling"), "Compiling") << "after the application object";
}

}  // namespace
