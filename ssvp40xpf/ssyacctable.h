#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ssvp40xpf/sssto.h"
#include "ssvp40xpf/sstableformat.h"

/// A production: the length of its right side and the symbol on its left.
struct SSYaccProduction {
  std::uint32_t size;
  std::uint32_t left;
};

/// A parser table that has been checked, laid out for direct lookup; it owns nothing. The build
/// lays out the built-in ones.
struct SSYaccIndex {
  const std::uint32_t* words;  // of the image
  std::size_t states;
  const std::uint32_t* productions;  // pairs of words
  const std::uint16_t* columns;      // of a symbol in `actions`, by symbol + 2
  std::size_t symbols;               // of `columns`
  std::size_t actionColumns;
  std::size_t gotoColumns;
  const std::uint32_t* actions;  // by state and column
  const std::uint16_t* gotos;    // by state and nonterminal; sstable::kNoState for none
};

/// A compiled parser table. It refers to a built-in one, or is copied from its image (which
/// sstableformat.h describes), checked and laid out while loading; it is read-only afterwards, so
/// any number of parsers may share it. A damaged image, or one with lookahead automata, raises
/// SSErrorYaccTable; with exceptions disabled the table is then left without states.
class SSYaccTable : public SSObject, public SSExceptionPresent {
 public:
  /// The largest token number, and the largest nonterminal relative to kFirstNonterminal.
  static constexpr std::uint32_t kLargestSymbol = 0x0FFF;

  SSYaccTable(const SSYaccIndex& index, const char* name);
  /// An image of `size` bytes; `name` is only used in messages.
  SSYaccTable(const void* image, std::size_t size, const char* name);
  /// Reads the image from a file (SSErrorYaccOpen).
  explicit SSYaccTable(const char* path);
  SSYaccTable(const SSYaccTable&) = delete;
  SSYaccTable& operator=(const SSYaccTable&) = delete;

  unsigned stateCount() const { return static_cast<unsigned>(index_.states); }
  SSYaccProduction production(unsigned number) const {
    const std::uint32_t* const pair = index_.productions + 2 * std::size_t{number};
    return {pair[0], pair[1]};
  }

  /// The action word (sstable::eYaccAction) for a symbol in a state; 0 is an error.
  std::uint32_t action(unsigned state, std::uint32_t symbol) const {
    return index_.actions[state * index_.actionColumns + column(symbol)];
  }
  /// The state after a nonterminal, or sstable::kNone.
  std::uint32_t gotoState(unsigned state, std::uint32_t nonterminal) const {
    const std::uint32_t at = nonterminal - sstable::kFirstNonterminal;
    if (at >= index_.gotoColumns) return sstable::kNone;
    const std::uint16_t target = index_.gotos[state * index_.gotoColumns + at];
    return target == sstable::kNoState ? sstable::kNone : target;
  }

  std::uint32_t rowFlags(unsigned state) const { return word(row(state)); }
  /// The actions of a state, in stored order, from 0.
  unsigned actionCount(unsigned state) const { return word(row(state) + sstable::kRowActionCount); }
  std::uint32_t actionToken(unsigned state, unsigned index) const {
    return word(row(state) + sstable::kRowPairs + 2 * std::size_t{index} + 1);
  }
  /// The state reached by shifting the error token, or sstable::kNone.
  std::uint32_t errorEntry(unsigned state) const;
  const char* name() const { return name_.c_str(); }

 private:
  std::uint32_t word(std::size_t at) const { return index_.words[at]; }
  /// Where the row of a state starts, in words.
  std::size_t row(std::size_t state) const {
    return word(sstable::kYaccRowIndex + state) / sstable::kWordSize;
  }

  void readFile(const char* path);
  void load(const void* image, std::size_t size);
  bool readImage();
  bool readProductions();
  bool readRows();
  bool rowIsSound(std::size_t row) const;
  bool actionIsSound(std::uint32_t word, std::uint32_t token) const;
  bool gotoIsSound(std::uint32_t word, std::uint32_t nonterminal) const;
  bool assignColumns();
  void layOut();
  void layOutRow(std::size_t state);

  /// Column 0 has only errors, for symbols that no state uses. The two special tokens are the
  /// largest numbers, so adding 2 wraps them around to the first ones.
  std::uint32_t column(std::uint32_t symbol) const {
    const std::uint32_t at = symbol + 2;
    return at < index_.symbols ? index_.columns[at] : 0;
  }

  std::string name_;
  SSYaccIndex index_{};
  // What a loaded table owns.
  std::vector<std::uint32_t> words_;
  std::vector<std::uint16_t> columns_;
  std::vector<std::uint32_t> actions_;
  std::vector<std::uint16_t> gotos_;
};
