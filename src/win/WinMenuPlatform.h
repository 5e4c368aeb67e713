// The platform's calls under WinMenuHandle.
#pragma once

#include "raw/RawString.h"

#include <cstdint>

namespace WinLayer {

void* createPopupMenu(); // null on failure
void destroyPopupMenu(void* menu);
// Inserts at the end: `item` is an id, or a submenu's handle; `data` comes back when it is drawn.
bool insertMenuEntry(void* menu, uint32_t flags, uintptr_t item, uintptr_t data);
// The same with a text for the platform to draw, in any encoding.
bool insertMenuText(void* menu, uint32_t flags, uintptr_t item, const RawLayer::RawString& text);

} // namespace WinLayer
