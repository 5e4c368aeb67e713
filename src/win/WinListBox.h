// WinListBox: the toolkit's own list: rows of any height with a cursor, several marks, scrolling by
// pixels, a header and a footer, zoom, and hooks for drawing (WinListBoxDraw). It is no list of the
// platform: it only borrows the platform's "BUTTON" as a surface to draw on.
//
//   class Names : public WinListBoxR<Name> {
//     void MeasureRow(HDC, WinRect& rect, int32_t, Item&) override { rect.bottom = 20; }
//     void DrawRow(HDC dc, const WinRect& rect, int32_t, Item& item) override;
//   };
//   names.add(&name);                    // the records stay the caller's
//   dialog.addChild(names);
//   names.SetCursorRow(0);
//
// It sends its owner WinCodeSelection when cursor or marks change, WinCodeDoubleClick on a double
// click and the Enter key, WinCodeScrolled when it scrolled. Whoever is told may change the list.
// Rows are measured when positions are needed first, and again when `dirty` was set. Main thread,
// or that of its dialog.
#pragma once

#include "win/WinListBoxCursor.h"
#include "win/WinListBoxDraw.h"
#include "win/WinView.h"

namespace WinLayer {

class WinListBoxBasic : public WinListBoxCursor, public WinListBoxDraw {
 protected:
  WinListBoxBasic() : WinListBoxDraw(static_cast<WinListBoxTarget&>(*this)) {}
};

class WinListBox : public WinView, public WinListBoxBasic {
 public:
  WinListBox();

  // Slot order behind those of WinView: OpenContextMenu to CanRightPress. Points are of the client,
  // rows may be NoRow, HeaderRow and FooterRow.
  virtual void OpenContextMenu(WinPoint point, int32_t row);
  virtual void OnReservedFirst() {}
  virtual void OnReservedSecond() {}
  virtual void Relayout(); // measures all rows; keeps the position as far as it can
  // Whether the row's size depends on the width, so that a resize measures it again.
  [[nodiscard]] virtual bool CanRemeasure(const WinListBoxItemUnit& item) const;
  virtual void RelayoutAndInvalidate();
  [[nodiscard]] virtual bool CanLeftPress(WinPoint point, int32_t row) const;
  [[nodiscard]] virtual bool CanDoubleClick() const;
  [[nodiscard]] virtual bool CanRightPress(WinPoint point, int32_t row) const;

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OnCreated() override;
  void UpdateScroll() override;

 protected:
  void Notify(uint32_t code) override;
  void Repaint() override;
  void UpdateBars() override;
  [[nodiscard]] bool CanScrollSideways() const override;

 private:
  // Each is the answer to its message.
  int32_t handleDraw(const DRAWITEMSTRUCT& draw);
  int32_t handleFocus(bool hasFocus);
  int32_t handleLeftPress(WPARAM keys, WinPoint point);
  int32_t handleDoubleClick();
  int32_t handleRightPress(WinPoint point);
  int32_t handleWheel(WPARAM wParam);
  int32_t handleBar(int bar, uint32_t code);
  int32_t handleKey(UINT message, WPARAM key, LPARAM lParam);
  void zoomFontBy(int32_t direction);
  void measure(bool all);
  void setBar(int bar, const WinListBoxBar& state) const;

  WinFont ownFont_; // of the zoom
  WinOffscreen surface_;
};

// A list box whose rows show records of one type, which outlive their rows.
template <class T>
class WinListBoxR : public WinListBox {
 public:
  static T* dataOf(const WinListBoxItemUnit& item) { return static_cast<T*>(item.data); }
  // A new row before the index, at the end for an index outside; measured at the next need.
  WinListBoxItemUnit& insert(int32_t index, T* data) {
    WinListBoxItemUnit* item = items.Create();
    item->data = data;
    items.insertBefore(items.nodeAt(index), item);
    dirty = 1;
    return *item;
  }
  WinListBoxItemUnit& add(T* data) { return insert(NoRow, data); }
};

} // namespace WinLayer
