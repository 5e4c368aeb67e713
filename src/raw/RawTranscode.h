// Fast roads for converting text files, with the very results of the platform's calls
// (raw/RawCodePage.h), which stay the road for everything else. Any thread.
#pragma once

#include <cstdint>

namespace RawLayer {

// Shift-JIS to 16-bit units; `target` has room for `size` of them. Units written, or -1 when the
// bytes hold what only the platform knows to treat: faulty pairs and bytes without a character.
int32_t rawShiftJisToWide(const uint8_t* bytes, int32_t size, char16_t* target);

// 16-bit units to UTF-8; `target` has room for three bytes each. Bytes written. A surrogate without
// its other half becomes U+FFFD.
int32_t rawWideToUtf8(const char16_t* units, int32_t count, uint8_t* target);

} // namespace RawLayer
