// WinMenuHandle: a popup menu of the platform, shared by reference; the last reference destroys it.
// References may be taken on any thread, the menu itself belongs to the thread that shows it. A
// menu that could not be made takes no entries.
#pragma once

#include "raw/RawString.h"

#include <cstdint>
#include <memory>

namespace WinLayer {

class WinMenuHandle {
 public:
  // How a text entry comes up; the platform's bits.
  enum EntryState : uint32_t { Enabled = 0, Disabled = 0x0002, Checked = 0x0008 };

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
  // Entries at the end that the platform draws, the text in any encoding; `state` is a sum of
  // EntryState. appendLine is their separator, dropped as the other.
  void appendText(uint32_t id, const RawLayer::RawString& text, uint32_t state = Enabled);
  void appendLine();

 private:
  struct Record;
  std::shared_ptr<Record> record_;
};

} // namespace WinLayer
