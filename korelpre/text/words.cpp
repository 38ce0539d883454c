#include "korelpre/text/words.h"

#include <algorithm>
#include <cstddef>

#include "lib_base/misc.h"

namespace precomp {

namespace {

struct tWordEntry {
  std::string_view word;
  std::size_t shortest;  // letters that are enough
  eStatementWord meaning;
};

using enum eStatementWord;

// Words with the same first two letters stand together, the frequent ones first.
// clang-format off
constexpr tWordEntry kWords[] = {
    {"BEGIN",                4, kBegin},
    {"BREAK",                4, kBreak},
    {"CASE",                 4, kCase},
    {"CATCH",                5, kCatch},
    {"DO",                   2, kDo},
    {"ELSE",                 4, kElse},
    {"ELSEIF",               5, kElseIf},
    {"ENDIF",                4, kEndIf},
    {"ENDDO",                4, kEndDo},
    {"END",                  3, kEnd},
    {"ENDCASE",              4, kEndCase},
    {"ENDTRY",               6, kEndTry},
    {"EXIT",                 4, kExit},
    {"EXPORT",               6, kModifier},
    {"FIELD",                4, kDeclaration},
    {"FOR",                  3, kFor},
    {"FUNCTION",             4, kFunction},
    {"HIDDEN",               6, kModifier},
    {"IF",                   2, kIf},
    {"INIT",                 4, kModifier},
    {"LOCAL",                4, kLocal},
    {"LOOP",                 4, kLoop},
    {"MAIN",                 4, kModifier},
    {"MAIN_FUNC",            9, kMainFunction},
    {"MEMVAR",               4, kDeclaration},
    {"METHOD",               6, kMethod},
    {"NAMESPACE",            9, kNamespace},
    {"NEXT",                 4, kNext},
    {"OTHERWISE",            4, kOtherwise},
    {"PARAMETERS",           4, kDeclaration},
    {"PRIVATE",              4, kDeclaration},
    {"PROCEDURE",            4, kFunction},
    {"PROTECTED",            9, kModifier},
    {"PUBLIC",               4, kDeclaration},
    {"RETURN",               4, kReturn},
    {"RECOVER",              4, kRecover},
    {"SEQUENCE",             4, kSequence},
    {"STATIC",               4, kStatic},
    {"TRY",                  3, kTry},
    {"USER",                 4, kModifier},
    {"USING",                5, kNamespace},
    {"WHILE",                4, kWhile},
    {"_FIELD",               5, kDeclaration},
    {"__IGNOREDEBUGLINE__", 19, kDebugMarker},
    {"__SYNCHRONIZEDEBUG__",20, kDebugMarker},
};
// clang-format on

constexpr bool sameStart(std::string_view a, std::string_view b) {
  return a[0] == b[0] && a[1] == b[1];
}

constexpr std::array<std::uint8_t, 1024> makePlaces() {
  std::array<std::uint8_t, 1024> places{};
  std::uint8_t place = 0;
  for (const tWordEntry& entry : kWords) {
    const auto first = static_cast<unsigned char>(entry.word[0]);
    const auto second = static_cast<unsigned char>(entry.word[1]);
    std::uint8_t& known = places[(first & 31U) << 5 | (second & 31U)];
    ++place;
    if (known == 0) known = place;
  }
  return places;
}

// Whether a word is the beginning of `whole`, which is in upper case.
bool abbreviates(std::string_view word, std::string_view whole) {
  if (word.size() > whole.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    // No other name character becomes one of those in the table.
    if ((word[i] & 0xDF) != whole[i]) return false;
  }
  return true;
}

int compareAbbreviated(std::string_view keyword, std::string_view word, unsigned char mask) {
  const std::size_t count = std::max(word.size(), kShortestAbbreviation);
  for (std::size_t i = 0; i < count; ++i) {
    const bool keywordEnds = i >= keyword.size();
    const bool wordEnds = i >= word.size();
    if (keywordEnds || wordEnds) return static_cast<int>(wordEnds) - static_cast<int>(keywordEnds);
    const int k = static_cast<unsigned char>(keyword[i]) & mask;
    const int w = static_cast<unsigned char>(word[i]) & mask;
    if (k != w) return k - w;
  }
  return 0;
}

}  // namespace

namespace statementwords {
constinit const std::array<std::uint8_t, 1024> kPlaces = makePlaces();
}

eStatementWord statementWord(std::string_view word) {
  if (word.size() < 2) return kNone;
  const unsigned place = statementwords::kPlaces[statementwords::pairOf(word[0], word[1])];
  if (place == 0) return kNone;
  const tWordEntry* const end = kWords + std::size(kWords);
  const tWordEntry* const first = &kWords[place - 1];
  for (const tWordEntry* entry = first; entry < end && sameStart(entry->word, first->word);
       ++entry) {
    if (word.size() >= entry->shortest && abbreviates(word, entry->word)) return entry->meaning;
  }
  return kNone;
}

int compareKeyword(std::string_view keyword, std::string_view word, tWordRule rule) {
  if (rule.abbreviate) {
    return compareAbbreviated(keyword, word, rule.caseSensitive ? 0xFF : 0xDF);
  }
  return rule.caseSensitive ? keyword.compare(word) : compareNoCase(keyword, word);
}

}  // namespace precomp
