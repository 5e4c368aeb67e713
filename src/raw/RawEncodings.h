// What encoding is a file written in? By its byte-order mark, else by statistics over its bytes.
// Pure functions over bytes; any thread.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// Finds out the encoding of `size` bytes, in one or more calls.
class RawTextDetector {
public:
  bool probeUtf16 = true;
  int32_t position = 0; // where the scan stopped: bytes before it need not be seen again

  // EncodingShiftJis, EncodingUtf8, 5, 6 or EncodingBinary; 0 while only ASCII was met.
  int32_t detect(const uint8_t* data, int32_t size);
};

int32_t detectTextEncoding(const void* data, int32_t size);
// EncodingShiftJis or EncodingUtf8, never anything else; bytes valid as both are Shift-JIS.
int32_t detectShiftJisOrUtf8(const void* data, int32_t size);
// 5, 6 or 2 for the mark that stands at the start; 0 for none.
int32_t detectMark(const void* data, int32_t size);
// The bytes of the mark of an encoding (none for most codes), and how many they are.
struct RawMark {
  const char* bytes;
  int32_t size;
};
RawMark markOf(int32_t encoding);
// How many of the bytes are whole characters.
int32_t clipToCharacter(int32_t encoding, const void* data, int32_t size);

} // namespace RawLayer
