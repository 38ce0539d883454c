#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "ssvp40xpf/sslexdense.h"
#include "ssvp40xpf/sssto.h"

/// One automaton of a table.
class SSLexIterator {
 public:
  /// Refers to one that the build has laid out.
  explicit SSLexIterator(const SSLexIndex& index) : index_(index) {}
  /// Takes the words of a block, checks and lays them out. valid() stays false for a damaged block.
  SSLexIterator(std::vector<std::uint32_t> block, unsigned listCount);
  SSLexIterator(SSLexIterator&&) noexcept = default;

  bool valid() const { return index_.states != 0; }
  unsigned stateCount() const { return static_cast<unsigned>(index_.states); }
  const SSLexFinal& final(unsigned state) const { return index_.finals[state]; }
  /// The next state for a character code of any size, or sstable::kNone.
  unsigned next(unsigned state, unsigned code) const {
    if (code > 0xFF) return nextInRow(state, code);
    const unsigned entered = index_.next[(static_cast<std::size_t>(state) << 8) | code];
    return entered == sstable::kNoState ? sstable::kNone : entered;
  }
  SSLexDense dense() const { return SSLexDense(index_); }

 private:
  bool readHeader();
  bool readFinals(unsigned listCount);
  bool readRows();
  bool rowIsSound(std::size_t row) const;
  void indexRow(unsigned state, std::size_t row);
  void findLineFeeds();
  unsigned nextInRow(unsigned state, unsigned code) const;

  SSLexIndex index_{};
  // What a loaded automaton owns.
  std::vector<std::uint32_t> block_;
  std::vector<SSLexFinal> finals_;
  std::vector<std::uint16_t> next_;
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

/// A compiled scanner table. It refers to a built-in one, or is copied from its image (which
/// sstableformat.h describes), checked and laid out while loading; it is read-only afterwards, so
/// any number of scanners may share it. A damaged image raises SSErrorLexTable, an image with
/// keyword tables SSErrorKeywordTable; with exceptions disabled the table is then left without
/// lists.
class SSLexTable : public SSObject, public SSExceptionPresent {
 public:
  SSLexTable(std::span<const SSLexIndex> lists, const char* name);
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
