#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ssvp40xpf/sslexdense.h"
#include "ssvp40xpf/sssto.h"

/// One automaton of a table: its block, and the index for direct look-up made from it.
class SSLexIterator {
 public:
  /// Takes over the words of a block. Anything but a sound block leaves valid() false.
  SSLexIterator(std::vector<std::uint32_t> block, unsigned listCount);
  SSLexIterator(SSLexIterator&&) noexcept = default;

  bool valid() const { return valid_; }
  unsigned stateCount() const { return static_cast<unsigned>(finals_.size()); }
  const SSLexFinal& final(unsigned state) const { return finals_[state]; }
  /// The state after a character code of any size, or sstable::kNone.
  unsigned next(unsigned state, unsigned code) const {
    if (code > 0xFF) return nextInRow(state, code);
    const unsigned entered = next_[(static_cast<std::size_t>(state) << 8) | code];
    return entered == SSLexDense::kDead ? sstable::kNone : entered;
  }
  SSLexDense dense() const { return SSLexDense(next_.data(), finals_.data()); }

 private:
  bool readHeader();
  bool readFinals(unsigned listCount);
  bool readRows();
  bool rowIsSound(std::size_t row) const;
  void indexRow(unsigned state, std::size_t row);
  void findLineFeeds();
  unsigned nextInRow(unsigned state, unsigned code) const;

  std::vector<std::uint32_t> block_;
  std::vector<SSLexFinal> finals_;
  std::vector<std::uint32_t> rows_;  // where each state's row starts in block_
  std::vector<std::uint16_t> next_;  // 256 entries a state
  bool valid_ = false;
};

/// A start state of the scanner: an automaton and its index in the table.
class SSLexExpressionList {
 public:
  SSLexExpressionList(SSLexIterator automaton, unsigned index)
      : automaton_(std::move(automaton)), dense_(automaton_.dense()), index_(index) {}

  const SSLexIterator& automaton() const { return automaton_; }
  const SSLexDense& dense() const { return dense_; }
  unsigned index() const { return index_; }

 private:
  SSLexIterator automaton_;
  SSLexDense dense_;
  unsigned index_;
};

/// A compiled scanner table, copied from its image (the layout is in sstableformat.h) and checked
/// and indexed once, while it is loaded. Read-only from then on: any number of scanners may share
/// it. A damaged image raises SSErrorLexTable, one with keyword tables SSErrorKeywordTable; with
/// exceptions disabled the table then has no lists.
class SSLexTable : public SSObject, public SSExceptionPresent {
 public:
  /// An image of `size` bytes; `name` is used in messages only.
  SSLexTable(const void* image, std::size_t size, const char* name);
  /// An image in memory whose own size words are to be trusted.
  SSLexTable(const void* image, const char* name);
  /// Reads the image from a file (SSErrorOpenFile, SSErrorReadFile).
  explicit SSLexTable(const char* path);

  unsigned listCount() const { return static_cast<unsigned>(lists_.size()); }
  /// The list with that index, from 0. An index not below the count raises SSErrorListIndex and,
  /// with exceptions disabled, gives null.
  const SSLexExpressionList* expressionList(unsigned index) const;
  const char* name() const { return name_.c_str(); }

 private:
  void readFile(const char* path);
  void load(const unsigned char* image, std::size_t size);
  bool loadLists(const unsigned char* image, std::size_t size, unsigned count);

  std::string name_;
  std::vector<SSLexExpressionList> lists_;
};
