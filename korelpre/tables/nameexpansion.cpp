#include "korelpre/tables/nameexpansion.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

constexpr std::size_t kLargestExpansion = 65536;
// How far names in values are followed: each level takes stack.
constexpr int kDeepestExpansion = 16;

// Whether a token is one where statements are checked too. Bare text, which an option gives, may
// hold several or none, and a quote that stands alone opens a string of tokens.
bool isOneToken(const tSpcString& token) {
  const std::string_view text = token;
  if (text.empty()) return false;
  const bool quoted = isQuote(text.front());
  if (token.kind() != 0) return !quoted || text.size() > 1;
  return quoted ? text.size() > 1 && text.find(text.front(), 1) == text.size() - 1
                : std::all_of(text.begin(), text.end(), isWordByte);
}

// Makes the text of a definition, with holes for what the use gives.
class tExpander {
 public:
  tExpander(tNameTables tables, tNameExpansion& known, int level)
      : tables_(tables), known_(known), level_(level) {}

  bool expand(const tBaseXChg& rule) {
    known_.rewrites = 1;
    known_.written = 0;
    known_.text.clear();
    known_.holes.clear();
    readParameters(*rule.firstMatch());
    known_.final = known_.parameters == 0;
    bool spaced = false;
    for (const tMatchMarker* part = rule.firstResult(); part != nullptr; part = part->next()) {
      const tSpcString& token = part->token();
      if (!part->isIdentifier()) {
        known_.text.append(token.spacing());
        if (!addArgument(token)) return false;
        continue;
      }
      if (!isOneToken(token)) return false;
      // Kept on purpose: the first literal takes that spacing, wherever it stands.
      if (std::exchange(spaced, true)) {
        known_.text.append(token.spacing());
      } else {
        known_.holes.push_back({known_.text.size(), tExpansionHole::kSpacing});
      }
      addLiteral(token);
      if (known_.text.size() > kLargestExpansion || known_.rewrites > kMostRewrites) return false;
    }
    return true;
  }

 private:
  // A name gives its own text when that is final.
  void addLiteral(const tSpcString& token) {
    known_.written += token.spacing().size() + token.size();
    tIndexedName* const name = tables_.defines.index().find(token);
    const bool expands = name != nullptr && !isMacro(*name) && level_ < kDeepestExpansion;
    const tNameExpansion* nested = expands ? expandName(tables_, *name, level_ + 1) : nullptr;
    if (nested != nullptr && nested->final && !nested->text.empty()) {
      known_.rewrites += nested->rewrites;
      known_.written += nested->written;
      known_.text.append(nested->text);
      return;
    }
    if (name != nullptr || tables_.translates.lookUp(token) != nullptr) known_.final = false;
    known_.text.append(token);
  }

  void readParameters(const tMatchMarker& name) {
    for (const tMatchMarker* part = name.next(); part != nullptr; part = part->next()) {
      if (!part->isIdentifier()) parameters_.push_back(part->token());
    }
    known_.parameters = parameters_.size();
  }

  // Of parameters with the same name all would be written.
  bool addArgument(std::string_view name) {
    const auto same = [name](std::string_view other) { return equalNoCase(name, other); };
    const auto found = std::find_if(parameters_.begin(), parameters_.end(), same);
    if (std::count_if(found, parameters_.end(), same) != 1) return false;
    known_.holes.push_back(
        {known_.text.size(), static_cast<std::size_t>(found - parameters_.begin())});
    return true;
  }

  tNameTables tables_;
  tNameExpansion& known_;
  int level_;
  std::vector<std::string_view> parameters_;
};

// Whether a text can stand anywhere in a statement without a change to how the rest of it nests.
bool nestsAlone(std::string_view text) {
  std::string open;
  for (std::size_t i = 0; i < text.size(); ++i) {
    switch (const char c = text[i]; c) {
      case '"':
      case '\'':
        i = text.find(c, i + 1);
        if (i == std::string_view::npos) return false;
        break;
      case '(':
      case '[':
        open.push_back(c);
        break;
      case ')':
      case ']':
        if (open.empty() || open.back() != (c == ')' ? '(' : '[')) return false;
        open.pop_back();
        break;
      case '@':
      case ';':
        return false;
      default:
        break;
    }
  }
  return open.empty();
}

}  // namespace

bool isMacro(const tIndexedName& name) {
  return name.rules == 1 && name.rule->firstMatch()->next() != nullptr;
}

const tNameExpansion* expandName(tNameTables tables, tIndexedName& name, int level) {
  if (name.expansion == nullptr) name.expansion = std::make_unique<tNameExpansion>();
  tNameExpansion& known = *name.expansion;
  const std::uint64_t generation = tables.generation();
  if (known.generation != generation) {
    known.generation = generation;
    known.plain = false;  // for a name that leads to itself
    known.plain = name.rules == 1 && tExpander(tables, known, level).expand(*name.rule) &&
                  nestsAlone(known.text);
  }
  return known.plain ? &known : nullptr;
}

}  // namespace precomp
