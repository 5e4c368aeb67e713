// WinListBoxItemUnit: one row of a list box. WinListBoxItemList: the rows, which it owns and makes
// through its factory. A row owns nothing of the caller's record. Thread of the list box.
#pragma once

#include "raw/RawList.h"
#include "win/WinRect.h"

namespace WinLayer {

class WinListBoxItemUnit {
 public:
  enum Flag : uint16_t {
    Measured = 0x0001,
    Marked = 0x0002,
    NoExtent = 0x0004, // not shown
    IsHeader = 0x0020,
    IsFooter = 0x0040,
    SeenAtPaint = 0x0100, // the last one
  };
  uint16_t flags = 0;
  void* data = nullptr; // the caller's record
  WinRect rect;         // in content coordinates, pixels

  WinListBoxItemUnit() = default;
  explicit WinListBoxItemUnit(Flag kind) : flags(kind) {}

  // Slot order: Reset, Destroy. What the row is stays, all else goes but the record.
  virtual void Reset();
  virtual void Destroy() { delete this; } // of a row that its list owns
  virtual ~WinListBoxItemUnit() = default;
  WinListBoxItemUnit(const WinListBoxItemUnit&) = delete;
  WinListBoxItemUnit& operator=(const WinListBoxItemUnit&) = delete;

  [[nodiscard]] bool has(Flag flag) const { return (flags & flag) != 0; }
  void set(Flag flag, bool on) { flags = static_cast<uint16_t>(on ? flags | flag : flags & ~flag); }
  [[nodiscard]] bool isMarked() const { return has(Marked); }
  void mark(bool on) { set(Marked, on); }
  // Whether the row takes room: only then it is drawn, hit and reached by keys.
  [[nodiscard]] bool hasExtent() const { return !has(NoExtent) && rect.height() > 0; }
};

// The factory of rows.
class WinListBoxItemCreater : public RawLayer::RawListAllocator<WinListBoxItemUnit> {
 public:
  void destroy(WinListBoxItemUnit* element) override { element->Destroy(); }
  virtual WinListBoxItemUnit* Create() { return new WinListBoxItemUnit; } // the caller's
};

class WinListBoxItemList : public RawLayer::RawListR<WinListBoxItemCreater, WinListBoxItemUnit> {};

} // namespace WinLayer
