// Texts to and from calls of the Windows platform, for the Windows sources alone.
#pragma once

#include "raw/RawPlatformText.h"
#include "raw/RawString.h"

namespace RawLayer {

inline const wchar_t* wideOf(const RawPlatformText& text) {
  return reinterpret_cast<const wchar_t*>(text.wide());
}

// Null for an empty text, as calls with an argument that may be left out take it.
inline const wchar_t* wideOrNull(const RawPlatformText& text) {
  return *text.wide() == 0 ? nullptr : wideOf(text);
}
inline const char* narrowOrNull(const RawPlatformText& text) {
  return *text.narrow() == 0 ? nullptr : text.narrow();
}

// The code in which the platform gives a text that is wanted in `encoding`: that of the narrow form
// for codes 0 and 1, that of the wide one for all others.
inline int32_t platformEncoding(int32_t encoding) {
  const bool isNarrow = encoding == EncodingAnsi || encoding == EncodingShiftJis;
  return isNarrow ? encoding : static_cast<int32_t>(EncodingWide);
}

// What a call with a narrow and a wide form writes into a buffer of `units` units and a
// terminator, as a text of the encoding. `narrow(buffer, room)` and `wide(buffer, room)` are given
// the room with the terminator and say whether they succeeded; if not, `otherwise` is the text.
template <class Narrow, class Wide>
RawString queryText(int32_t encoding, int32_t units, Narrow narrow, Wide wide,
                    const RawString& otherwise = RawString::emptyStatic()) {
  RawString text(platformEncoding(encoding), units);
  const bool done = text.encoding() == EncodingWide
                        ? wide(reinterpret_cast<wchar_t*>(text.mutableWide()), units + 1)
                        : narrow(text.mutableText(), units + 1);
  if (!done) return otherwise.shareAs(encoding);
  text.syncLength();
  return text.shareAs(encoding);
}

} // namespace RawLayer
