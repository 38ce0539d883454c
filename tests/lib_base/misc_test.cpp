#include "lib_base/misc.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "lib_base/list.h"
#include "lib_base/output.h"
#include "lib_base/pathname.h"
#include "lib_base/translate.h"
#include "tests/lib_base/fatalof.h"

namespace {

TEST(Misc, FindsWhatThePlainSearchFinds) {
  std::mt19937 random(7);
  const auto lower = [](std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lowerAscii);
    return text;
  };
  for (int i = 0; i < 20000; ++i) {
    std::string letters(random() % 100, 'a');
    const char* const alphabet = i % 2 == 0 ? "aaaaaaab" : "aAaA@`{[";
    for (char& c : letters) c = alphabet[random() % 8];
    // Exactly as many bytes as the text has, so that a read past its end is seen.
    const std::vector<char> bytes(letters.begin(), letters.end());
    const std::string_view text(bytes.data(), bytes.size());
    const std::size_t from = random() % (letters.size() + 3);
    std::string what = letters.substr(random() % (letters.size() + 1), random() % 24);
    for (int tries = 0; tries < 2; ++tries) {
      ASSERT_EQ(findText(text, what, from), text.find(what, from)) << letters << ' ' << what;
      const std::string other = random() % 2 == 0 ? lower(what) : what;
      ASSERT_EQ(findTextNoCase(text, other, from), lower(letters).find(lower(what), from))
          << letters << ' ' << other;
      what += "ab@`["[random() % 5];
    }
  }
}

TEST(Misc, FoldsAsciiLettersOnly) {
  struct tCase {
    const char *a, *b;
    int order;
  };
  const tCase kCases[] = {
      {"", "", 0},         {"aBc", "AbC", 0}, {"ab", "abc", -1}, {"b", "A", 1},
      {"_", "Z", 1},       {"_", "z", 1},     {"[", "a", 1},     {"@", "`", -1},
      {"\xe1", "\xc1", 1}, {"{", "[", 1},     {"a", "\xe1", -1},
  };
  for (const tCase& c : kCases) {
    EXPECT_EQ(compareNoCase(c.a, c.b), c.order) << c.a << ' ' << c.b;
    EXPECT_EQ(compareNoCase(c.b, c.a), -c.order) << c.a << ' ' << c.b;
    EXPECT_EQ(equalNoCase(c.a, c.b), c.order == 0) << c.a << ' ' << c.b;
  }
  EXPECT_TRUE(startsWithNoCase("#ZIPped", "#zip"));
  EXPECT_FALSE(startsWithNoCase("#zi", "#zip"));
  EXPECT_EQ(trimmed(" \t a b\r\n"), "a b");
  EXPECT_EQ(trimmed(" \r\n"), "");
}

TEST(PathName, SplitsIntoPartsThatGiveTheNameAgain) {
  struct tCase {
    const char *name, *directory, *base, *extension;
  };
  const tCase kCases[] = {
      {"", "", "", ""},
      {"dir.d/a", "dir.d/", "a", ""},
      {"a.", "", "a", "."},
      {".profile", "", ".profile", ""},
      {"x/.profile.ch", "x/", ".profile", ".ch"},
      {"c:\\x\\a.prw", "", "c:\\x\\a", ".prw"},
  };
  for (const tCase& c : kCases) {
    tPathParts parts;
    SplitPath(c.name, parts);
    EXPECT_EQ(parts.directory, c.directory) << c.name;
    EXPECT_EQ(parts.base, c.base) << c.name;
    EXPECT_EQ(parts.extension, c.extension) << c.name;
    EXPECT_EQ(bareName(c.name), std::string(c.base) + c.extension);
  }
  EXPECT_EQ(joinPath("inc", "a.ch"), "inc/a.ch");
  EXPECT_EQ(joinPath("inc/", "a.ch"), "inc/a.ch");
  EXPECT_EQ(joinPath("", "a.ch"), "a.ch");
  EXPECT_EQ(normaliseFileName(" \"my file.ch\" "), "my file.ch");
}

class tCollector : public tOutputSink {
 public:
  void write(std::string_view text) override { collected += text; }
  std::string collected;
};

TEST(Output, GoesToTheInnermostSinkOfTheThread) {
  tCollector outer, inner, other;
  const tOutputScope outerScope(outer);
  qdprintf("%d%%", 1);
  {
    const tOutputScope innerScope(inner);
    writeOutput(std::string_view("2\0", 2));
    std::thread([&] {
      const tOutputScope otherScope(other);
      qdprintf("3");
    }).join();
  }
  std::string expected = "1%";
  for (std::size_t width : {1023u, 1024u, 5000u}) {
    qdprintf("%*d", static_cast<int>(width), 4);
    expected += std::string(width - 1, ' ') + "4";
  }
  EXPECT_EQ(inner.collected, std::string("2\0", 2));
  EXPECT_EQ(other.collected, "3");
  EXPECT_EQ(outer.collected, expected);
}

TEST(Fatal, NamesItsPlaceAndCutsLongTexts) {
  try {
    krpreAssert(1 > 2, std::string(1000, 'x').c_str(), "lib_base/some");
    FAIL();
  } catch (const tFatalError& error) {
    EXPECT_EQ(error.text(), std::string(255, 'x'));
    EXPECT_STREQ(error.unit(), "lib_base/some");
    EXPECT_EQ(error.line(), __LINE__ - 5u);
  }
  EXPECT_EQ(fatalOf([] { fatalAllocation(std::size_t{5} << 32, "lib_base/some", 1); }),
            "Memory Allocation Failure ( 21474836480 Bytes )");
}

TEST(Array, IndexesOutsideAreFatal) {
  int value = 0;
  tArray<int> array;
  EXPECT_NE(fatalOf([&] { array.last(); }), "");
  array.add(&value);
  for (const int index : {-1, 1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(fatalOf([&] { array.get(index); }), "array index out of bounds") << index;
    EXPECT_NE(fatalOf([&] { array.takeAt(index); }), "") << index;
    EXPECT_NE(fatalOf([&] { array.insertAt(index == 1 ? 2 : index, &value); }), "") << index;
  }
  EXPECT_EQ(array.count(), 1);
}

TEST(Translate, LoadsNothingForAHostWithoutQt) {
  EXPECT_EQ(translate("Compiling"), "Compiling");
  EXPECT_EQ(dlopen("libQt5Core.so.5", RTLD_LAZY | RTLD_NOLOAD), nullptr);
}

}  // namespace
