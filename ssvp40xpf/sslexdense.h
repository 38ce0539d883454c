#pragma once

#include <cstddef>
#include <cstdint>

#include "ssvp40xpf/sstableformat.h"

/// The table's data for a match that ends in a given state.
struct SSLexFinal {
  std::uint32_t token;
  std::uint32_t list;   // for push and goto
  std::uint32_t flags;  // sstable::eLexFlag
  std::uint32_t keywordTable;
  std::uint32_t type;
  bool lineFeeds;  // whether any text leading to the state can contain a line feed

  bool operator==(const SSLexFinal&) const = default;
  bool accepts() const { return (flags & sstable::kLexAccept) != 0; }
  bool drops() const { return (flags & sstable::kLexDrop) != 0; }
  bool switchesList() const { return (flags & (sstable::kLexPush | sstable::kLexPop)) != 0; }
  bool pushes() const {
    return (flags & (sstable::kLexPush | sstable::kLexPop)) == sstable::kLexPush;
  }
  bool pops() const { return (flags & (sstable::kLexPush | sstable::kLexPop)) == sstable::kLexPop; }
  bool replaces() const {
    return (flags & (sstable::kLexPush | sstable::kLexPop)) ==
           (sstable::kLexPush | sstable::kLexPop);
  }
};

/// An automaton that has been checked, laid out for direct lookup; it owns nothing. The build lays
/// out those of the built-in tables.
struct SSLexIndex {
  const std::uint32_t* block;  // its words in the image
  std::size_t states;
  const SSLexFinal* finals;   // of each state
  const std::uint16_t* next;  // 256 of each state: the next one on a code, or sstable::kNoState
};

/// The longest match at a position in a text.
struct SSLexMatch {
  const char* end;          // past the match, not counting a character given back
  const char* reached;      // where the automaton stopped: the character without a transition
  const SSLexFinal* final;  // null if nothing matches
};

/// An automaton laid out for direct lookup by 8-bit code. It is a view into its table: cheap to
/// copy and valid as long as the table. A tokeniser loop over a text in memory:
///
///     while (at != end) {
///       const SSLexMatch match = dense.longestMatch(at, end);
///       if (match.final == nullptr || match.end == at) ...  // a character that starts no token
///       if (!match.final->drops()) ...                      // match.final->token, [at, match.end)
///       at = match.end;
///     }
class SSLexDense {
 public:
  SSLexDense() = default;
  explicit SSLexDense(const SSLexIndex& index) : next_(index.next), finals_(index.finals) {}

  /// The state after `code`, or sstable::kNoState.
  unsigned next(unsigned state, unsigned char code) const {
    return next_[(static_cast<std::size_t>(state) << 8) | code];
  }
  const SSLexFinal& final(unsigned state) const { return finals_[state]; }

  /// The longest match at `first`. May be empty if state 0 accepts the empty string.
  SSLexMatch longestMatch(const char* first, const char* end) const {
    const char* at = first;
    unsigned state = 0;
    for (;;) {
      // Most bytes of a name leave the state as it is: none of these waits for the one before.
      const std::uint16_t* const row = next_ + (static_cast<std::size_t>(state) << 8);
      while (at != end && row[static_cast<unsigned char>(*at)] == state) ++at;
      if (at == end) break;
      const unsigned entered = row[static_cast<unsigned char>(*at)];
      if (entered == sstable::kNoState) break;
      state = entered;
      ++at;
    }
    const SSLexFinal& final = finals_[state];
    if (at == first ||
        (final.flags & (sstable::kLexAccept | sstable::kLexGiveBack)) != sstable::kLexAccept) {
      return lastAccepted(first, at);
    }
    return {at, at, &final};
  }

  /// The record of state 0 if it accepts the empty string, otherwise null.
  const SSLexFinal* emptyMatch() const {
    return finals_[0].token != 0 && finals_[0].accepts() ? finals_ : nullptr;
  }

 private:
  /// The uncommon case of longestMatch: the automaton stopped at `reached` in a state that does not
  /// accept or that gives a character back.
  SSLexMatch lastAccepted(const char* first, const char* reached) const;

  const std::uint16_t* next_ = nullptr;
  const SSLexFinal* finals_ = nullptr;
};
