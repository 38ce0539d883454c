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

// Follows the names in a value to their own values. Its depth is bounded by the rewrites allowed.
class tExpander {
 public:
  tExpander(tNameTables tables, tString& text) : tables_(tables), text_(text) {}

  // `leads`: nothing of the whole expansion stands in front, not even what vanishes.
  bool expand(const tIndexedName& name, bool leads, std::string_view spacing) {
    if (name.rules != 1 || isMacro(name)) return false;
    if (++rewrites_ > kMostRewrites) return false;
    const tMatchMarker* marker = name.rule->firstResult();
    for (bool first = true; marker != nullptr; marker = marker->next(), first = false) {
      const tSpcString& token = marker->token();
      if (!add(token, first && leads, first ? spacing : token.spacing().view())) return false;
    }
    return true;
  }

  int rewrites() const { return rewrites_; }
  std::size_t written() const { return written_; }
  bool spaced() const { return spaced_; }

 private:
  bool add(const tSpcString& token, bool leads, std::string_view spacing) {
    written_ += spacing.size() + token.size();
    if (written_ > kLargestExpansion) return false;
    if (const tIndexedName* name = tables_.defines.index().find(token)) {
      return expand(*name, leads, spacing);
    }
    if (!isOneToken(token)) return false;
    if (tables_.translates.lookUp(token) != nullptr) return false;
    spaced_ = spaced_ || leads;
    text_.append(spacing);
    text_.append(token);
    return true;
  }

  tNameTables tables_;
  tString& text_;
  int rewrites_ = 0;
  std::size_t written_ = 0;
  bool spaced_ = false;
};

// Makes the text of a macro with parameters.
class tMacroExpander {
 public:
  explicit tMacroExpander(tNameExpansion& known) : known_(known) {}

  bool expand(const tBaseXChg& rule) {
    readParameters(*rule.firstMatch());
    known_.holes.clear();
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
      known_.text.append(token);
    }
    return known_.text.size() <= kLargestExpansion;
  }

 private:
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

  tNameExpansion& known_;
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

const tNameExpansion* expandName(tNameTables tables, tIndexedName& name) {
  if (name.expansion == nullptr) name.expansion = std::make_unique<tNameExpansion>();
  tNameExpansion& known = *name.expansion;
  const std::uint64_t generation = tables.generation();
  if (known.generation != generation) {
    known.generation = generation;
    known.text.clear();
    if (isMacro(name)) {
      known.plain = tMacroExpander(known).expand(*name.rule);
    } else {
      tExpander expander(tables, known.text);
      known.plain = expander.expand(name, true, {});
      known.rewrites = expander.rewrites();
      known.written = expander.written();
      known.spaced = expander.spaced();
    }
    known.nests = nestsAlone(known.text);
  }
  return known.plain ? &known : nullptr;
}

}  // namespace precomp
