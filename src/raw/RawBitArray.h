// RawBitArray: slots that are free or taken, in words of 32. Shared copies are made private by
// `duplicate`. Not safe for two threads.
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
  explicit RawBitArray(int32_t growStep = 50);
  RawBitArray(const RawBitArray& other); // shares
  RawBitArray& operator=(const RawBitArray& other);
  ~RawBitArray() override;

  void setBit(int32_t index); // grows; a negative index is ignored
  void clearBit(int32_t index);
  [[nodiscard]] bool testBit(int32_t index) const; // false outside
  int32_t findFirstClear(); // grows when every bit is set, so the result can always be set
  bool resizeWords(int32_t count); // never shrinks; true also then
  void clear();
  void duplicate() override;

  [[nodiscard]] const uint32_t* words() const;
  [[nodiscard]] uint32_t* mutableWords();
  [[nodiscard]] int32_t wordCount() const;
  [[nodiscard]] int32_t growStep() const;
  [[nodiscard]] int32_t bitCapacity() const;
  [[nodiscard]] int32_t usedBits() const; // one past the highest bit ever set
  void setUsedBits(int32_t count);        // for who loads the words

private:
  RawBitArrayData* data_;
};

} // namespace RawLayer
