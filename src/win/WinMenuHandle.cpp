#include "win/WinMenuHandle.h"

#include "win/WinMenuPlatform.h"

namespace WinLayer {

namespace {

// By position, owner-drawn; with a submenu; a separator.
constexpr uint32_t ItemFlags = 0x0500;
constexpr uint32_t SubmenuFlags = 0x0510;
constexpr uint32_t SeparatorFlags = 0x0D00;

} // namespace

struct WinMenuHandle::Record {
  void* menu = createPopupMenu();
  int32_t count = 0;
  bool open = false;
  bool afterItem = false;

  Record() = default;
  ~Record() {
    if (menu) destroyPopupMenu(menu);
  }
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;

  void insert(uint32_t flags, uintptr_t item, uintptr_t data) {
    if (menu && insertMenuEntry(menu, flags, item, data)) ++count;
  }
};

WinMenuHandle::WinMenuHandle() : record_(std::make_shared<Record>()) {}

void* WinMenuHandle::menu() const {
  return record_->menu;
}

int32_t WinMenuHandle::count() const {
  return record_->count;
}

bool WinMenuHandle::isOpen() const {
  return record_->open;
}

void WinMenuHandle::setOpen(bool open) {
  record_->open = open;
}

bool WinMenuHandle::isAfterItem() const {
  return record_->afterItem;
}

void WinMenuHandle::appendItem(uint32_t id) {
  record_->insert(ItemFlags, id, id);
  record_->afterItem = true;
}

void WinMenuHandle::appendSubmenu(const WinMenuHandle& submenu, uint32_t id) {
  record_->insert(SubmenuFlags, reinterpret_cast<uintptr_t>(submenu.menu()), id);
  record_->afterItem = true;
}

void WinMenuHandle::appendSeparator() {
  if (record_->afterItem) record_->insert(SeparatorFlags, 0, 0);
  record_->afterItem = false;
}

} // namespace WinLayer
