#include "lib_base/list.h"

#include <gtest/gtest.h>

#include <limits>

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
