#pragma once

#include <span>
#include <string>
#include <string_view>

/// Words of a message in English and in another language, in UTF-8.
struct tTranslation {
  std::string_view text;
  std::string_view translation;
};

/// A language of the messages.
class tLanguage {
 public:
  /// English.
  tLanguage() = default;
  /// `words` are sorted by their English texts. They come out in UTF-8, or in Latin-1, which must
  /// have all their letters.
  tLanguage(std::span<const tTranslation> words, bool latin1) : words_(words), latin1_(latin1) {}

  /// The text itself when the language does not have it.
  std::string translation(std::string_view text) const;

 private:
  std::span<const tTranslation> words_;
  bool latin1_ = false;
};

/// The language of a locale: "de", "pt_BR.UTF-8", "de_DE.ISO-8859-1". English for null and for one
/// whose language or encoding the library does not have.
tLanguage languageNamed(const char* locale);

/// Makes translate() answer in a language of the library's own for the calling thread, whatever
/// translator the host has, while this object lives.
class tLanguageScope {
 public:
  explicit tLanguageScope(const tLanguage& language) noexcept;
  ~tLanguageScope();
  tLanguageScope(const tLanguageScope&) = delete;
  tLanguageScope& operator=(const tLanguageScope&) = delete;

  /// That of the calling thread; null when the host decides.
  static const tLanguage* current() noexcept;

 private:
  tLanguage language_;
  const tLanguage* previous_;
};

/// The languages that come with the library, made of translations/*.ts when it is built.
struct tNamedWords {
  std::string_view name;
  std::span<const tTranslation> words;
};
extern const std::span<const tNamedWords> kLanguages;
