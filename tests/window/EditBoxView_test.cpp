// The edit box under a real mouse, and what it shows: caret, frame, scrolled text.
#include "window/EditBoxTest.h"

#include <shlobj.h>

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr uint16_t Lines = WinEditBoxInfo::MultiLine;
constexpr WinRect LinesPlace{10, 10, 210, 100};
constexpr COLORREF White = 0xFFFFFF;
const std::u16string LongText(60, u'm');

class EditBoxView : public EditBoxFixture {
 protected:
  void SetUp() override {
    EditBoxFixture::SetUp();
    box.background = White;
    box.textColour = 0;
  }
  void moveTo(WinPoint client) {
    POINT point{client.x, client.y};
    ClientToScreen(box.window, &point);
    movePointer(point.x, point.y);
    settle();
  }
  void pressAt(WinPoint client) { press(client.x, client.y); }
  [[nodiscard]] bool showsFrame(COLORREF colour) const {
    return pumpUntil([&] {
      const WinRect area = box.clientRect();
      return pixel(box.window, 0, 0) == colour &&
             pixel(box.window, area.right - 1, area.bottom - 1) == colour &&
             pixel(box.window, area.right / 2, 0) == colour &&
             pixel(box.window, 0, area.bottom / 2) == colour;
    });
  }
  [[nodiscard]] COLORREF caretPixel() {
    const WinRect caret = box.caretPlace();
    return pixel(box.window, caret.left, caret.top + 1);
  }
  [[nodiscard]] int32_t darkPixels(const WinRect& area) const {
    int32_t count = 0;
    const WinWindowDc dc(box.window);
    for (int32_t y = area.top; y < area.bottom; ++y)
      for (int32_t x = area.left; x < area.right; ++x)
        count += GetGValue(GetPixel(dc.get(), x, y)) < 0x80 ? 1 : 0;
    return count;
  }
};

// Counts the ticks of the caret.
struct Ticks : WinViewHook {
  int count = 0;
  std::vector<uint64_t> times;
  int32_t OnHookMessage(UINT message, WPARAM wParam, LPARAM) override {
    if (message != WM_TIMER || wParam != 600) return WinNotHandled;
    times.push_back(GetTickCount64());
    ++count;
    return WinNotHandled;
  }
};

} // namespace

// --- Mouse

TEST_F(EditBoxView, APressPutsTheCaretAtThePoint) {
  open(u"abcdefgh");
  pressAt(at(3));
  EXPECT_EQ(place(), "3");
  pressAt({190, 10});
  EXPECT_EQ(place(), "8");
  pressAt({1, 10});
  EXPECT_EQ(place(), "0");
}

TEST_F(EditBoxView, ThePointGivesTheRowByLineHeightAndGap) {
  open(u"abc\r\ndef\r\nghi", Lines, LinesPlace);
  const int32_t height = box.info.lineHeight + box.info.lineGap;
  const int32_t x = at(1).x;
  pressAt({x, box.viewRect.top + height - 1});
  EXPECT_EQ(place(), "1");
  pressAt({at(2).x, box.viewRect.top + height}); // beside the first press: no double click
  EXPECT_EQ(place(), "7");
  pressAt({x, 85});
  EXPECT_EQ(place(), "11");
}

TEST_F(EditBoxView, APressGivesTheFocus) {
  dialog.addButtons(1);
  open(u"abc", 0, {10, 60, 210, 84});
  SetFocus(dialog.focusOf(0));
  pressAt(at(1));
  EXPECT_EQ(GetFocus(), box.window);
}

TEST_F(EditBoxView, ADragSelects) {
  open(u"abcdefgh");
  moveTo(at(2));
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  EXPECT_TRUE(box.info.has(WinEditBoxInfo::Dragging));
  moveTo(at(5));
  EXPECT_EQ(place(), "2-5");
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_FALSE(box.info.has(WinEditBoxInfo::Dragging));
  EXPECT_EQ(GetCapture(), nullptr);
  moveTo(at(7));
  EXPECT_EQ(place(), "2-5");
}

TEST_F(EditBoxView, ADragNearTheEdgesScrollsByTwoPixelsPerMove) {
  open(LongText);
  const WinRect area = box.clientRect();
  const int32_t y = area.height() / 2;
  moveTo({area.right / 2, y});
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  moveTo({area.right - 9, y});
  EXPECT_EQ(box.scrollX, 0);
  moveTo({area.right - 8, y});
  EXPECT_EQ(box.scrollX, 2);
  moveTo({area.right - 1, y});
  EXPECT_EQ(box.scrollX, 4);
  moveTo({area.right + 30, y}); // the pointer is captured
  EXPECT_EQ(box.scrollX, 6);
  moveTo({8, y});
  EXPECT_EQ(box.scrollX, 6);
  moveTo({7, y});
  EXPECT_EQ(box.scrollX, 4);
  moveTo({3, y});
  moveTo({2, y});
  moveTo({1, y});
  EXPECT_EQ(box.scrollX, 0);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

TEST_F(EditBoxView, ADoubleClickSelectsTheWord) {
  open(u"one two three");
  const WinPoint inTwo = at(5);
  moveTo(inTwo);
  POINT point{inTwo.x, inTwo.y};
  ClientToScreen(box.window, &point);
  pressMouse(point.x, point.y);
  pressMouse(point.x, point.y);
  ASSERT_TRUE(pumpUntil([&] { return selected() == u"two"; }));
  EXPECT_EQ(place(), "4-7");
  settle();
  EXPECT_EQ(place(), "4-7"); // also after the button went up
}

TEST_F(EditBoxView, TheWheelScrollsLinesAlsoOfAReadOnlyBox) {
  open(u"1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10", Lines | WinEditBoxInfo::ReadOnly,
       {10, 10, 210, 60});
  const int32_t height = box.info.lineHeight + box.info.lineGap;
  wheel(-120);
  ASSERT_TRUE(pumpUntil([&] { return box.scrollY == height; }));
  pressAt({3, box.viewRect.top});
  EXPECT_EQ(box.info.rowOf(box.info.caret), 1);
  wheel(120);
  EXPECT_TRUE(pumpUntil([&] { return box.scrollY == 0; }));
}

// --- What it shows

TEST_F(EditBoxView, TheFrameTellsTheState) {
  dialog.addButtons(1);
  open(u"");
  EXPECT_TRUE(showsFrame(0xFFC0A0));
  EXPECT_EQ(pixel(box.window, 100, 1), White);
  box.info.setFlag(WinEditBoxInfo::Marked, true);
  box.invalidate();
  EXPECT_TRUE(showsFrame(0x4040FF));
  box.info.setFlag(WinEditBoxInfo::InputMethodOpen, true);
  box.invalidate();
  EXPECT_TRUE(showsFrame(0x80FF80));
  box.info.setFlag(WinEditBoxInfo::InputMethodOpen, false);
  SetFocus(dialog.focusOf(0));
  EXPECT_TRUE(showsFrame(0x4040FF));
  box.info.setFlag(WinEditBoxInfo::Marked, false);
  box.invalidate();
  EXPECT_TRUE(showsFrame(White));
}

TEST_F(EditBoxView, TheCaretBlinksByATimerOfItsOwn) {
  Ticks ticks;
  box.addHook(ticks);
  open(u"");
  ASSERT_TRUE(pumpUntil([&] { return caretPixel() == 0; }));
  ASSERT_TRUE(pumpUntil([&] { return ticks.count == 1; }));
  EXPECT_EQ(caretPixel(), White);
  ASSERT_TRUE(pumpUntil([&] { return ticks.count == 2; }));
  EXPECT_EQ(caretPixel(), 0u);
  EXPECT_GE(ticks.times[1] - ticks.times[0], 500u); // a timer may come a little early
}

TEST_F(EditBoxView, ASteadyCaretStaysAsItIs) {
  Ticks ticks;
  box.addHook(ticks);
  open(u"", WinEditBoxInfo::SteadyCaret);
  ASSERT_TRUE(pumpUntil([&] { return caretPixel() == 0; }));
  ASSERT_TRUE(pumpUntil([&] { return ticks.count == 1; }));
  EXPECT_EQ(caretPixel(), 0u);
}

TEST_F(EditBoxView, WithoutTheFocusThereIsNoCaretAndNoTimer) {
  dialog.addButtons(1);
  Ticks ticks;
  box.addHook(ticks);
  open(u"");
  ASSERT_TRUE(pumpUntil([&] { return caretPixel() == 0; }));
  SetFocus(dialog.focusOf(0));
  ASSERT_TRUE(pumpUntil([&] { return caretPixel() == White; }));
  EXPECT_FALSE(KillTimer(box.window, 600)); // there is none to end
}

TEST_F(EditBoxView, TheSelectionIsHighlighted) {
  open(u"mmmm    mmmm", WinEditBoxInfo::SteadyCaret);
  box.setSelection(4, 8);
  const WinPoint inside{(at(4).x + at(8).x) / 2, at(4).y};
  EXPECT_TRUE(pumpUntil(
      [&] { return pixel(box.window, inside.x, inside.y) == GetSysColor(COLOR_HIGHLIGHT); }));
  box.setSelection(0, 0);
  EXPECT_TRUE(pumpUntil([&] { return pixel(box.window, inside.x, inside.y) == White; }));
}

TEST_F(EditBoxView, TextIsDrawnWhereItIsMeasured) {
  open(u"mmm\tmmm", WinEditBoxInfo::SteadyCaret);
  box.setSelection(0, 0);
  UpdateWindow(box.window);
  settle();
  const auto column = [&](int32_t from, int32_t to) {
    return WinRect{at(from).x, box.viewRect.top, at(to).x, box.viewRect.bottom};
  };
  WinRect head = column(0, 3);
  head.left += WinEditBoxDraw::CaretWidth;
  EXPECT_GT(darkPixels(head), 0);
  EXPECT_EQ(darkPixels(column(3, 4)), 0); // the tab
  EXPECT_GT(darkPixels(column(4, 7)), 0);
  EXPECT_EQ(darkPixels({at(7).x, box.viewRect.top, box.viewRect.right, box.viewRect.bottom}), 0);
}

TEST_F(EditBoxView, TheCaretIsScrolledIntoView) {
  open(LongText);
  key(VK_END);
  const WinRect caret = box.caretPlace();
  EXPECT_EQ(caret.right, box.viewRect.right);
  key(VK_HOME);
  EXPECT_EQ(box.scrollX, 0);
  control('A');
  key(VK_DELETE);
  EXPECT_EQ(box.scrollX, 0);
}

TEST_F(EditBoxView, AWithdrawnTextScrollsBack) {
  open(LongText);
  key(VK_END);
  EXPECT_GT(box.scrollX, 0);
  box.SetTitle("short"_text);
  EXPECT_EQ(box.scrollX, 0);
  EXPECT_EQ(place(), "5");
}

// --- Texts and sizes from outside

TEST_F(EditBoxView, TitlesAreTheText) {
  open(u"");
  box.SetTitle("caf\xC3\xA9"_text);
  EXPECT_EQ(text(), u"caf\u00E9");
  box.AppendTitle("!"_text);
  EXPECT_EQ(unitsOf(box.GetTitle()), u"caf\u00E9!");
  const uint32_t revision = box.titleRevision;
  box.ClearTitle();
  EXPECT_EQ(text(), u"");
  EXPECT_GT(box.titleRevision, revision);
  settle();
  EXPECT_EQ(told("1006"), 3);
}

TEST_F(EditBoxView, ASelectionIsCutBackToTheText) {
  open(u"abc");
  box.setSelection(-4, 400);
  EXPECT_EQ(place(), "0-3");
}

TEST_F(EditBoxView, ItIsAsHighAsItsLinesAndAsWideAsTheLongest) {
  WinEditBox empty;
  empty.FitToContent();
  WinEditBox single;
  single.SetTitle("mmmmmmmm"_text);
  single.FitToContent();
  EXPECT_EQ(single.clientHeight, empty.clientHeight);
  EXPECT_GT(single.clientWidth, empty.clientWidth + 20);
  EXPECT_EQ(single.windowWidth, single.clientWidth + 4);
  WinEditBox lines;
  lines.info.flags = Lines;
  lines.SetTitle("m\r\nmmmmmmmm\r\nm"_text);
  lines.FitToContent();
  EXPECT_EQ(lines.clientWidth, single.clientWidth);
  EXPECT_EQ(lines.clientHeight, 3 * (lines.info.lineHeight + lines.info.lineGap));
}

// --- Dropped files

namespace {

// A drop of the paths, as the platform hands it over.
HDROP dropOf(std::wstring paths) {
  const size_t bytes = sizeof(DROPFILES) + (paths.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GHND, bytes);
  auto* head = static_cast<DROPFILES*>(GlobalLock(memory));
  head->pFiles = sizeof(DROPFILES);
  head->fWide = TRUE;
  memcpy(head + 1, paths.data(), paths.size() * sizeof(wchar_t));
  GlobalUnlock(memory);
  return static_cast<HDROP>(memory);
}

} // namespace

TEST_F(EditBoxView, DroppedFilesReplaceTheText) {
  open(u"old");
  using namespace std::string_literals;
  PostMessageW(box.window, WM_DROPFILES,
               reinterpret_cast<WPARAM>(dropOf(L"C:\\My Files\\a.txt\0D:\\b\0"s)), 0);
  ASSERT_TRUE(pumpUntil([&] { return told("1007") == 1; }));
  EXPECT_EQ(text(), u"C:\\My Files\\a.txt D:\\b");
  EXPECT_EQ(told("1006"), 1);
  control('Z');
  EXPECT_EQ(text(), u"old");
}

TEST_F(EditBoxView, AReadOnlyBoxTakesNoFiles) {
  open(u"old", WinEditBoxInfo::ReadOnly);
  using namespace std::string_literals;
  SendMessageW(box.window, WM_DROPFILES, reinterpret_cast<WPARAM>(dropOf(L"C:\\a\0"s)), 0);
  settle();
  EXPECT_EQ(text(), u"old");
  EXPECT_EQ(told("1007"), 0);
}
