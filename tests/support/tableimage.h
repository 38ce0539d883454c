#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "ssvp40xpf/sstableformat.h"

/// Small scanner and parser images for tests, written state by state or from a few productions.
namespace tableimage {

using tImage = std::vector<std::uint32_t>;

inline std::size_t bytes(const tImage& image) {
  return image.size() * sstable::kWordSize;
}

// ---- scanner images ----------------------------------------------------------------------------

/// One automaton. State 0 exists from the start and accepts nothing.
class tAutomaton {
 public:
  tAutomaton() { state(0, 0); }

  unsigned state(std::uint32_t token, std::uint32_t flags, std::uint32_t list = 0,
                 std::uint32_t type = 0) {
    states_.push_back({{token, list, flags, 0, type, 0, 0}, {}});
    return static_cast<unsigned>(states_.size() - 1);
  }
  /// Transitions of a state are given in ascending order.
  tAutomaton& on(unsigned from, std::uint32_t low, std::uint32_t high, unsigned to) {
    states_[from].row.insert(states_[from].row.end(), {low, high, to});
    return *this;
  }
  tAutomaton& on(unsigned from, char code, unsigned to) {
    return on(from, static_cast<unsigned char>(code), static_cast<unsigned char>(code), to);
  }

  tImage block() const {
    tImage out(sstable::kBlockHeaderWords);
    for (const tState& state : states_) {
      out.insert(out.end(), state.final.begin(), state.final.end());
    }
    tImage rowIndex;
    for (const tState& state : states_) {
      rowIndex.push_back(static_cast<std::uint32_t>(bytes(out)));
      out.push_back(static_cast<std::uint32_t>(state.row.size() / 3));
      out.insert(out.end(), state.row.begin(), state.row.end());
    }
    out[sstable::kBlockRowIndex] = static_cast<std::uint32_t>(bytes(out));
    out.insert(out.end(), rowIndex.begin(), rowIndex.end());
    out[sstable::kBlockMagic] = sstable::kLexMagic;
    out[sstable::kBlockStateCount] = static_cast<std::uint32_t>(states_.size());
    out[sstable::kBlockFinals] = sstable::kBlockHeaderWords * sstable::kWordSize;
    out[sstable::kBlockSize] = out[sstable::kBlockSizeAgain] =
        static_cast<std::uint32_t>(bytes(out));
    return out;
  }

 private:
  struct tState {
    std::vector<std::uint32_t> final;
    std::vector<std::uint32_t> row;
  };
  std::vector<tState> states_;
};

inline tImage lexImage(const std::vector<tAutomaton>& lists) {
  tImage out(sstable::kLexHeaderWords);
  out[sstable::kLexListCount] = static_cast<std::uint32_t>(lists.size());
  out[sstable::kLexHeaderMagic] = sstable::kLexMagic;
  for (const tAutomaton& list : lists) {
    const tImage block = list.block();
    out.insert(out.end(), block.begin(), block.end());
  }
  return out;
}

// ---- parser images -----------------------------------------------------------------------------

using tSymbol = std::uint32_t;

struct tProduction {
  tSymbol left;
  std::vector<tSymbol> right;
};

/// Builds the SLR(1) table of a grammar whose production 0 is {0, {start symbol}}; a conflict is
/// resolved by shifting. A transition on sstable::kTokenError becomes the row's error entry.
class tSlrTable {
 public:
  explicit tSlrTable(std::vector<tProduction> grammar) : grammar_(std::move(grammar)) {
    findFollowers();
    findStates();
  }

  /// Sets flags beside the error entry's in every row.
  tImage image(std::uint32_t rowFlags = 0) const {
    tImage out(sstable::kYaccRowIndex + states_.size());
    out[sstable::kYaccHeaderMagic] = sstable::kYaccMagic;
    out[sstable::kYaccCounts] = static_cast<std::uint32_t>(grammar_.size());
    out[sstable::kYaccStateCount] = static_cast<std::uint32_t>(states_.size());
    out[sstable::kYaccFirstRow] = static_cast<std::uint32_t>(bytes(out));
    for (std::size_t state = 0; state < states_.size(); ++state) {
      out[sstable::kYaccRowIndex + state] = static_cast<std::uint32_t>(bytes(out));
      appendRow(out, state, rowFlags);
    }
    out[sstable::kYaccProductions] = static_cast<std::uint32_t>(bytes(out));
    for (const tProduction& production : grammar_) {
      out.push_back(static_cast<std::uint32_t>(production.right.size()));
      out.push_back(production.left);
    }
    return out;
  }

 private:
  using tItem = std::pair<std::size_t, std::size_t>;  // production and dot
  using tItems = std::set<tItem>;

  bool isNonterminal(tSymbol symbol) const {
    return std::any_of(grammar_.begin(), grammar_.end(),
                       [&](const tProduction& p) { return p.left == symbol; });
  }

  void findFollowers() {
    following_[0].insert(sstable::kTokenEof);
    for (bool changed = true; changed;) {
      changed = false;
      const auto merge = [&](std::set<tSymbol>& into, const std::set<tSymbol>& from) {
        const std::size_t before = into.size();
        into.insert(from.begin(), from.end());
        changed = changed || into.size() != before;
      };
      for (const tProduction& p : grammar_) {
        std::set<tSymbol> after = following_[p.left];
        bool empty = true;  // whether everything from here to the left end can be empty
        std::set<tSymbol> first;
        for (std::size_t i = p.right.size(); i-- != 0;) {
          const tSymbol symbol = p.right[i];
          if (!isNonterminal(symbol)) {
            after = {symbol};
            continue;
          }
          merge(following_[symbol], after);
          if (empties_.count(symbol) == 0) after.clear();
          after.insert(firsts_[symbol].begin(), firsts_[symbol].end());
        }
        for (const tSymbol symbol : p.right) {
          if (!empty) break;
          const bool token = !isNonterminal(symbol);
          if (token) first.insert(symbol);
          if (!token) first.insert(firsts_[symbol].begin(), firsts_[symbol].end());
          empty = !token && empties_.count(symbol) != 0;
        }
        merge(firsts_[p.left], first);
        if (empty) changed = empties_.insert(p.left).second || changed;
      }
    }
  }

  tItems closure(tItems items) const {
    for (std::vector<tItem> pending(items.begin(), items.end()); !pending.empty();) {
      const auto [production, dot] = pending.back();
      pending.pop_back();
      if (dot == grammar_[production].right.size()) continue;
      for (std::size_t i = 0; i < grammar_.size(); ++i) {
        if (grammar_[i].left != grammar_[production].right[dot]) continue;
        if (items.insert({i, 0}).second) pending.emplace_back(i, 0);
      }
    }
    return items;
  }

  void findStates() {
    states_.push_back(closure({{0, 0}}));
    for (std::size_t state = 0; state < states_.size(); ++state) {
      std::map<tSymbol, tItems> kernels;
      for (const auto& [production, dot] : states_[state]) {
        const auto& right = grammar_[production].right;
        if (dot < right.size()) kernels[right[dot]].insert({production, dot + 1});
      }
      moves_.emplace_back();
      for (const auto& [symbol, kernel] : kernels) {
        const tItems items = closure(kernel);
        const auto at = std::find(states_.begin(), states_.end(), items);
        moves_[state][symbol] = static_cast<std::uint32_t>(at - states_.begin());
        if (at == states_.end()) states_.push_back(items);
      }
    }
  }

  void appendRow(tImage& out, std::size_t state, std::uint32_t flags) const {
    std::map<tSymbol, std::uint32_t> actions;
    tImage gotos;
    tImage errorEntry;
    for (const auto& [symbol, target] : moves_[state]) {
      if (isNonterminal(symbol)) {
        gotos.insert(gotos.end(), {target, symbol});
      } else if (symbol == sstable::kTokenError) {
        errorEntry = {target, symbol};
      } else {
        actions[symbol] = sstable::kActionShift | target;
      }
    }
    for (const auto& [production, dot] : states_[state]) {
      if (dot != grammar_[production].right.size()) continue;
      const auto word = production == 0
                            ? sstable::kActionAccept
                            : sstable::kActionReduce | static_cast<std::uint32_t>(production);
      for (const tSymbol token : following_.at(grammar_[production].left)) {
        actions.emplace(token, word);
      }
    }
    if (!errorEntry.empty()) flags |= sstable::kRowErrorEntry;
    out.insert(out.end(), {flags, static_cast<std::uint32_t>(gotos.size() / 2),
                           static_cast<std::uint32_t>(actions.size())});
    for (const auto& [token, word] : actions) out.insert(out.end(), {word, token});
    out.insert(out.end(), gotos.begin(), gotos.end());
    out.insert(out.end(), errorEntry.begin(), errorEntry.end());
  }

  std::vector<tProduction> grammar_;
  std::map<tSymbol, std::set<tSymbol>> firsts_;
  std::map<tSymbol, std::set<tSymbol>> following_;
  std::set<tSymbol> empties_;
  std::vector<tItems> states_;
  std::vector<std::map<tSymbol, std::uint32_t>> moves_;
};

}  // namespace tableimage
