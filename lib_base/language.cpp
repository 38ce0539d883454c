#include "lib_base/language.h"

#include <algorithm>

#include "lib_base/misc.h"

namespace {

thread_local const tLanguage* currentLanguage = nullptr;

enum class eEncoding { kUtf8, kLatin1, kOther };

struct tEncodingName {
  std::string_view name;  // lower-case letters and digits only
  eEncoding encoding;
};

constexpr tEncodingName kEncodings[] = {
    {"", eEncoding::kUtf8},           {"utf8", eEncoding::kUtf8},
    {"iso88591", eEncoding::kLatin1}, {"iso885915", eEncoding::kLatin1},
    {"cp1252", eEncoding::kLatin1},
};

eEncoding encodingNamed(std::string_view name) {
  std::string folded;
  for (const char c : name) {
    const char lower = lowerAscii(c);
    if ((lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9')) folded += lower;
  }
  for (const tEncodingName& known : kEncodings) {
    if (known.name == folded) return known.encoding;
  }
  return eEncoding::kOther;
}

// Converts UTF-8 whose characters are all in Latin-1, so none is longer than two bytes.
std::string latin1Of(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool pair = byte >= 0xC0 && i + 1 < text.size();
    bytes += pair ? static_cast<char>((byte << 6 | (text[++i] & 0x3F)) & 0xFF) : text[i];
  }
  return bytes;
}

}  // namespace

std::string tLanguage::translation(std::string_view text) const {
  const auto found = std::lower_bound(
      words_.begin(), words_.end(), text,
      [](const tTranslation& entry, std::string_view wanted) { return entry.text < wanted; });
  if (found == words_.end() || found->text != text) return std::string(text);
  return latin1_ ? latin1Of(found->translation) : std::string(found->translation);
}

tLanguage languageNamed(const char* locale) {
  const std::string_view name = locale != nullptr ? locale : "";
  const std::string_view language = name.substr(0, name.find_first_of("_.@"));
  const std::size_t dot = name.find('.');
  const std::string_view rest = dot == std::string_view::npos ? "" : name.substr(dot + 1);
  const eEncoding encoding = encodingNamed(rest.substr(0, rest.find('@')));
  if (encoding == eEncoding::kOther) return {};
  for (const tNamedWords& known : kLanguages) {
    if (known.name == language) return {known.words, encoding == eEncoding::kLatin1};
  }
  return {};
}

tLanguageScope::tLanguageScope(const tLanguage& language) noexcept
    : language_(language), previous_(currentLanguage) {
  currentLanguage = &language_;
}

tLanguageScope::~tLanguageScope() {
  currentLanguage = previous_;
}

const tLanguage* tLanguageScope::current() noexcept {
  return currentLanguage;
}
