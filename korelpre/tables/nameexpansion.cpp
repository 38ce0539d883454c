#include "korelpre/tables/nameexpansion.h"

#include <string>
#include <string_view>

namespace precomp {

namespace {

constexpr std::size_t kLargestExpansion = 65536;

// Follows the names in a value to their own values. Its depth is bounded by the rewrites allowed.
class tExpander {
 public:
  tExpander(tNameTables tables, tString& text) : tables_(tables), text_(text) {}

  // `leads`: nothing of the whole expansion stands in front, not even what vanishes.
  bool expand(const tIndexedName& name, bool leads, std::string_view spacing) {
    if (name.rules != 1 || name.rule->firstMatch()->next() != nullptr) return false;
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

bool isOperatorByte(char c) {
  return std::string_view(":=+-*/^%.<>!#&|").find(c) != std::string_view::npos;
}

}  // namespace

bool expandName(tNameTables tables, tIndexedName& name) {
  const std::uint64_t generation = tables.generation();
  if (name.generation == generation) return name.plain;
  name.generation = generation;
  name.text.clear();
  tExpander expander(tables, name.text);
  name.plain = expander.expand(name, true, {});
  name.rewrites = expander.rewrites();
  name.written = expander.written();
  name.spaced = expander.spaced();
  const std::string_view text = name.text;
  name.nests = nestsAlone(text);
  name.joins = text.empty() || isOperatorByte(text.front()) || isOperatorByte(text.back());
  return name.plain;
}

}  // namespace precomp
