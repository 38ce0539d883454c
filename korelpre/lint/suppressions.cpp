#include "korelpre/lint/suppressions.h"

#include <algorithm>

#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

constexpr std::string_view kMark = "krpre:";

bool isSlugByte(char c) {
  return isLetter(c) || c == '-';
}

std::string_view takeWord(std::string_view& text) {
  std::size_t at = 0;
  while (at < text.size() && (isBlank(text[at]) || text[at] == ',')) ++at;
  std::size_t end = at;
  while (end < text.size() && isSlugByte(text[end])) ++end;
  const std::string_view word = text.substr(at, end - at);
  text.remove_prefix(end);
  return word;
}

// Where the comment begins that ends in front of the mark; npos when none does.
std::size_t commentBefore(std::string_view before) {
  const std::size_t end = before.find_last_not_of(" \t");
  if (end == std::string_view::npos) return end;
  if (before[end] == '*' && trimmed(before) == "*") return end;
  const std::string_view opening = before.substr(0, end + 1);
  const bool opens = opening.ends_with("//") || opening.ends_with("&&") || opening.ends_with("/*");
  return opens ? end - 1 : std::string_view::npos;
}

}  // namespace

tSuppressions::tSuppressions(std::string_view text) {
  int line = 1;
  std::size_t counted = 0;
  for (std::size_t at = findText(text, kMark); at < text.size();
       at = findText(text, kMark, at + kMark.size())) {
    const std::size_t begin = text.rfind('\n', at) + 1;
    line += static_cast<int>(
        std::count(text.begin() + static_cast<std::ptrdiff_t>(counted),
                   text.begin() + static_cast<std::ptrdiff_t>(std::max(begin, counted)), '\n'));
    counted = std::max(begin, counted);
    const std::string_view before = text.substr(begin, at - begin);
    const std::size_t comment = commentBefore(before);
    if (comment == std::string_view::npos) continue;
    std::string_view words = text.substr(at + kMark.size());
    words = words.substr(0, words.find_first_of("\r\n"));
    const bool alone = trimmed(before.substr(0, comment)).empty();
    std::string_view word = takeWord(words);
    const bool whole = word == "file";
    if (whole) word = takeWord(words);
    for (; !word.empty(); word = takeWord(words)) {
      if (!word.starts_with("no-")) continue;
      tSlugs& slugs = whole ? ofFile_ : ofLines_[alone ? line + 1 : line];
      slugs.emplace_back(word.substr(3));
    }
  }
}

bool tSuppressions::hold(const tSlugs& slugs, std::string_view slug) {
  return std::any_of(slugs.begin(), slugs.end(),
                     [&](const std::string& off) { return off == slug || off == "all"; });
}

bool tSuppressions::covers(std::string_view slug, int line) const {
  const auto found = ofLines_.find(line);
  return hold(ofFile_, slug) || (found != ofLines_.end() && hold(found->second, slug));
}

}  // namespace precomp
