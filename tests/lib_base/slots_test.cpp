#include "lib_base/slots.h"

#include <gtest/gtest.h>

namespace {

bool isEmpty(int slot) {
  return slot <= 0;
}
// Ten numbers each want one slot.
std::size_t hashOf(int number) {
  return static_cast<std::size_t>(number / 10);
}

/// A table of numbers above 0.
class tNumbers {
 public:
  explicit tNumbers(std::size_t slots) : slots_(slots) {}

  bool add(int number) {
    if (slotsAreFull(used_, slots_.size())) grow();
    int& slot = slots_[at(number)];
    if (!isEmpty(slot)) return false;
    slot = number;
    ++used_;
    return true;
  }
  bool has(int number) const {
    const int* slot = findSlot(slots_.data(), slots_.size() - 1, hashOf(number), isEmpty,
                               [number](int other) { return other == number; });
    if (slot == nullptr) return false;
    EXPECT_EQ(*slot, number);
    return true;
  }
  /// From the next growth on the number is not there.
  void spoil(int number) { slots_[at(number)] = -1; }
  std::size_t grow() { return used_ = resizeSlots(slots_, slots_.size() * 2, isEmpty, hashOf); }
  const std::vector<int>& slots() const { return slots_; }

 private:
  std::size_t at(int number) const {
    return slotOf(slots_.data(), slots_.size() - 1, hashOf(number), isEmpty, [number](int other) {
      EXPECT_FALSE(isEmpty(other));
      return other == number;
    });
  }

  std::vector<int> slots_;
  std::size_t used_ = 0;
};

TEST(Slots, FollowARunAroundTheEndOfTheArray) {
  tNumbers numbers(16);
  for (const int number : {141, 151, 142, 152}) EXPECT_TRUE(numbers.add(number));
  EXPECT_EQ(numbers.slots(),
            (std::vector<int>{142, 152, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 141, 151}));
  EXPECT_FALSE(numbers.add(152));
  EXPECT_TRUE(numbers.has(152));
  EXPECT_FALSE(numbers.has(143)) << "behind a whole run";
  EXPECT_FALSE(numbers.has(11)) << "the slot is taken by another hash";
  EXPECT_FALSE(numbers.has(131)) << "the slot is empty";
}

TEST(Slots, KeepEveryEntryWhileTheyGrow) {
  tNumbers numbers(2);
  for (int number = 7; number <= 7000; number += 7) EXPECT_TRUE(numbers.add(number));
  EXPECT_EQ(numbers.slots().size(), 2048U);
  for (int number = 1; number <= 7010; ++number) {
    EXPECT_EQ(numbers.has(number), number % 7 == 0 && number <= 7000) << number;
  }
  numbers.spoil(700);
  EXPECT_EQ(numbers.grow(), 999U);
  EXPECT_FALSE(numbers.has(700));
  EXPECT_TRUE(numbers.has(707));
}

}  // namespace
