#include "raw/RawClipboard.h"

#include "raw/RawClipboardData.h"

#include <string>

namespace RawLayer {

namespace {

// With the terminator; ends at the first zero unit.
template <class Unit>
bool put(RawClipboardFormat format, const Unit* text) {
  return putClipboardData(format, text, (std::char_traits<Unit>::length(text) + 1) * sizeof(Unit));
}

} // namespace

bool setClipboard(const RawString& text, RawRange range) {
  // A text of its own, and so one with a terminator.
  const RawString part = RawString::fromRange(text.encoding(), text, range);
  if (part.isEmpty()) return put(RawClipboardNarrow, "");
  if (part.classifyForPlatform() == RawString::PlatformNarrow)
    return put(RawClipboardNarrow, part.text());
  return put(RawClipboardWide, part.shareAs(EncodingWide).wide());
}

} // namespace RawLayer
