// WinMenuHandle: a popup menu of the platform, shared by reference; the last reference destroys it.
// References may be taken on any thread, the menu itself belongs to the thread that shows it. A
// menu that could not be made takes no entries.
#pragma once

#include <cstdint>
#include <memory>

namespace WinLayer {

class WinMenuHandle {
 public:
  WinMenuHandle(); // a new, empty menu

  [[nodiscard]] void* menu() const;    // the platform's handle; null when it could not be made
  [[nodiscard]] int32_t count() const; // entries inserted so far
  [[nodiscard]] bool isOpen() const;   // it is being tracked
  void setOpen(bool open);
  [[nodiscard]] bool isAfterItem() const; // the last entry was not a separator

  // Owner-drawn entries at the end; their item data is the id.
  void appendItem(uint32_t id);
  void appendSubmenu(const WinMenuHandle& submenu, uint32_t id);
  // Dropped at the top and behind another separator.
  void appendSeparator();

 private:
  struct Record;
  std::shared_ptr<Record> record_;
};

} // namespace WinLayer
