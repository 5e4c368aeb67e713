// What encoding is a file written in? By its byte-order mark, else by statistics over its bytes.
// Pure functions over bytes; any thread. A size below 1 counts as no data.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// Whether a text of that code is UTF-16 held as bytes.
constexpr bool isUtf16Bytes(int32_t encoding) {
  return encoding == EncodingUtf16Be || encoding == EncodingUtf16Le;
}

// Finds out the encoding of a file, block by block.
class RawTextDetector {
 public:
  bool probeUtf16 = true; // false once 8-bit line ends were seen: zero bytes then mean nothing
  int32_t position = 0;   // where the scan stopped: bytes before it need not be seen again

  // Scans from `position` on. EncodingShiftJis, EncodingUtf8, EncodingUtf16Be, EncodingUtf16Le or
  // EncodingBinary; 0 while only ASCII was met, with the whole block scanned.
  int32_t detect(const uint8_t* data, int32_t size);
  // The next block follows behind those `size` bytes.
  void advance(int32_t size);

 private:
  int32_t probe(const uint8_t* data, int32_t size, int32_t zero);
  bool oddStart_ = false; // the block stands at an odd offset of the file
};

// The verdict over one block.
int32_t detectTextEncoding(const void* data, int32_t size);
// EncodingShiftJis or EncodingUtf8, never anything else; bytes valid as both are Shift-JIS, unless
// they hold lone kana.
int32_t detectShiftJisOrUtf8(const void* data, int32_t size);
// 5, 6 or 2 for the mark that stands at the start; 0 for none. Never 3: see markOf.
int32_t detectMark(const void* data, int32_t size);
// The bytes of the mark of an encoding, none for most codes. That of UTF-7 is written, but never
// looked for in a file: there it is a part of the text.
struct RawMark {
  const char* bytes;
  int32_t size;
};
RawMark markOf(int32_t encoding);
// How many of the bytes are whole characters, so that the rest waits for the next block. 0 for the
// codes that cannot be cut into blocks: all but 1, 2, 5, 6 and 7.
int32_t clipToCharacter(int32_t encoding, const void* data, int32_t size);

} // namespace RawLayer
