#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ssvp40xpf/sslexdense.h"
#include "ssvp40xpf/sssto.h"

/// One automaton of a table: its block, and the index for direct lookup built from it.
class SSLexIterator {
 public:
  /// Takes the words of a block. valid() stays false for a damaged block.
  SSLexIterator(std::vector<std::uint32_t> block, unsigned listCount);
  SSLexIterator(SSLexIterator&&) noexcept = default;

  bool valid() const { return valid_; }
  unsigned stateCount() const { return static_cast<unsigned>(finals_.size()); }
  const SSLexFinal& final(unsigned state) const { return finals_[state]; }
  /// The next state for a character code of any size, or sstable::kNone.
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
  std::vector<std::uint32_t> rows_;  // start of each state's row in block_
  std::vector<std::uint16_t> next_;  // 256 entries per state
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

/// A compiled scanner table. It is copied from its image (sstableformat.h describes the layout),
/// checked and indexed while loading, and read-only afterwards, so any number of scanners may share
/// it. A damaged image raises SSErrorLexTable, an image with keyword tables SSErrorKeywordTable;
/// with exceptions disabled the table is then left without lists.
class SSLexTable : public SSObject, public SSExceptionPresent {
 public:
  /// An image of `size` bytes; `name` is only used in messages.
  SSLexTable(const void* image, std::size_t size, const char* name);
  /// An image in memory whose own size words are trusted.
  SSLexTable(const void* image, const char* name);
  /// Reads the image from a file (SSErrorOpenFile, SSErrorReadFile).
  explicit SSLexTable(const char* path);

  unsigned listCount() const { return static_cast<unsigned>(lists_.size()); }
  /// The list with that zero-based index. An index out of range raises SSErrorListIndex or, with
  /// exceptions disabled, returns null.
  const SSLexExpressionList* expressionList(unsigned index) const;
  const char* name() const { return name_.c_str(); }

 private:
  void readFile(const char* path);
  void load(const unsigned char* image, std::size_t size);
  bool loadLists(const unsigned char* image, std::size_t size, unsigned count);

  std::string name_;
  std::vector<SSLexExpressionList> lists_;
};
