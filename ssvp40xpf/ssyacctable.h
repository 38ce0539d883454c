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

/// A compiled parser table. It is copied from its image (sstableformat.h describes the layout),
/// checked and indexed while loading, and read-only afterwards, so any number of parsers may share
/// it. A damaged image, or one with lookahead automata, raises SSErrorYaccTable; with exceptions
/// disabled the table is then left without states.
class SSYaccTable : public SSObject, public SSExceptionPresent {
 public:
  /// The largest token number, and the largest nonterminal relative to kFirstNonterminal.
  static constexpr std::uint32_t kLargestSymbol = 0x0FFF;

  /// An image of `size` bytes; `name` is only used in messages.
  SSYaccTable(const void* image, std::size_t size, const char* name);
  /// Reads the image from a file (SSErrorYaccOpen).
  explicit SSYaccTable(const char* path);

  unsigned stateCount() const { return static_cast<unsigned>(rows_.size()); }
  unsigned productionCount() const { return static_cast<unsigned>(productions_.size()); }
  const SSYaccProduction& production(unsigned number) const { return productions_[number]; }

  /// The action word (sstable::eYaccAction) for a symbol in a state; 0 is an error.
  std::uint32_t action(unsigned state, std::uint32_t symbol) const {
    return actions_[state * actionColumns_ + column(symbol)];
  }
  /// The state after a nonterminal, or sstable::kNone.
  std::uint32_t gotoState(unsigned state, std::uint32_t nonterminal) const {
    const std::uint32_t at = nonterminal - sstable::kFirstNonterminal;
    if (at >= gotoColumns_) return sstable::kNone;
    const std::uint16_t target = gotos_[state * gotoColumns_ + at];
    return target == kNoGoto ? sstable::kNone : target;
  }

  std::uint32_t rowFlags(unsigned state) const { return words_[rows_[state]]; }
  /// The actions of a state, in stored order, from 0.
  unsigned actionCount(unsigned state) const {
    return words_[rows_[state] + sstable::kRowActionCount];
  }
  std::uint32_t actionToken(unsigned state, unsigned index) const {
    return words_[rows_[state] + sstable::kRowPairs + 2 * std::size_t{index} + 1];
  }
  /// The state reached by shifting the error token, or sstable::kNone.
  std::uint32_t errorEntry(unsigned state) const;
  const char* name() const { return name_.c_str(); }

 private:
  static constexpr std::uint16_t kNoGoto = 0xFFFF;

  void readFile(const char* path);
  void load(const void* image, std::size_t size);
  bool readImage();
  bool readProductions();
  bool readRows();
  bool rowIsSound(std::size_t row) const;
  bool actionIsSound(std::uint32_t word, std::uint32_t token) const;
  bool gotoIsSound(std::uint32_t word, std::uint32_t nonterminal) const;
  bool assignColumns();
  void indexRow(std::size_t state);

  /// Column 0 has only errors, for symbols that no state uses. The two special tokens are the
  /// largest numbers, so adding 2 wraps them around to the first ones.
  std::uint32_t column(std::uint32_t symbol) const {
    const std::uint32_t at = symbol + 2;
    return at < columns_.size() ? columns_[at] : 0;
  }

  std::string name_;
  std::vector<std::uint32_t> words_;
  std::vector<SSYaccProduction> productions_;
  std::vector<std::size_t> rows_;       // start of each state's row in words_
  std::vector<std::uint16_t> columns_;  // columns of the action array, by symbol + 2
  std::size_t actionColumns_ = 0;
  std::size_t gotoColumns_ = 0;
  std::vector<std::uint32_t> actions_;  // state by column
  std::vector<std::uint16_t> gotos_;    // state by nonterminal
};
