// WinListBoxTarget: the state that all parts of a list box share, and the arithmetic on it: where
// rows stand, what a point hits, how far it scrolls, which rows are marked. No window is touched
// here. All measures are pixels: of the content (from the first row's left top) for rows, of the
// surface that is drawn for the area. Thread of the list box.
//
// Rows are found by walking: lists of some hundred rows are what this is for.
#pragma once

#include "win/WinListBoxItem.h"

namespace WinLayer {

class WinFont;
class WinListBox;

// A scroll bar as the platform takes it: the range is 0 to `last`.
struct WinListBoxBar {
  int32_t last = 0;
  int32_t page = 0;
  int32_t position = 0;
  friend constexpr bool operator==(const WinListBoxBar&, const WinListBoxBar&) = default;
};

class WinListBoxTarget {
 public:
  // What a row index may be beside 0 and above.
  enum RowIndex : int32_t { NoRow = -1, HeaderRow = -2, FooterRow = -3 };
  enum ListFlag : uint16_t {
    HasFocus = 0x0001,
    MultipleSelection = 0x0002,
    DisplayOnly = 0x0004,      // no cursor frame, no mark colour
    HeaderPerGridRow = 0x0010, // also: lines between the rows of the grid
    HeaderFixed = 0x0040,      // on top of the area; else it scrolls along above the first row
  };
  // Lines between rows of the grid: where the first stands, how far apart they are, how many.
  struct Grid {
    int32_t start = 0;
    int32_t height = 0;
    int32_t count = 0;
  };

  WinListBox* view = nullptr;
  WinFont* zoomFont = nullptr; // null while the view's own font is shown
  WinListBoxItemList items;
  // Header and footer are there when their owner gives them a height, in BeforeMeasure at best.
  WinListBoxItemUnit header{WinListBoxItemUnit::IsHeader};
  WinListBoxItemUnit footer{WinListBoxItemUnit::IsFooter};
  int32_t cursor = NoRow;
  int32_t anchor = NoRow;   // start of a range
  int32_t hotIndex = NoRow; // of a second cursor frame
  WinRect area;             // of the items, inside the margins
  int32_t contentWidth = 0;
  int32_t contentHeight = 0;
  int32_t zoomWidth = 0; // 0: no zoom; else the logical width that the window shows
  int32_t rowStep = 0;   // step of grid rows
  WinSize windowSize;    // of the client, when it was last looked at
  int32_t lineStepX = 0; // scroll step of one line
  int32_t lineStepY = 0;
  int32_t scrollX = 0; // never below 0
  int32_t scrollY = 0;
  Grid grid;
  uint16_t listFlags = 0;
  uint8_t dirty = 1; // all rows are to be measured again

  [[nodiscard]] bool hasFlag(ListFlag flag) const { return (listFlags & flag) != 0; }
  void setFlag(ListFlag flag, bool on) {
    listFlags = static_cast<uint16_t>(on ? listFlags | flag : listFlags & ~flag);
  }

  // --- Rows
  [[nodiscard]] WinListBoxItemUnit* unitAt(int32_t row); // null outside
  // The nearest row with extent ahead of the index or behind it; NoRow without one. The footer
  // stands behind all rows, the header ahead of them.
  [[nodiscard]] int32_t previousRow(int32_t row) const;
  [[nodiscard]] int32_t nextRow(int32_t row) const;
  [[nodiscard]] int32_t lastRow() const { return previousRow(FooterRow); }
  void clearMarks(); // header's and footer's, too
  void markAll();
  void markRange(int32_t from, int32_t to); // in either order; rows that are not shown are skipped
  void Clear();                             // no rows, nothing scrolled, no cursor

  // --- Geometry
  // The surface that is drawn: the window, or what the zoom shows of it.
  [[nodiscard]] WinSize surfaceSize() const;
  // Takes over the size of the client; true when the area of the items changed.
  bool fitTo(WinSize client, const WinRect& margins);
  [[nodiscard]] WinPoint surfacePoint(WinPoint clientPoint) const;
  // The row at a point of the client; NoRow for none.
  [[nodiscard]] int32_t hitTest(WinPoint clientPoint) const;
  // A row's rectangle on the surface.
  [[nodiscard]] WinRect shownRect(const WinRect& row) const;
  [[nodiscard]] WinRect headerRect() const; // of the surface; empty without a header
  // One pass over the rows from the top: each keeps its size and gets its place.
  void beginPlacing();
  void place(WinListBoxItemUnit& unit);
  void endPlacing(); // places the footer, sets the content's size

  // --- Scrolling
  [[nodiscard]] WinPoint scrollLimit() const; // the greatest offsets
  [[nodiscard]] WinPoint clamped(WinPoint offsets) const;
  // The vertical offset at which the rectangle of a row is in view; its top counts most.
  [[nodiscard]] int32_t offsetFor(const WinRect& row) const;
  [[nodiscard]] WinListBoxBar verticalBar() const;
  [[nodiscard]] WinListBoxBar horizontalBar() const;
  // The offset that a message of a scroll bar asks for, not clamped. `code` is the platform's.
  [[nodiscard]] int32_t verticalTarget(uint32_t code, int32_t tracked) const;
  [[nodiscard]] int32_t horizontalTarget(uint32_t code, int32_t tracked) const;
  // The same for a turn of the wheel, 120 a notch, away from the user above 0.
  [[nodiscard]] int32_t wheelTarget(int32_t delta) const;
  // A font's height (negative for the height of characters) one pixel larger or smaller; the same
  // when it would fall below the smallest.
  static int32_t steppedFontHeight(int32_t height, int32_t direction);

 private:
  [[nodiscard]] int32_t scrolledHeaderHeight() const;
  int32_t placedTop_ = 0;
  int32_t placedWidth_ = 0;
};

} // namespace WinLayer
