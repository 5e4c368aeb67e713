#include "win/WinMenuPlatform.h"

#include "win/WinGdi.h"

namespace WinLayer {

void* createPopupMenu() {
  return CreatePopupMenu();
}

// The platform would destroy submenus along with their parent, but each has an owner of its own. A
// menu that was hung into a window's menu has gone with the window.
void destroyPopupMenu(void* menu) {
  const auto handle = static_cast<HMENU>(menu);
  while (RemoveMenu(handle, 0, MF_BYPOSITION)) {
  }
  if (IsMenu(handle)) WinMenuCloser::close(handle);
}

bool insertMenuEntry(void* menu, uint32_t flags, uintptr_t item, uintptr_t data) {
  return InsertMenuW(static_cast<HMENU>(menu), static_cast<UINT>(-1), flags, item,
                     reinterpret_cast<const wchar_t*>(data)) != FALSE;
}

bool insertMenuText(void* menu, uint32_t flags, uintptr_t item, const RawString& text) {
  const RawString wide = text.shareAs(RawLayer::EncodingWide);
  return InsertMenuW(static_cast<HMENU>(menu), static_cast<UINT>(-1), flags, item,
                     wideUnits(wide)) != FALSE;
}

} // namespace WinLayer
