// Conversion between the platform's code pages and 16-bit text: the two calls that all text
// conversion rests on. Any thread; no state but the returned values.
#pragma once

#include <cstdint>

namespace RawLayer {

// What a conversion gave. With `error` 0, `count` units or bytes were written (or are needed, when
// the room given was 0). Otherwise nothing can be said of the target.
struct RawConversion {
  int32_t count = 0;
  uint32_t error = 0; // 0, RawConversionNoRoom, or another platform error number
};
inline constexpr uint32_t RawConversionNoRoom = 122;

// The code page number of a text encoding code; 0 for the active code page. Codes 5 to 8 have none.
uint32_t rawCodePageOf(int32_t encoding);

// `size` bytes of `codePage` to 16-bit units, flags 0: bytes that are no character become what the
// platform makes of them. `room` counts units; with 0 only the needed count is asked for.
RawConversion rawToWide(uint32_t codePage, const char* bytes, int32_t size, char16_t* target,
                        int32_t room);
// `count` 16-bit units to bytes of `codePage`, flags 0, no default character. `room` counts bytes.
RawConversion rawFromWide(uint32_t codePage, const char16_t* units, int32_t count, char* target,
                          int32_t room);

} // namespace RawLayer
