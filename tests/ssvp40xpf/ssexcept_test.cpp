#include "ssvp40xpf/ssexcept.h"

#include <cstdint>
#include <limits>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "tests/ssvp40xpf/samples.h"

namespace {

using samples::raised;

class tRaiser : public SSExceptionPresent {};

TEST(Exceptions, FormatTextAndArguments) {
  const tRaiser raiser;
  EXPECT_EQ(raised([&] { raiser.raise(SSErrorToken, 3, 14L, "a%sb"); }),
            "5 SSLex0105e: Invalid token, Line 3, Offset 14, a%sb");
  EXPECT_EQ(raised([&] { raiser.raise(SSErrorStackFull); }), "8 SSLifo0001e: Stack full");
  SSExceptionInfo::setException(false);
  EXPECT_EQ(raised([&] { raiser.raise(SSErrorStackFull); }), "none");
  SSExceptionInfo::setException(true);
  EXPECT_EQ(raised([&] { raiser.throwException(200, "C%04d 100%% %-3s|%x", 7, "ab", 255); }),
            "200 C0007 100% ab |ff");
  // Formats and arguments that do not fit each other are harmless.
  EXPECT_EQ(raised([&] { raiser.throwException(200, "%s %ld %s %n %", 5, "text"); }), "200 5 0   ");
  try {
    raiser.throwException(SSErrorLanguage, "", 42);
  } catch (const SSException& exception) {
    const SSException copied = exception;
    EXPECT_STREQ(copied.message(), "");
    EXPECT_EQ(copied.argument(0).number(), 42);
    EXPECT_EQ(copied.argument(1).kind(), SSExceptionArgument::kEmpty);
    EXPECT_EQ(copied.argument(99).kind(), SSExceptionArgument::kEmpty);
  }
}

TEST(Exceptions, CutLongTextsAndRefuseOnlyGiantOnes) {
  const tRaiser raiser;
  const std::string expected = "22 SSYacc0111e: Error reading table, " + std::string(600, 'x');
  const std::string found =
      raised([&] { raiser.raise(SSErrorYaccTable, std::string(600, 'x').c_str()); });
  EXPECT_EQ(found, expected.substr(0, 3 + 511));
  const std::string giant(tRaiser::kFormatLength + 1, 'x');
  EXPECT_EQ(raised([&] { raiser.throwException(200, "%s", giant.c_str()); }),
            "46 SSException0002e: sprintf msg too long");
}

TEST(Exceptions, ReportFailedAllocations) {
  const std::new_handler before = setSSExceptionNewHandler();
  EXPECT_EQ(std::get_new_handler(), &SSExceptionNewHandler);
  // The handler is called by itself: a sanitized build ends at an allocation that really fails.
  EXPECT_EQ(raised([] { SSExceptionNewHandler(); }), "-1 SSException0001e: Out of storage");
  SSExceptionInfo::setThrowPointer(true);
  EXPECT_EQ(raised([] { SSExceptionNewHandler(); }), "pointer -1 SSException0001e: Out of storage");
  SSExceptionInfo::setThrowPointer(false);
#ifndef __SANITIZE_ADDRESS__
  EXPECT_EQ(raised([] {
              volatile std::size_t size = std::numeric_limits<std::size_t>::max() / 4;
              ::operator delete(::operator new(size));
            }),
            "-1 SSException0001e: Out of storage");
#endif
  std::set_new_handler(before);
}

}  // namespace
