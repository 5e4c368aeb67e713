#include "win/WinMenuPlatform.h"

#include "win/WinGdi.h"

namespace WinLayer {

void* createPopupMenu() {
  return CreatePopupMenu();
}

void destroyPopupMenu(void* menu) {
  WinMenuCloser::close(static_cast<HMENU>(menu));
}

bool insertMenuEntry(void* menu, uint32_t flags, uintptr_t item, uintptr_t data) {
  return InsertMenuW(static_cast<HMENU>(menu), static_cast<UINT>(-1), flags, item,
                     reinterpret_cast<const wchar_t*>(data)) != FALSE;
}

} // namespace WinLayer
