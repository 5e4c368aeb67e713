// WinListBoxCursor: the cursor, the marks and the keys of a list box. It decides on the shared
// state alone and acts on the window through WinListBoxAction. Thread of the list box.
//
// WinCodeSelection and WinCodeScrolled go out as the last step of an operation or just before one
// that looks at no row: whoever is told may change the list.
#pragma once

#include "win/WinListBoxTarget.h"

namespace WinLayer {

// How a list box acts on its window; nothing without one.
class WinListBoxAction {
 public:
  virtual ~WinListBoxAction() = default;
  virtual void Notify(uint32_t code) = 0; // a WM_COMMAND of the view, sent
  virtual void Repaint() = 0;
  virtual void UpdateBars() = 0; // the scroll bars show the state
  [[nodiscard]] virtual bool CanScrollSideways() const = 0;
};

class WinListBoxCursor : public WinListBoxTarget, public WinListBoxAction {
 public:
  // Slot order: SetCursorRow to HasSearch.
  //
  // Cursor and anchor go to the row, which becomes the only marked one and comes into view; then
  // WinCodeSelection, also for an index outside the list, which marks nothing.
  virtual void SetCursorRow(int32_t row);
  // Measures what is dirty, clamps the offsets, updates the bars.
  virtual void UpdateScroll() = 0;
  virtual void SearchStart() {}
  virtual void SearchForward() {}
  virtual void SearchBackward() {}
  [[nodiscard]] virtual bool HasSearch() const { return false; }

  // Each moves the cursor, brings the row into view and sends WinCodeSelection; nothing for an
  // index outside the list.
  void Toggle(int32_t row); // turns the row's mark over
  void Range(int32_t row);  // marks from the anchor to the row and nothing else
  void MoveTo(int32_t row); // leaves the marks

  // What a left press on a row does with the modifiers; with both, Ctrl counts.
  void press(int32_t row, bool control, bool shift);
  // A key with its modifiers; false when it is none of the list's. `key` is the platform's.
  bool pressKey(uint32_t key, bool control, bool shift);
  // A turn of the wheel; three times as far with Shift.
  void turnWheel(int32_t delta, bool shift);
  // Clamped; WinCodeScrolled when that changes something.
  void scrollTo(WinPoint offsets);

 private:
  void reveal(int32_t row);
  void step(int32_t row, bool control, bool shift);
  bool pressArrow(uint32_t key, bool control, bool shift);
  bool pressSideways(bool forward, bool control);
  bool pressCommand(uint32_t key, bool control, bool shift);
};

} // namespace WinLayer
