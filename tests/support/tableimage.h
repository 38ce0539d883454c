#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "ssvp40xpf/sstableformat.h"

/// Small scanner and parser images for tests, written state by state.
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
using tPairs = std::vector<std::pair<tSymbol, std::uint32_t>>;

/// One state: what is done before each token and the state behind each nonterminal, in ascending
/// order; the state behind the error token, 0 for none.
struct tRow {
  tPairs actions;
  tPairs gotos = {};
  std::uint32_t behindError = 0;
};

inline std::uint32_t shift(std::uint32_t state) {
  return sstable::kActionShift | state;
}
inline std::uint32_t reduce(std::uint32_t production) {
  return sstable::kActionReduce | production;
}
inline tRow reducing(std::uint32_t production, const std::vector<tSymbol>& before) {
  tRow row;
  for (const tSymbol token : before) row.actions.emplace_back(token, reduce(production));
  return row;
}

inline void appendPairs(tImage& out, const tPairs& pairs) {
  for (const auto& [symbol, word] : pairs) out.insert(out.end(), {word, symbol});
}

/// `productions` holds the left side and the length of each. Sets `flags` in every row.
inline tImage parserImage(const std::vector<tRow>& rows, const tPairs& productions,
                          std::uint32_t flags = 0) {
  tImage out(sstable::kYaccRowIndex + rows.size());
  out[sstable::kYaccHeaderMagic] = sstable::kYaccMagic;
  out[sstable::kYaccCounts] = static_cast<std::uint32_t>(productions.size());
  out[sstable::kYaccStateCount] = static_cast<std::uint32_t>(rows.size());
  out[sstable::kYaccFirstRow] = static_cast<std::uint32_t>(bytes(out));
  for (std::size_t state = 0; state < rows.size(); ++state) {
    const tRow& row = rows[state];
    const bool recovers = row.behindError != 0;
    const std::uint32_t entry = recovers ? std::uint32_t{sstable::kRowErrorEntry} : 0;
    out[sstable::kYaccRowIndex + state] = static_cast<std::uint32_t>(bytes(out));
    out.insert(out.end(), {flags | entry, static_cast<std::uint32_t>(row.gotos.size()),
                           static_cast<std::uint32_t>(row.actions.size())});
    appendPairs(out, row.actions);
    appendPairs(out, row.gotos);
    if (recovers) appendPairs(out, {{sstable::kTokenError, row.behindError}});
  }
  out[sstable::kYaccProductions] = static_cast<std::uint32_t>(bytes(out));
  appendPairs(out, productions);
  return out;
}

}  // namespace tableimage
