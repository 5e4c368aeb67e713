#include "raw/RawCodePage.h"

#include <windows.h>

namespace RawLayer {

static_assert(RawConversionNoRoom == ERROR_INSUFFICIENT_BUFFER);

// A count of zero is a failure to the platform, but not to a text that holds nothing but, say, a
// shift of UTF-7: the error number decides.
static RawConversion outcome(int count) {
  return {count, count > 0 ? 0 : GetLastError()};
}

RawConversion rawToWide(uint32_t codePage, const char* bytes, int32_t size, char16_t* target,
                        int32_t room) {
  if (size <= 0) return {};
  SetLastError(0);
  return outcome(
      MultiByteToWideChar(codePage, 0, bytes, size, reinterpret_cast<wchar_t*>(target), room));
}

RawConversion rawFromWide(uint32_t codePage, const char16_t* units, int32_t count, char* target,
                          int32_t room) {
  if (count <= 0) return {};
  SetLastError(0);
  return outcome(WideCharToMultiByte(codePage, 0, reinterpret_cast<const wchar_t*>(units), count,
                                     target, room, nullptr, nullptr));
}

} // namespace RawLayer
