#include "korelpre/expansion.h"

#include "korelpre/rule.h"

namespace precomp {

namespace {

constexpr std::size_t kLargestExpansion = 65536;

// Follows the names in a value to their own values. Its depth is bounded by the rewrites allowed.
class tExpander {
 public:
  tExpander(tRuleIndex& index, tString& text) : index_(index), text_(text) {}

  bool expand(const tIndexedName& name, std::string_view spacing) {
    if (name.rules != 1 || name.rule->firstMatch()->next() != nullptr) return false;
    if (++rewrites_ > kMostRewrites) return false;
    const tMatchMarker* marker = name.rule->firstResult();
    for (bool first = true; marker != nullptr; marker = marker->next(), first = false) {
      const tSpcString& token = marker->token();
      if (!add(token, first ? spacing : token.spacing().view())) return false;
    }
    return true;
  }

  int rewrites() const { return rewrites_; }

 private:
  bool add(const tSpcString& token, std::string_view spacing) {
    if (const tIndexedName* name = index_.find(token)) return expand(*name, spacing);
    text_.append(spacing);
    text_.append(token);
    return text_.size() <= kLargestExpansion;
  }

  tRuleIndex& index_;
  tString& text_;
  int rewrites_ = 0;
};

}  // namespace

bool expandName(tRuleIndex& index, tIndexedName& name) {
  if (name.generation == index.generation()) return name.plain;
  name.generation = index.generation();
  name.text.clear();
  tExpander expander(index, name.text);
  name.plain = expander.expand(name, {});
  name.rewrites = expander.rewrites();
  return name.plain;
}

}  // namespace precomp
