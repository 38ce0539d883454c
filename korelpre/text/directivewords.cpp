#include "korelpre/text/directivewords.h"

#include <span>
#include <string_view>

#include "lib_base/misc.h"

namespace precomp {

namespace {

enum eSkipped : std::uint8_t { kIgnored, kCounted };

struct tRow {
  std::string_view word;
  eDirective directive;
  eSkipped skipped;
};

constexpr tRow kRows[] = {
#define DIRECTIVE(name, word, skipped) {word, eDirective::name, skipped},
#include "korelpre/text/directives.def"
#undef DIRECTIVE
};

// The conditionals stand first.
constexpr std::size_t conditionals() {
  std::size_t count = 0;
  while (kRows[count].skipped == kCounted) ++count;
  return count;
}

tDirectiveWord find(std::span<const tRow> rows, const char* p, const char* end) {
  const std::string_view rest(p, static_cast<std::size_t>(end - p));
  for (const tRow& row : rows) {
    if (startsWithNoCase(rest, row.word)) {
      return {row.directive, static_cast<int>(row.word.size())};
    }
  }
  return {};
}

}  // namespace

tDirectiveWord directiveAt(const char* p, const char* end) {
  return find(kRows, p, end);
}

tDirectiveWord conditionalAt(const char* p, const char* end) {
  return find(std::span(kRows).first<conditionals()>(), p, end);
}

}  // namespace precomp
