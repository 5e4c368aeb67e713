#include "win/WinListBoxCursor.h"

#include "win/WinCodes.h"

namespace WinLayer {

namespace {

constexpr int32_t ShiftedWheel = 3; // times as far

// The platform's virtual keys.
enum Key : uint32_t {
  KeyEnter = 0x0D,
  KeySpace = 0x20,
  KeyPageUp = 0x21,
  KeyPageDown = 0x22,
  KeyEnd = 0x23,
  KeyHome = 0x24,
  KeyLeft = 0x25,
  KeyUp = 0x26,
  KeyRight = 0x27,
  KeyDown = 0x28,
  KeyF3 = 0x72,
};

// The codes of scroll bar messages that keys stand for.
enum ScrollCode : uint32_t {
  LineBack = 0,
  LineOn = 1,
  PageBack = 2,
  PageOn = 3,
  Start = 6,
  End = 7
};

} // namespace

// --- The cursor and the marks

void WinListBoxCursor::SetCursorRow(int32_t row) {
  UpdateScroll();
  cursor = anchor = row;
  clearMarks();
  if (WinListBoxItemUnit* unit = unitAt(row)) unit->mark(true);
  reveal(row);
  Notify(WinCodeSelection);
}

void WinListBoxCursor::Toggle(int32_t row) {
  UpdateScroll();
  WinListBoxItemUnit* unit = unitAt(row);
  if (!unit) return;
  cursor = row;
  unit->mark(!unit->isMarked());
  reveal(row);
  Notify(WinCodeSelection);
}

void WinListBoxCursor::Range(int32_t row) {
  UpdateScroll();
  WinListBoxItemUnit* unit = unitAt(row);
  if (!unit) return;
  cursor = row;
  clearMarks();
  // The footer stands behind the last row, the header ahead of the first.
  markRange(anchor == FooterRow ? items.count() : anchor, row == FooterRow ? items.count() : row);
  if (row < 0) unit->mark(true);
  reveal(row);
  Notify(WinCodeSelection);
}

void WinListBoxCursor::MoveTo(int32_t row) {
  UpdateScroll();
  if (!unitAt(row)) return;
  cursor = row;
  reveal(row);
  Notify(WinCodeSelection);
}

// --- Scrolling

void WinListBoxCursor::reveal(int32_t row) {
  Repaint();
  const WinListBoxItemUnit* unit = unitAt(row);
  if (row == FooterRow)
    scrollTo({scrollX, scrollLimit().y});
  else if (unit && row >= 0)
    scrollTo({scrollX, offsetFor(unit->rect)});
}

void WinListBoxCursor::scrollTo(WinPoint offsets) {
  const WinPoint place = clamped(offsets);
  if (place == WinPoint{scrollX, scrollY}) return;
  scrollX = place.x;
  scrollY = place.y;
  Repaint();
  UpdateBars();
  Notify(WinCodeScrolled);
}

void WinListBoxCursor::turnWheel(int32_t delta, bool shift) {
  UpdateScroll();
  scrollTo({scrollX, wheelTarget(shift ? delta * ShiftedWheel : delta)});
}

// --- Mouse and keys

void WinListBoxCursor::press(int32_t row, bool control, bool shift) {
  const bool isMultiple = hasFlag(MultipleSelection);
  if (isMultiple && control)
    Toggle(row);
  else if (isMultiple && shift)
    Range(row);
  else
    SetCursorRow(row);
}

// A key brings the cursor to a row.
void WinListBoxCursor::step(int32_t row, bool control, bool shift) {
  if (row == NoRow) return;
  if (control && hasFlag(MultipleSelection))
    MoveTo(row);
  else
    press(row, false, shift);
}

bool WinListBoxCursor::pressKey(uint32_t key, bool control, bool shift) {
  UpdateScroll();
  return pressArrow(key, control, shift) || pressCommand(key, control, shift);
}

bool WinListBoxCursor::pressArrow(uint32_t key, bool control, bool shift) {
  const bool isJump = control && !hasFlag(MultipleSelection);
  const int32_t end = footer.hasExtent() ? static_cast<int32_t>(FooterRow) : lastRow();
  switch (key) {
  case KeyUp:
    step(isJump ? nextRow(NoRow) : previousRow(cursor), control, shift);
    return true;
  case KeyDown:
    step(isJump ? end : nextRow(cursor), control, shift);
    return true;
  case KeyHome:
    step(nextRow(NoRow), control, shift);
    return true;
  case KeyEnd:
    step(end, control, shift);
    return true;
  case KeyPageUp:
  case KeyPageDown:
    scrollTo({scrollX, verticalTarget(key == KeyPageUp ? PageBack : PageOn, 0)});
    return true;
  case KeyLeft:
  case KeyRight:
    return pressSideways(key == KeyRight, control);
  default:
    return false;
  }
}

bool WinListBoxCursor::pressSideways(bool forward, bool control) {
  if (!CanScrollSideways()) return false;
  const uint32_t code = control ? (forward ? End : Start) : (forward ? LineOn : LineBack);
  scrollTo({horizontalTarget(code, 0), scrollY});
  return true;
}

bool WinListBoxCursor::pressCommand(uint32_t key, bool control, bool shift) {
  const bool isMultiple = hasFlag(MultipleSelection);
  if (key == KeyEnter) {
    Notify(WinCodeDoubleClick);
  } else if (key == KeySpace && isMultiple) {
    Toggle(cursor);
  } else if (key == 'A' && control && isMultiple) {
    markAll();
    Repaint();
    Notify(WinCodeSelection);
  } else if (key == 'F' && control) {
    SearchStart();
  } else if ((key == 'S' && control) || (key == KeyF3 && shift)) {
    SearchBackward();
  } else if ((key == 'D' && control) || key == KeyF3) {
    SearchForward();
  } else {
    return false;
  }
  return true;
}

} // namespace WinLayer
