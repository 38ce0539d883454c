#include "korelpre/errors/errortexts.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "ssvp40xpf/ssexcept.h"

namespace {

std::string document() {
  std::ifstream file(KRPRE_SOURCES "/docs/errors.md");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The rows of a table in the manual, in order, as "number slug text" or "number text".
std::string rowsOf(const std::string& manual, const char* pattern) {
  const std::regex row(pattern);
  std::string rows;
  for (std::sregex_iterator at(manual.begin(), manual.end(), row), end; at != end; ++at) {
    for (std::size_t i = 1; i < at->size(); ++i)
      rows += (*at)[i].str() + (i + 1 < at->size() ? " " : "\n");
  }
  return rows;
}

TEST(ErrorTexts, StandInTheManualWithTheirSlugs) {
  std::string expected;
  for (const precomp::tErrorText& entry : precomp::errorTexts()) {
    // What completes a text is written as a name in capitals.
    const std::string text = entry.text;
    expected += std::to_string(entry.code) + " " + entry.slug + " " + text +
                (text.ends_with(' ') ? "NAME" : "") + "\n";
  }
  EXPECT_EQ(rowsOf(document(),
                   R"(\| (\d{4}) \| `([a-z0-9-]+)` \| `(C\d{4}  [^`]*)` \| [^|]+ \| [^|]+ \|)"),
            expected);
}

struct tRuntimeError {
  int number;
  const char* text;
};

constexpr tRuntimeError kRuntimeErrors[] = {
    {kSSOutOfStorage, "SSException0001e: Out of storage"},
#define SS_ERROR(name, number, text) {number, text},
#include "ssvp40xpf/sserrors.def"
#undef SS_ERROR
};

TEST(ErrorTexts, OfTheRuntimeStandInTheManual) {
  std::set<std::string> expected;
  for (const tRuntimeError& error : kRuntimeErrors) {
    if (*error.text != '\0') expected.insert(std::to_string(error.number) + " " + error.text);
  }
  std::istringstream rows(rowsOf(document(), R"(\| (-?\d{1,2}) \| `(SS[^`]+)`)"));
  std::set<std::string> listed;
  for (std::string row; std::getline(rows, row);) listed.insert(row);
  EXPECT_EQ(listed, expected);
}

}  // namespace
