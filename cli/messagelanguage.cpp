#include "cli/messagelanguage.h"

#include <cstdlib>
#include <string_view>

#include "cli/librarycall.h"
#include "include/krpre.h"

namespace {

std::string_view variable(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr ? value : "";
}

std::string_view localeOfMessages() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const std::string_view value = variable(name);
    if (!value.empty()) return value;
  }
  return "";
}

std::string_view languageOf(std::string_view locale) {
  return locale.substr(0, locale.find_first_of("_.@"));
}

}  // namespace

std::string messageLanguage() {
  const std::string_view locale = localeOfMessages();
  const std::string_view language = languageOf(locale);
  // As elsewhere, LANGUAGE does not override the C locale.
  if (language.empty() || language == "C" || language == "POSIX") return {};
  const std::string_view preferred = variable("LANGUAGE");
  const std::string_view first = languageOf(preferred.substr(0, preferred.find(':')));
  if (first.empty()) return std::string(locale);
  const std::size_t dot = locale.find('.');
  return std::string(first).append(dot == std::string_view::npos ? "" : locale.substr(dot));
}

std::string translated(const std::string& language, const char* text) {
  const std::string words = writtenText([&](char* buffer, std::size_t size) {
    return krpre_translate(language.c_str(), text, buffer, size);
  });
  return words.empty() ? text : words;  // without memory they stay English
}
