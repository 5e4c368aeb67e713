// A list box with rows in three colours that leaves a word for each hook, and a dialog around it.
#pragma once

#include "TestText.h"
#include "win/WinListBox.h"
#include "window/InputFixture.h"
#include "window/TestDialog.h"

namespace WindowTest {

using namespace WinLayer;

inline constexpr WinRect Place{10, 10, 112, 62}; // an area of 100 by 50 without a scroll bar
inline constexpr COLORREF RowColours[] = {RGB(200, 0, 0), RGB(0, 200, 0), RGB(0, 0, 200)};
inline constexpr COLORREF CursorColour = 0x00FF0000;
inline constexpr COLORREF HotColour = 0x004040FF;

struct Record {
  int32_t height;
};

// Rows in three colours by turns, which are narrower than the area; every hook leaves a word.
class TestList : public WinListBoxR<Record> {
 public:
  std::string hooks;
  std::string opened; // context menus, as "x,y,row "
  int measured = 0;   // rows
  bool mayPress = true;
  bool mayDoubleClick = true;
  bool canRemeasure = false;
  WinRect remembered;

  TestList() {
    rect = Place;
    style &= ~static_cast<DWORD>(WS_VSCROLL);
  }
  void fill(const std::vector<int32_t>& heights) {
    records_.clear();
    for (const int32_t height : heights) records_.push_back({height});
    for (Record& record : records_) add(&record);
  }
  std::string marks() {
    std::string text;
    for (const Item& item : items.elements()) text += item.isMarked() ? 'x' : '.';
    return text;
  }

  void OpenContextMenu(WinPoint point, int32_t row) override {
    opened +=
        std::to_string(point.x) + "," + std::to_string(point.y) + "," + std::to_string(row) + " ";
  }
  bool CanLeftPress(WinPoint, int32_t) const override { return mayPress; }
  bool CanRightPress(WinPoint, int32_t) const override { return mayPress; }
  bool CanDoubleClick() const override { return mayDoubleClick; }
  bool CanRemeasure(const WinListBoxItemUnit&) const override { return canRemeasure; }

  void FillBackground(HDC dc, const WinRect& place, COLORREF colour) override {
    note("background");
    WinListBox::FillBackground(dc, place, colour);
  }
  void RememberItemArea(const WinRect& itemArea) override {
    note("remember");
    remembered = itemArea;
  }
  void DrawRows(HDC dc) override {
    note("rows");
    WinListBox::DrawRows(dc);
  }
  void DrawRow(HDC dc, const WinRect& place, int32_t index, Item&) override {
    note("row" + std::to_string(index));
    fillRect(dc, place, RowColours[index < 0 ? 0 : index % 3]);
  }
  void DrawEmptyRow(HDC, int32_t index, Item&) override { note("empty" + std::to_string(index)); }
  void NoteHiddenRow(HDC, int32_t index, Item&) override { note("hidden" + std::to_string(index)); }
  void DrawCursorFrame(HDC dc, const WinRect& place, int32_t index) override {
    note("frame" + std::to_string(index));
    WinListBox::DrawCursorFrame(dc, place, index);
  }
  void DrawHeader(HDC, const WinRect&) override { note("header"); }
  void DrawFooter(HDC, const WinRect&) override { note("footer"); }
  void FillMargins(HDC dc, const WinRect& surface) override {
    note("margins");
    WinListBox::FillMargins(dc, surface);
  }
  void DrawGridLines(HDC dc) override {
    note("grid");
    WinListBox::DrawGridLines(dc);
  }
  void FinishDrawing(HDC, const WinRect&) override { note("finish"); }
  void DrawFocusLine(HDC dc, const WinRect& surface) override {
    note("focus");
    WinListBox::DrawFocusLine(dc, surface);
  }
  void MeasureRow(HDC, WinRect& row, int32_t, Item& item) override {
    ++measured;
    EXPECT_EQ(row, (WinRect{0, 0, area.width(), 0}));
    row.right = 60;
    row.bottom = dataOf(item)->height;
  }

 private:
  void note(const std::string& word) { hooks += word + " "; }
  std::vector<Record> records_;
};

class ListBoxFixture : public InputFixture {
 protected:
  TestDialog dialog;
  TestList list; // goes first, and leaves the dialog

  void show(const std::vector<int32_t>& heights = {20, 20, 20, 20, 20}) {
    list.fill(heights);
    dialog.Create();
    dialog.addChild(list);
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
    target = list.window;
    SetFocus(target);
    settle();
    dialog.diary.clear();
  }
  void paint() {
    list.invalidate();
    UpdateWindow(list.window);
  }
  COLORREF at(int32_t x, int32_t y) { return pixel(list.window, x, y); }
  // How often the code came since the last time.
  int64_t times(const char* code) {
    const int64_t count = timesOf(dialog.diary, std::string("command 2500 ") + code);
    dialog.diary.clear();
    return count;
  }
};

} // namespace WindowTest
