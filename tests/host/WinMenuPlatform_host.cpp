#include "win/WinMenuPlatform.h"

#include "HostFaults.h"
#include "HostMenus.h"

namespace WinLayer {

void* createPopupMenu() {
  if (HostFaults::fails(HostFaults::Query)) return nullptr;
  return new HostMenus::Menu;
}

void destroyPopupMenu(void* menu) {
  delete static_cast<HostMenus::Menu*>(menu);
}

bool insertMenuEntry(void* menu, uint32_t flags, uintptr_t item, uintptr_t data) {
  if (HostFaults::fails(HostFaults::Query)) return false;
  static_cast<HostMenus::Menu*>(menu)->push_back({flags, item, data});
  return true;
}

bool insertMenuText(void* menu, uint32_t flags, uintptr_t item, const RawLayer::RawString& text) {
  if (HostFaults::fails(HostFaults::Query)) return false;
  static_cast<HostMenus::Menu*>(menu)->push_back({flags, item, 0, text});
  return true;
}

} // namespace WinLayer
