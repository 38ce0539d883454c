#include "cli/chapters.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "cli/optiontable.h"
#include "cli/optiontexts.h"
#include "lib_base/nearest.h"

namespace {

// Without the "C" in front of a number, and without zeros there; slugs are in lower case.
std::string normalKey(std::string key) {
  std::transform(key.begin(), key.end(), key.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  const bool numbered = key.size() > 1 && key[0] == 'c' &&
                        key.find_first_not_of("0123456789", 1) == std::string::npos;
  return numbered ? key.substr(1) : key;
}

}  // namespace

std::string chapterText(const std::string& key) {
  constexpr std::size_t kIndent = 4;
  const std::string wanted = normalKey(key);
  std::string text;
  for (const tChapter& chapter : chapters()) {
    const std::vector<std::string> keys = wordsOf(chapter.keys);
    if (std::find(keys.begin(), keys.end(), wanted) == keys.end()) continue;
    if (!text.empty()) text += '\n';
    appendWrapped(text, chapter.title, 0);
    for (const tChapterPart* part = chapter.parts; part->name != nullptr; ++part) {
      text.append("  ").append(part->name).append(":\n").append(kIndent, ' ');
      appendWrapped(text, part->text, kIndent);
    }
  }
  return text;
}

std::string unknownChapter(const std::string& key) {
  std::vector<std::string> keys;
  for (const tChapter& chapter : chapters()) {
    for (std::string& known : wordsOf(chapter.keys)) keys.push_back(std::move(known));
  }
  const bool number = key.find_first_not_of("0123456789Cc") == std::string::npos;
  const std::string nearest = number ? "" : nearestTo(normalKey(key), keys);
  return "no error or warning is called '" + key + "'" +
         (nearest.empty() ? "" : "; did you mean " + nearest + "?");
}
