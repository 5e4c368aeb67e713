#include "raw/RawArray.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

struct Size {
  int32_t width = 0;
  int32_t height = 0;
};
using Sizes = RawArrayC<Size>;

Sizes sizesUpTo(int32_t count) {
  Sizes sizes;
  for (int32_t i = 0; i < count; ++i) sizes.append({i, -i});
  return sizes;
}

} // namespace

TEST(RawArray, StartsEmpty) {
  const Sizes sizes;
  EXPECT_EQ(sizes.count(), 0);
  EXPECT_EQ(sizes.capacity(), 0);
}

TEST(RawArray, GrowsByTen) {
  EXPECT_EQ(sizesUpTo(1).capacity(), 10);
  EXPECT_EQ(sizesUpTo(10).capacity(), 10);
  const Sizes sizes = sizesUpTo(11);
  EXPECT_EQ(sizes.capacity(), 20);
  EXPECT_EQ(sizes.count(), 11);
  for (int32_t i = 0; i < 11; ++i) {
    EXPECT_EQ(sizes.at(i).width, i);
    EXPECT_EQ(sizes.at(i).height, -i);
  }
}

TEST(RawArray, OutsideReadsAsZerosAndIgnoresWrites) {
  Sizes sizes = sizesUpTo(2);
  EXPECT_EQ(sizes.at(-1).width, 0);
  EXPECT_EQ(sizes.at(2).width, 0);
  sizes.set(2, {7, 7});
  sizes.set(-1, {7, 7});
  EXPECT_EQ(sizes.count(), 2);
  EXPECT_EQ(sizes.at(1).width, 1);
}

TEST(RawArray, CopiesShareUntilOneWrites) {
  Sizes sizes = sizesUpTo(2);
  Sizes copy = sizes;
  copy.set(0, {9, 9});
  EXPECT_EQ(copy.at(0).width, 9);
  EXPECT_EQ(copy.at(1).width, 1);
  EXPECT_EQ(sizes.at(0).width, 0);

  Sizes longer = sizes;
  longer.append({5, 5});
  EXPECT_EQ(longer.count(), 3);
  EXPECT_EQ(sizes.count(), 2);

  Sizes cleared = sizes;
  cleared.clear();
  EXPECT_EQ(cleared.count(), 0);
  EXPECT_EQ(sizes.count(), 2);
}

TEST(RawArray, AssignmentGivesTheOldValuesUp) {
  Sizes target = sizesUpTo(3);
  {
    const Sizes source = sizesUpTo(1);
    target = source;
  }
  EXPECT_EQ(target.count(), 1);
  Sizes& same = target;
  target = same;
  EXPECT_EQ(target.count(), 1);
}

TEST(RawArray, DuplicateKeepsCapacityAndCount) {
  const Sizes sizes = sizesUpTo(12);
  Sizes copy = sizes;
  copy.duplicate();
  EXPECT_EQ(copy.capacity(), 20);
  EXPECT_EQ(copy.count(), 12);
  EXPECT_EQ(copy.at(11).width, 11);
}

TEST(RawArray, ClearKeepsTheCapacity) {
  Sizes sizes = sizesUpTo(12);
  sizes.clear();
  EXPECT_EQ(sizes.capacity(), 20);
  EXPECT_EQ(sizes.at(0).width, 0);
  sizes.append({4, 4});
  EXPECT_EQ(sizes.at(0).width, 4);
}
