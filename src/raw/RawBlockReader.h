// RawBlockReader: the sliding buffer of a text file. It finds the mark and the encoding, converts
// blocks with a RawBlockConverter, and shows the text as bytes in one piece of memory.
//
// Used by RawLineFile alone, by one thread. The memory is kept from block to block and from file to
// file; it has room for a terminator of two bytes behind the text.
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
  int32_t wideStart = 0;  // first size of the wide buffer, in units
  int32_t outStart = 0;   // first size of the output buffer, in bytes
  uint32_t lastError = 0; // the platform's number of the failed conversion

  // Appends the converted bytes to the output; `data` ends at a character's end. False on a failed
  // conversion, with both buffers dropped.
  bool convert(int32_t from, int32_t to, const uint8_t* data, int32_t size);
  // Moves the last `tail` bytes of the output to its front and forgets the rest.
  void keepTail(int32_t tail);
  void drop(); // both buffers, and the run
  void stop(); // the run, keeping the memory
  [[nodiscard]] bool isRunning() const { return (flags & Running) != 0; }
  [[nodiscard]] uint8_t* output() { return out_.get(); }
  [[nodiscard]] int32_t outputSize() const { return outUsed_; }

 private:
  bool toWide(int32_t from, const uint8_t* data, int32_t size);
  bool fromWide(int32_t to);
  void growWide(int32_t size);
  void growOut(int32_t size);
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
  enum Result { Ready, Ended, ReadFailed, ConversionFailed, TooLong };
  static constexpr int32_t MinimumBlockSize = 16;
  static constexpr int32_t MaximumBlockSize = 0x10000000;
  static constexpr int32_t TerminatorSize = 2;

  uint16_t flags = 0;        // what is still to be done with the first block
  int32_t detected = 0;      // encoding of the file; 0 while unknown
  int32_t target = 0;        // encoding asked for; 0 for none
  int32_t markFound = 0;     // code of the mark found; 0 for none
  bool keepEncoding = false; // `target` becomes what was detected: nothing is converted

  // Forgets the file before. Blocks are of that many bytes, within the limits above.
  void start(int32_t size);
  // Reads and prepares the next block. `tail` bytes at the end of the text stay and come first in
  // the new text; all other text is gone. Ready, or Ended at the end of the file (with only the
  // tail left), or a fault; TooLong when the tail leaves no room.
  Result refill(const RawFileOwner& file, int32_t tail);

  // The text of the present block, in the encoding asked for.
  [[nodiscard]] uint8_t* text() { return converter_.isRunning() ? converter_.output() : block(); }
  [[nodiscard]] int32_t textStart() const { return converter_.isRunning() ? 0 : skip_; }
  [[nodiscard]] int32_t textEnd() const {
    return converter_.isRunning() ? converter_.outputSize() : filled_;
  }
  // Plain memory of the block's size, for an owner that reads nothing at present.
  [[nodiscard]] uint8_t* block() { return block_.get(); }
  [[nodiscard]] int32_t blockSize() const { return blockSize_; }

 private:
  [[nodiscard]] bool isTooLong(int32_t tail) const;
  void keep(int32_t tail);
  void findMark();
  bool findEncoding(const RawFileOwner& file);
  bool readAhead(const RawFileOwner& file, class RawTextDetector& detector);
  bool convert();

  std::unique_ptr<uint8_t[]> block_;
  int32_t blockSize_ = 0;
  int32_t skip_ = 0;      // bytes at the start of the block to pass over: the mark
  int32_t filled_ = 0;    // valid bytes in the block
  int32_t usableEnd_ = 0; // end of what can be converted, clipped to a character
  bool fileEnded_ = false;
  RawBlockConverter converter_;
};

} // namespace RawLayer
