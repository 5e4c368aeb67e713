// The platform's calls under WinMenuHandle.
#pragma once

#include <cstdint>

namespace WinLayer {

void* createPopupMenu(); // null on failure
void destroyPopupMenu(void* menu);
// Inserts at the end: `item` is an id, or a submenu's handle; `data` comes back when it is drawn.
bool insertMenuEntry(void* menu, uint32_t flags, uintptr_t item, uintptr_t data);

} // namespace WinLayer
