#include "lib_base/list.h"

#include <gtest/gtest.h>

#include <limits>
#include <numeric>
#include <vector>

#include "tests/lib_base/fatalof.h"

namespace {

/// Counts how many of its kind are alive.
struct tCounted {
  explicit tCounted(int& alive) : alive_(alive) { ++alive_; }
  ~tCounted() { --alive_; }
  tCounted(const tCounted&) = delete;
  tCounted& operator=(const tCounted&) = delete;
  int& alive_;
};

TEST(Array, GrowsByItsTable) {
  struct tCase {
    int from, to;
  };
  constexpr int kMost = std::numeric_limits<int>::max();
  const tCase kCases[] = {
      {0, 2},
      {8, 10},
      {9, 25},
      {64, 80},
      {65, 81},
      {100, 125},
      {131072, 163840},  // exactly 1 MiB of pointers
      {131073, 144180},
      {1000000, 1100000},
      {kMost - 1, kMost},
      {kMost, kMost},
  };
  for (const tCase& c : kCases) EXPECT_EQ(tPointerArray::grownCapacity(c.from), c.to) << c.from;
}

TEST(Array, KeepsTheOrderThroughInsertionAndRemoval) {
  std::vector<int> values(40);
  std::iota(values.begin(), values.end(), 0);
  tArray<int> array;
  for (int i = 0; i < 40; i += 2) array.add(&values[static_cast<std::size_t>(i)]);
  for (int i = 1; i < 40; i += 2) array.insertAt(i, &values[static_cast<std::size_t>(i)]);
  for (int i = 0; i < 40; ++i) ASSERT_EQ(array[i], i);
  EXPECT_EQ(array.takeAt(0), &values[0]);
  EXPECT_EQ(array.takeAt(38), &values[39]);
  EXPECT_EQ(array.indexOf(&values[38]), 37);
  EXPECT_EQ(array.indexOf(&values[0]), -1);
}

TEST(Array, IndexesOutsideAreFatal) {
  constexpr char kText[] = "array index out of bounds";
  int value = 0;
  tArray<int> array;
  EXPECT_EQ(fatalOf([&] { array.last(); }), kText);
  array.add(&value);
  for (int index : {-1, 1, std::numeric_limits<int>::min()}) {
    EXPECT_EQ(fatalOf([&] { array.get(index); }), kText) << index;
    EXPECT_EQ(fatalOf([&] { array.takeAt(index); }), kText) << index;
  }
  EXPECT_EQ(fatalOf([&] { array.insertAt(2, &value); }), kText);
  EXPECT_EQ(fatalOf([&] { array.insertAt(-1, &value); }), kText);
  EXPECT_EQ(array.count(), 1);
}

TEST(AutoArray, DestroysWhatItOwns) {
  int alive = 0;
  {
    tAutoArray<tCounted> array;
    for (int i = 0; i < 10; ++i) array.add(new tCounted(alive));
    array.removeAt(3);
    EXPECT_EQ(alive, 9);
    delete array.takeAt(0);
    array.replaceAt(2, new tCounted(alive));
    EXPECT_EQ(alive, 8);

    tAutoArray<tCounted> other;
    other.swap(array);
    EXPECT_EQ(array.count(), 0);
    other.Destroy();
    EXPECT_EQ(alive, 0);
    other.add(new tCounted(alive));
  }
  EXPECT_EQ(alive, 0);
}

}  // namespace
