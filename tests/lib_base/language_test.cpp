#include "lib_base/language.h"

#include <gtest/gtest.h>

#include "lib_base/translate.h"

namespace {

std::string inLanguage(const char* locale) {
  return languageNamed(locale).translation("Preprocessor");
}

TEST(Language, IsChosenByTheNameOfALocale) {
  const std::pair<const char*, std::string_view> kCases[] = {
      {"de", "Pr\xC3\xA4prozessor"},
      {"de_AT.UTF-8", "Pr\xC3\xA4prozessor"},
      {"de_DE.utf8@euro", "Pr\xC3\xA4prozessor"},
      {"de_DE.ISO-8859-1", "Pr\xE4prozessor"},
      {"de_DE.ISO-8859-15@euro", "Pr\xE4prozessor"},
      {"pt_BR", "Pr\xC3\xA9-processador"},
      {"de_DE.KOI8-R", "Preprocessor"},
      {"den", "Preprocessor"},
      {"C.UTF-8", "Preprocessor"},
      {"", "Preprocessor"},
      {nullptr, "Preprocessor"},
  };
  for (const auto& [locale, expected] : kCases) EXPECT_EQ(inLanguage(locale), expected);
}

TEST(Language, RulesTranslateWhileItsScopeLives) {
  {
    const tLanguageScope german(languageNamed("de"));
    EXPECT_EQ(translate("Error"), "Fehler");
    EXPECT_EQ(translate("no such text"), "no such text");
    {
      const tLanguageScope english((tLanguage()));
      EXPECT_EQ(translate("Error"), "Error");
    }
    EXPECT_EQ(translate("Error"), "Fehler");
  }
  EXPECT_EQ(translate("Error"), "Error");
}

// The search wants the order of bytes.
TEST(Language, FindsEveryOneOfItsWords) {
  for (const tNamedWords& named : kLanguages) {
    const tLanguage language(named.words, false);
    for (const tTranslation& entry : named.words) {
      EXPECT_EQ(language.translation(entry.text), entry.translation);
    }
  }
  EXPECT_EQ(kLanguages.size(), 2U);
}

}  // namespace
