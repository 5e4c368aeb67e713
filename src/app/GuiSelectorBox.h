// GuiSelectorBox: the list at the left of the main window, one row for each selector. A selection
// of any kind runs the selector's script at once; a menu, keys and dropped files edit the list, and
// each edit goes to the data and to the configuration file.
//
//   GuiSelectorBox box(LauncherData::instance().selectors);
//   box.fill();             // the rows
//   box.FitToContent();     // sets the selectors up; windowWidth, windowHeight
//   box.rect = ...;
//   dialog.addChild(box);   // in OnCreateChildren
//   box.SetCursorRow(0);    // runs the first selector; without a window the cursor moves alone
//
// The list must outlive the box and be changed by nobody else while the box has rows. After an edit
// MainCommandSelectorsChanged goes to the owner, which asks itemExtent then. Main thread. A script
// may edit the list or end the launcher: nothing is looked at behind it.
#pragma once

#include "app/GuiSelectorEdits.h"
#include "win/WinListBox.h"

#include <shellapi.h>

namespace AppLayer {

class GuiSelectorBox : public WinLayer::WinListBoxR<JobLayer::JobSelectorUnit> {
 public:
  using WinPoint = WinLayer::WinPoint;
  using WinRect = WinLayer::WinRect;
  using WinSize = WinLayer::WinSize;

  static constexpr int32_t LeastWidth = 10;

  explicit GuiSelectorBox(JobLayer::JobSelectorList& selectors);

  // Makes the rows anew from the list, marked as its entries are; nothing is scrolled then, and the
  // cursor keeps its index.
  void fill();
  // The greatest width of a row, LeastWidth or more, and the sum of heights, without margins; rows
  // that came or changed since are measured first.
  [[nodiscard]] WinSize itemExtent();

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnChildNotify(uint32_t code) override;
  int32_t OnMenuCommand(uint32_t entry, LPARAM lParam) override; // 0, or -1 for an unknown entry
  void OpenContextMenu(WinPoint point, int32_t row) override;
  void MeasureText(WinRect& rect) override; // from the rectangle's left top

  void RememberItemArea(const WinRect& itemArea) override;
  void DrawRow(HDC dc, const WinRect& rect, int32_t index, Item& item) override;
  void FinishDrawing(HDC dc, const WinRect& surface) override;
  void Measure(HDC dc, WinSize& size) override;
  void MeasureRow(HDC dc, WinRect& rect, int32_t index, Item& item) override;

 private:
  void measureSelectors(HDC dc);
  [[nodiscard]] WinSize selectorExtent() const;
  [[nodiscard]] COLORREF rowColour(const Item& item) const;
  void runSelector(const RawLayer::RawString& key);
  void copyMarks();
  bool edit(uint32_t entry);
  void finishEdit();
  bool pressOwnKey(WPARAM key, bool withAlt);
  void openMenuAtCursor();
  void handleDrop(HDROP drop);
  int32_t insertDropped(HDROP drop, int32_t index);

  JobLayer::JobSelectorList& selectors_;
  GuiSelectorEdits edits_;
  WinRect itemArea_;
  int32_t rowHeight_ = 0;
};

} // namespace AppLayer
