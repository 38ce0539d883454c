#include "ssvp40xpf/ssyaccwalk.h"

SSYaccWalk::SSYaccWalk(const SSYaccTable& table)
    : table_(table),
      states_(kCapacity),
      top_(states_.data() + kStart),
      memo_(std::size_t{1} << kMemoBits) {}

void SSYaccWalk::workOut(std::uint64_t key, std::uint32_t token, tSettled& result) const {
  result.key = key;
  result.state = *top_;
  for (;;) {
    result.action = table_.action(result.state, token);
    if ((result.action & sstable::kActionReduce) == 0) return;
    const SSYaccProduction production = table_.production(result.action & sstable::kActionOperand);
    if (production.size != 1) return;
    result.state = table_.gotoState(top_[-1], production.left);
  }
}

void SSYaccWalk::grow() {
  const std::ptrdiff_t depth = top_ - states_.data();
  states_.resize(2 * states_.size());
  top_ = states_.data() + depth;
}
