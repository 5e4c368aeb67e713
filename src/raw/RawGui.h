// Wrappers of platform calls that take or give texts and belong to windows: menus, dropped files,
// measuring. Windows only, but for spreadTextExtent, which is pure. Handles stay the caller's.
#pragma once

#include "raw/RawString.h"

namespace RawLayer {

// Inserts an entry in front of the one at `position` (a position or an id, as the flags say).
// `item` is its id or, with the popup flag, its submenu's handle.
bool insertMenu(void* menu, uint32_t position, uint32_t flags, uintptr_t item,
                const RawString& text);
// The path of a dropped file, counted from 0; empty when there is none or when it has more
// than 260 units.
RawString dropFile(void* drop, uint32_t index, int32_t encoding = EncodingUtf8);
uint32_t dropFileCount(void* drop);

// How many units of the range fit into `width` pixels in the context's font, and for each unit of
// the range the distance in pixels from the start to its end. All units of one character have the
// same distance. `positions` has room for the range's size; it may be null. False when the text
// could not be measured: all encodings but 0, 1, 2 and 7 are such.
bool textExtent(void* deviceContext, const RawString& text, RawRange range, int32_t width,
                int32_t& fit, int32_t* positions);

// The step of textExtent from 16-bit units back to UTF-8. `wide` is the clamped range of `text` in
// 16-bit units, of which `wideFit` fit; `widePositions` (one for each of them) and `positions` may
// be null together. Gives how many bytes of the range fit.
int32_t spreadTextExtent(const RawString& text, RawRange range, const RawString& wide,
                         int32_t wideFit, const int32_t* widePositions, int32_t* positions);

} // namespace RawLayer
