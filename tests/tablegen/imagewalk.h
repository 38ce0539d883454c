#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ssvp40xpf/sstableformat.h"

/// Reads scanner images word by word, just as their layout is written down.
class tImageWalk {
 public:
  tImageWalk(const std::uint32_t* words, std::size_t count) : words_(words), count_(count) {}

  std::size_t wordCount() const { return count_; }
  std::uint32_t word(std::size_t at) const { return at < count_ ? words_[at] : sstable::kNone; }

  /// Where the block of a list starts, in words; behind the last list: where the blocks end.
  std::size_t block(std::uint32_t list) const {
    std::size_t at = sstable::kLexHeaderWords;
    for (; list > 0; --list) at += word(at + sstable::kBlockSize) / sstable::kWordSize;
    return at;
  }
  std::uint32_t stateCount(std::uint32_t list) const {
    return word(block(list) + sstable::kBlockStateCount);
  }
  /// A word of a state's final-state record.
  std::uint32_t final(std::uint32_t list, std::uint32_t state, std::size_t field) const {
    const std::size_t start = block(list);
    return word(start + word(start + sstable::kBlockFinals) / sstable::kWordSize +
                state * sstable::kFinalWords + field);
  }
  /// Where the row of a state starts.
  std::size_t row(std::uint32_t list, std::uint32_t state) const {
    const std::size_t start = block(list);
    const std::size_t index = start + word(start + sstable::kBlockRowIndex) / sstable::kWordSize;
    return start + word(index + state) / sstable::kWordSize;
  }
  std::uint32_t next(std::uint32_t list, std::uint32_t state, std::uint32_t code) const {
    const std::size_t at = row(list, state);
    for (std::size_t triple = at + 1; triple < at + 1 + 3 * word(at); triple += 3) {
      if (word(triple) > code) break;
      if (code <= word(triple + 1)) return word(triple + 2);
    }
    return sstable::kNone;
  }

  struct tMatch {
    std::size_t length = 0;
    std::uint32_t state = sstable::kNone;
  };
  /// The longest match at the start of a text; kNone as its state when there is none.
  tMatch longestMatch(std::uint32_t list, std::string_view text) const {
    tMatch match;
    std::uint32_t state = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
      state = next(list, state, static_cast<unsigned char>(text[at]));
      if (state == sstable::kNone) break;
      if ((final(list, state, sstable::kFinalFlags) & sstable::kLexAccept) != 0) {
        match = {at + 1, state};
      }
    }
    return match;
  }

 private:
  const std::uint32_t* words_;
  std::size_t count_;
};
