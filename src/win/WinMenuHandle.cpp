#include "win/WinMenuHandle.h"

#include "win/WinMenuPlatform.h"

namespace WinLayer {

namespace {

// By position, owner-drawn; with a submenu; a separator.
constexpr uint32_t ItemFlags = 0x0500;
constexpr uint32_t SubmenuFlags = 0x0510;
constexpr uint32_t SeparatorFlags = 0x0D00;
// By position, with a text or a line.
constexpr uint32_t TextFlags = 0x0400;
constexpr uint32_t LineFlags = 0x0C00;

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
  void insertSeparator(uint32_t flags) {
    if (afterItem) insert(flags, 0, 0);
    afterItem = false;
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
  record_->insertSeparator(SeparatorFlags);
}

void WinMenuHandle::appendText(uint32_t id, const RawLayer::RawString& text, uint32_t state) {
  if (record_->menu && insertMenuText(record_->menu, TextFlags | state, id, text)) ++record_->count;
  record_->afterItem = true;
}

void WinMenuHandle::appendLine() {
  record_->insertSeparator(LineFlags);
}

} // namespace WinLayer
