// RawBlockReader: the sliding buffer of a text file: finds the mark and the encoding, converts
// blocks with RawBlockConverter. Used by RawLineFile alone.
#pragma once

#include "raw/RawFile.h"
#include "raw/RawString.h"

#include <memory>

namespace RawLayer {

// Converts one block after the other through 16-bit text; its buffers live between blocks.
class RawBlockConverter {
public:
  enum Flag : uint16_t { Running = 0x0003, OutputReady = 0x0010 };

  uint16_t flags = 0;
  int32_t wideStart = 0; // first size of the wide buffer, in units
  int32_t outStart = 0;  // first size of the output buffer, in bytes
  uint32_t lastError = 0;

  // Appends the converted bytes to the output. False on a failed conversion, with both buffers
  // dropped.
  bool convert(int32_t from, int32_t to, const uint8_t* data, int32_t size);
  // Moves the last `tail` bytes of the output to its front and forgets the rest.
  void keepTail(int32_t tail);
  void drop();
  [[nodiscard]] uint8_t* output() { return out_.get(); }
  [[nodiscard]] int32_t outputSize() const { return outUsed_; }

private:
  bool growWide(int32_t size);
  bool growOut(int32_t size);
  std::unique_ptr<char16_t[]> wide_;
  int32_t wideSize_ = 0;
  int32_t wideUsed_ = 0;
  std::unique_ptr<uint8_t[]> out_;
  int32_t outSize_ = 0;
  int32_t outUsed_ = 0;
};

class RawBlockReader {
public:
  enum Flag : uint16_t { FindMark = 0x0001, SkipMark = 0x0002, DetectContent = 0x0004 };

  uint16_t flags = 0;
  std::unique_ptr<uint8_t[]> block;
  int32_t blockSize = 0;
  int32_t skip = 0;      // bytes at the start of the block to pass over: the mark
  int32_t filled = 0;    // valid bytes in the block
  int32_t usableEnd = 0; // end of what can be converted, clipped to a character
  int32_t detected = 0;  // encoding of the file; 0 while unknown
  int32_t target = 0;    // encoding asked for; 0 for none
  int32_t markFound = 0; // code of the mark found; 0 for none
  RawBlockConverter converter;
};

} // namespace RawLayer
