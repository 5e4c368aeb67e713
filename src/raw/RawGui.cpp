#include "raw/RawGui.h"

#include <algorithm>

namespace RawLayer {

int32_t spreadTextExtent(const RawString& text, RawRange range, const RawString& wide,
                         int32_t wideFit, const int32_t* widePositions, int32_t* positions) {
  const RawRange part = range.clamped(text.length());
  int32_t fit = 0;
  int32_t unit = 0;
  for (int32_t byte = part.start; byte < part.end;) {
    const int32_t next = std::min(byte + 1 + text.extraUnits(byte), part.end);
    unit += 1 + wide.extraUnits(unit);
    if (unit <= wideFit) fit = next - part.start;
    // Bytes that are no UTF-8 may have fewer units than characters.
    const int32_t last = std::min(unit, wide.length()) - 1;
    for (; byte < next; ++byte)
      if (positions != nullptr) positions[byte - part.start] = last < 0 ? 0 : widePositions[last];
  }
  return fit;
}

} // namespace RawLayer
