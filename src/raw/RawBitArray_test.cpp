#include "raw/RawBitArray.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

void fill(RawBitArray& bits, int32_t count) {
  for (int32_t i = 0; i < count; ++i) bits.setBit(i);
}

} // namespace

TEST(RawBitArray, StartsWithoutWords) {
  const RawBitArray bits;
  EXPECT_EQ(bits.wordCount(), 0);
  EXPECT_EQ(bits.bitCapacity(), 0);
  EXPECT_EQ(bits.usedBits(), 0);
  EXPECT_EQ(bits.growStep(), 50);
  EXPECT_EQ(bits.words(), nullptr);
  EXPECT_FALSE(bits.testBit(0));
}

TEST(RawBitArray, TheFirstBitMakesTwoWordsWithAStepOfFifty) {
  RawBitArray bits(50);
  bits.setBit(0);
  EXPECT_EQ(bits.wordCount(), 2);
  EXPECT_EQ(bits.bitCapacity(), 64);
  EXPECT_EQ(bits.usedBits(), 1);
  EXPECT_TRUE(bits.testBit(0));
  EXPECT_FALSE(bits.testBit(1));
}

TEST(RawBitArray, FindFirstClearWithoutWordsLeavesThemToTheCaller) {
  RawBitArray bits(50);
  EXPECT_EQ(bits.findFirstClear(), 0);
  EXPECT_EQ(bits.wordCount(), 0);
  bits.setBit(0);
  EXPECT_EQ(bits.wordCount(), 2);
  EXPECT_EQ(bits.findFirstClear(), 1);
}

TEST(RawBitArray, GrowsToTheNextStepBeyondTheIndex) {
  RawBitArray bits(50);
  bits.setBit(49); // (49 + 31 + 50 - 49) / 32
  EXPECT_EQ(bits.wordCount(), 2);
  RawBitArray beyond(50);
  beyond.setBit(50); // (50 + 31 + 50) / 32
  EXPECT_EQ(beyond.wordCount(), 4);
  RawBitArray second(50);
  second.setBit(0);
  second.setBit(70); // (70 + 31 + 50 - 6) / 32, from a capacity of 64
  EXPECT_EQ(second.wordCount(), 4);
  EXPECT_EQ(second.usedBits(), 71);
}

TEST(RawBitArray, EveryStepGivesRoomForTheIndex) {
  for (int32_t step : {-7, 0, 1, 3, 31, 32, 33, 1000})
    for (int32_t index : {0, 1, 31, 32, 63, 64, 1000}) {
      RawBitArray bits(step);
      bits.setBit(index);
      EXPECT_TRUE(bits.testBit(index)) << step << " " << index;
      EXPECT_EQ(bits.bitCapacity(), bits.wordCount() * 32);
    }
}

TEST(RawBitArray, ABitLivesInItsWord) {
  RawBitArray bits;
  bits.setBit(0);
  bits.setBit(31);
  bits.setBit(33);
  EXPECT_EQ(bits.words()[0], 0x80000001u);
  EXPECT_EQ(bits.words()[1], 0x00000002u);
}

TEST(RawBitArray, ClearedBitsAreFreeAndStayUsed) {
  RawBitArray bits;
  fill(bits, 10);
  bits.clearBit(4);
  EXPECT_FALSE(bits.testBit(4));
  EXPECT_TRUE(bits.testBit(5));
  EXPECT_EQ(bits.findFirstClear(), 4);
  bits.clearBit(9);
  EXPECT_EQ(bits.usedBits(), 10);
}

TEST(RawBitArray, IndexesOutsideAreHarmless) {
  RawBitArray bits;
  bits.setBit(-1);
  bits.clearBit(-1);
  bits.clearBit(5);
  EXPECT_EQ(bits.wordCount(), 0);
  EXPECT_FALSE(bits.testBit(-1));
  bits.setBit(0);
  EXPECT_FALSE(bits.testBit(64));
  EXPECT_FALSE(bits.testBit(INT32_MAX));
  bits.setBit(INT32_MAX);
  EXPECT_EQ(bits.wordCount(), 2);
  EXPECT_EQ(bits.usedBits(), 1);
}

TEST(RawBitArray, FindFirstClearGrowsAFullArray) {
  RawBitArray bits(50);
  fill(bits, 64);
  EXPECT_EQ(bits.wordCount(), 2);
  EXPECT_EQ(bits.findFirstClear(), 64);
  EXPECT_EQ(bits.wordCount(), 4); // (64 + 31 + 50) / 32
  EXPECT_FALSE(bits.testBit(64));
  EXPECT_EQ(bits.usedBits(), 64) << "the slot is found, not taken";
  bits.setBit(64);
  EXPECT_EQ(bits.wordCount(), 4);
  EXPECT_EQ(bits.findFirstClear(), 65);
}

TEST(RawBitArray, FindFirstClearSkipsFullWords) {
  RawBitArray bits(100);
  fill(bits, 95);
  EXPECT_EQ(bits.findFirstClear(), 95);
}

TEST(RawBitArray, ResizeNeverShrinks) {
  RawBitArray bits;
  bits.setBit(40);
  EXPECT_TRUE(bits.resizeWords(1));
  EXPECT_TRUE(bits.resizeWords(-1));
  EXPECT_EQ(bits.wordCount(), 2); // (40 + 31 + 50 - 40) / 32
}

TEST(RawBitArray, ResizeKeepsTheOldWordsAndAddsZeros) {
  RawBitArray bits;
  bits.setBit(3);
  EXPECT_TRUE(bits.resizeWords(2));
  EXPECT_EQ(bits.wordCount(), 2);
  EXPECT_TRUE(bits.resizeWords(5));
  EXPECT_EQ(bits.wordCount(), 5);
  EXPECT_EQ(bits.bitCapacity(), 160);
  EXPECT_EQ(bits.words()[0], 8u);
  for (int i = 1; i < 5; ++i) EXPECT_EQ(bits.words()[i], 0u);
  EXPECT_FALSE(bits.resizeWords(INT32_MAX));
  EXPECT_EQ(bits.wordCount(), 5);
}

TEST(RawBitArray, ClearFreesEverythingButTheStep) {
  RawBitArray bits(20);
  fill(bits, 70);
  bits.clear();
  EXPECT_EQ(bits.wordCount(), 0);
  EXPECT_EQ(bits.bitCapacity(), 0);
  EXPECT_EQ(bits.usedBits(), 0);
  EXPECT_EQ(bits.words(), nullptr);
  EXPECT_EQ(bits.growStep(), 20);
  bits.setBit(2);
  EXPECT_TRUE(bits.testBit(2));
  EXPECT_FALSE(bits.testBit(1));
}

TEST(RawBitArray, CopiesShareUntilOneWrites) {
  RawBitArray bits;
  bits.setBit(1);
  RawBitArray copy = bits;
  EXPECT_EQ(copy.words(), bits.words());
  copy.setBit(2);
  EXPECT_NE(copy.words(), bits.words());
  EXPECT_TRUE(copy.testBit(1));
  EXPECT_FALSE(bits.testBit(2));

  RawBitArray cleared = bits;
  cleared.clear();
  EXPECT_TRUE(bits.testBit(1));
  RawBitArray lowered = bits;
  lowered.clearBit(1);
  EXPECT_TRUE(bits.testBit(1));
}

TEST(RawBitArray, DuplicateMakesPrivateWithAllFields) {
  RawBitArray bits(33);
  fill(bits, 40);
  RawBitArray copy = bits;
  copy.duplicate();
  EXPECT_NE(copy.words(), bits.words());
  EXPECT_EQ(copy.growStep(), 33);
  EXPECT_EQ(copy.usedBits(), 40);
  EXPECT_EQ(copy.wordCount(), bits.wordCount());
  EXPECT_EQ(copy.findFirstClear(), 40);
  const uint32_t* words = copy.words();
  copy.duplicate();
  EXPECT_EQ(copy.words(), words) << "a sole owner keeps its words";
}

TEST(RawBitArray, AssignmentShares) {
  RawBitArray bits;
  bits.setBit(1);
  RawBitArray other;
  other.setBit(9);
  other = bits;
  EXPECT_EQ(other.words(), bits.words());
  RawBitArray& same = other;
  other = same;
  EXPECT_TRUE(other.testBit(1));
}

TEST(RawBitArray, WordsMayBeLoaded) {
  RawBitArray bits;
  ASSERT_TRUE(bits.resizeWords(1));
  bits.mutableWords()[0] = 0x0000000Fu;
  bits.setUsedBits(4);
  EXPECT_EQ(bits.usedBits(), 4);
  EXPECT_EQ(bits.findFirstClear(), 4);
}
