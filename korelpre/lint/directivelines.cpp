#include "korelpre/lint/directivelines.h"

#include "korelpre/text/cursor.h"

namespace precomp {

namespace {

std::string_view nameBehind(const char* p, const char* end) {
  if (isQuote(*p)) {
    const char* const behind = behindString(p);
    if (behind == nullptr) return {};
    return {p + 1, static_cast<std::size_t>(behind - p) - 2};
  }
  const char* const begin = p;
  while (p < end && isWordByte(*p)) ++p;
  return {begin, static_cast<std::size_t>(p - begin)};
}

}  // namespace

std::vector<tDirectiveLine> directiveLinesOf(std::string_view text) {
  std::vector<tDirectiveLine> found;
  const char* const end = text.data() + text.size();
  int line = 1;
  for (const char* at = text.data(); at < end; ++line) {
    const char* const feed = lineFeedFrom(at, end);
    const char* const start = skipBlanks(at, feed);
    const tDirectiveWord word =
        start < feed && *start == '#' ? directiveAt(start, end) : tDirectiveWord();
    if (word.directive != eDirective::kNone && feed < end) {
      const char* const name = skipBlanks(start + word.length, feed);
      found.push_back({word.directive, line, nameBehind(name, feed),
                       static_cast<int>(name - at) + 1 + (isQuote(*name) ? 1 : 0)});
    }
    at = feed < end ? feed + 1 : end;
  }
  return found;
}

}  // namespace precomp
