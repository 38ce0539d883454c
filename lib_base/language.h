#pragma once

#include <span>
#include <string>
#include <string_view>

/// A message text in English and in another language, in UTF-8.
struct tTranslation {
  std::string_view text;
  std::string_view translation;
};

/// A language that messages are translated to.
class tLanguage {
 public:
  /// English.
  tLanguage() = default;
  /// `words` must be sorted by English text. Translations are returned in UTF-8 or in Latin-1,
  /// which must then cover all their characters.
  tLanguage(std::span<const tTranslation> words, bool latin1) : words_(words), latin1_(latin1) {}

  /// Returns the text itself if there is no translation.
  std::string translation(std::string_view text) const;

 private:
  std::span<const tTranslation> words_;
  bool latin1_ = false;
};

/// The language for a locale name such as "de", "pt_BR.UTF-8" or "de_DE.ISO-8859-1". English for
/// null and for an unsupported language or encoding.
tLanguage languageNamed(const char* locale);

/// For the lifetime of this object, makes translate() use one of the library's own languages in the
/// calling thread, regardless of any translator of the host.
class tLanguageScope {
 public:
  explicit tLanguageScope(const tLanguage& language) noexcept;
  ~tLanguageScope();
  tLanguageScope(const tLanguageScope&) = delete;
  tLanguageScope& operator=(const tLanguageScope&) = delete;

  /// The calling thread's language; null if the host decides.
  static const tLanguage* current() noexcept;

 private:
  tLanguage language_;
  const tLanguage* previous_;
};

/// The languages built into the library, generated from translations/*.ts.
struct tNamedWords {
  std::string_view name;
  std::span<const tTranslation> words;
};
extern const std::span<const tNamedWords> kLanguages;
