// RawBitArray: slots that are free or taken, in words of 32. Bit i lives in word i / 32, at the
// mask 1 << i % 32.
//
// Copies share their words; whoever writes makes its copy private first (`duplicate`). Copies may
// belong to different threads, one object may not. Bits outside the capacity read as clear.
#pragma once

#include "raw/RawList.h"

#include <cstdint>

namespace RawLayer {

struct RawBitArrayData;

// What is known of a bit array without its bits.
class RawBitArrayInfo {
 public:
  static constexpr int32_t WordBits = 32;
};

class RawBitArray : public RawBitArrayInfo, public RawDataShared::Duplicator {
 public:
  // Grows in steps of so many bits; less than 1 counts as 1. There are no words at first.
  explicit RawBitArray(int32_t growStep = 50);
  RawBitArray(const RawBitArray& other); // shares
  RawBitArray& operator=(const RawBitArray& other);
  ~RawBitArray() override;

  // Grows as needed. An index that is negative, or above 2147483615, is ignored.
  void setBit(int32_t index);
  void clearBit(int32_t index);
  [[nodiscard]] bool testBit(int32_t index) const; // false outside
  // The lowest clear bit. When all are set it is the capacity, and the array grows to hold it; only
  // an array without words does not grow and gives 0. The caller takes the bit by setBit.
  int32_t findFirstClear();
  // Makes room for so many words; new ones are zero. A smaller count does nothing and is true, one
  // above 67108863 does nothing and is false.
  bool resizeWords(int32_t count);
  void clear(); // frees the words; the grow step stays
  void duplicate() override;

  // Null while there are no words. Valid up to the next growth or write.
  [[nodiscard]] const uint32_t* words() const;
  [[nodiscard]] uint32_t* mutableWords();
  [[nodiscard]] int32_t wordCount() const;
  [[nodiscard]] int32_t growStep() const;
  [[nodiscard]] int32_t bitCapacity() const;
  [[nodiscard]] int32_t usedBits() const; // one past the highest bit ever set
  void setUsedBits(int32_t count);        // for who loads the words

 private:
  bool growFor(int32_t index);
  RawBitArrayData* data_;
};

} // namespace RawLayer
