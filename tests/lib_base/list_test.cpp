#include "lib_base/list.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/lib_base/fatalof.h"

namespace {

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

}  // namespace
