#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ssvp40xpf/ssyacctable.h"

/// Runs a parser table over a sequence of tokens without making lexemes or stack elements; it only
/// determines whether each token can continue the sequence. Storage is reused, so repeated walks do
/// not allocate.
class SSYaccWalk {
 public:
  /// The table must outlive the walk. It is trusted: unlike SSYacc, a walk does not check for
  /// damage.
  explicit SSYaccWalk(const SSYaccTable& table);

  /// Restarts the walk.
  void restart() { top_ = states_.data() + kStart; }

  /// Consumes a token. False if it cannot continue the sequence, or if it is the end of the input
  /// and the sequence is accepted; the walk is then over.
  bool take(std::uint32_t token) {
    for (;;) {
      const tSettled& settled = settle(token);
      *top_ = static_cast<std::uint16_t>(settled.state);
      if ((settled.action & sstable::kActionReduce) != 0) {
        reduce(settled.action & sstable::kActionOperand);
      } else if ((settled.action & sstable::kActionShift) != 0) {
        push(settled.action & sstable::kActionOperand);
        return true;
      } else {
        return false;
      }
    }
  }

 private:
  static constexpr std::size_t kCapacity = 256;
  static constexpr std::size_t kStart = 1;  // the state below the first one is never read
  static constexpr unsigned kMemoBits = 10;

  /// What remains to be done for a token after all single-symbol reductions.
  struct tSettled {
    std::uint64_t key = ~std::uint64_t{0};
    std::uint32_t state = 0;  // then on top of the stack
    std::uint32_t action = 0;
  };

  // Note [settled states]
  // Most reductions just rename the topmost symbol: a name becomes an operand, a term, an
  // expression. The result depends only on the two topmost states and the token, and few such
  // triples occur, so each result is cached.
  const tSettled& settle(std::uint32_t token) {
    const std::uint64_t key =
        (std::uint64_t{token} << 32) | (std::uint64_t{top_[-1]} << 16) | std::uint64_t{*top_};
    tSettled& known = memo_[(key * 0x9E3779B97F4A7C15u) >> (64 - kMemoBits)];
    if (known.key != key) workOut(key, token, known);
    return known;
  }
  void workOut(std::uint64_t key, std::uint32_t token, tSettled& result) const;

  void reduce(std::uint32_t number) {
    const SSYaccProduction production = table_.production(number);
    top_ -= production.size;
    push(table_.gotoState(*top_, production.left));
  }
  void push(std::uint32_t state) {
    if (++top_ == states_.data() + states_.size()) grow();
    *top_ = static_cast<std::uint16_t>(state);
  }
  void grow();

  const SSYaccTable& table_;
  std::vector<std::uint16_t> states_;
  std::uint16_t* top_;
  std::vector<tSettled> memo_;  // See note [settled states].
};
