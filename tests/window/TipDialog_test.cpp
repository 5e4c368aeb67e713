// The window of a tip, on its own thread.
#include "win/WinTipDialog.h"
#include "window/Faces.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

const int32_t BelowPointer = GetSystemMetrics(SM_CYCURSOR) * 2 / 3;

struct TipDialog : Fixture {
  WinTipDialog tip;
  WinSize frame() {
    const WinRect outer = tip.windowRect();
    const WinRect inner = tip.clientRect();
    return {outer.width() - inner.width(), outer.height() - inner.height()};
  }
};

WinSize extentOf(const RawString& text) {
  WinView view;
  view.font = &WinFont::tip();
  view.SetTitle(text);
  view.FitToContent();
  return {view.clientWidth, view.clientHeight};
}

} // namespace

TEST_F(TipDialog, StandsBelowThePointerAroundItsText) {
  movePointer(200, 150);
  tip.ShowTip("What the button does"_text);
  ASSERT_TRUE(tip.isShown());
  const WinSize text = extentOf("What the button does"_text);
  const WinRect place = tip.windowRect();
  EXPECT_EQ(place.left, 200);
  EXPECT_EQ(place.top, 150 + BelowPointer);
  EXPECT_EQ(tip.clientRect().width(), text.width + 6);
  EXPECT_EQ(tip.clientRect().height(), text.height + 2);
  EXPECT_EQ(frame(), (WinSize{2, 2})); // a border of one pixel
}

TEST_F(TipDialog, RunsOnAThreadOfItsOwnAndTakesNoFocus) {
  TestDialog main;
  main.addButtons(1);
  main.Create();
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(main.window); }));
  tip.ShowTip("Tip"_text);
  EXPECT_NE(GetWindowThreadProcessId(tip.window, nullptr), GetCurrentThreadId());
  settle();
  EXPECT_TRUE(IsWindowVisible(tip.window));
  EXPECT_EQ(GetForegroundWindow(), main.window);
  EXPECT_EQ(GetFocus(), main.focusOf(0));
  constexpr LONG wanted = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE;
  EXPECT_EQ(GetWindowLongW(tip.window, GWL_EXSTYLE) & wanted, wanted);
  EXPECT_EQ(windowsOfClass(L"Class_TipDialog").size(), 1U);
}

TEST_F(TipDialog, ItsColours) {
  movePointer(200, 150);
  tip.ShowTip("MMMMMM"_text);
  const HWND text = GetWindow(tip.window, GW_CHILD);
  EXPECT_TRUE(pumpUntil([&] { return pixelsOf(text, 0x404040) > 10; }));
  EXPECT_EQ(pixel(text, 0, 0), COLORREF{0xFAFFF5});
  const DWORD style = static_cast<DWORD>(GetWindowLongW(text, GWL_STYLE));
  EXPECT_TRUE(style & SS_CENTERIMAGE);
  EXPECT_TRUE(style & SS_EDITCONTROL);
  EXPECT_EQ(tip.result, 0);
}

TEST_F(TipDialog, AnotherTextMovesAndResizesTheSameWindow) {
  movePointer(200, 150);
  tip.ShowTip("Short"_text);
  const HWND window = tip.window;
  movePointer(300, 400);
  tip.ShowTip("A text that is a good deal longer"_text);
  EXPECT_EQ(tip.window, window);
  const WinSize text = extentOf("A text that is a good deal longer"_text);
  EXPECT_EQ(tip.windowRect().left, 300);
  EXPECT_EQ(tip.windowRect().top, 400 + BelowPointer);
  EXPECT_TRUE(pumpUntil([&] { return tip.clientRect().width() == text.width + 6; }));
  RECT child{};
  EXPECT_TRUE(pumpUntil([&] { // it follows the client
    GetClientRect(GetWindow(window, GW_CHILD), &child);
    return child.right == tip.clientRect().right && child.bottom == tip.clientRect().bottom;
  }));
}

TEST_F(TipDialog, NearTheLowerEdgeItIsNotMovedBack) {
  const int32_t right = GetSystemMetrics(SM_CXSCREEN) - 1;
  const int32_t bottom = GetSystemMetrics(SM_CYSCREEN) - 1;
  movePointer(right, bottom);
  tip.ShowTip("Out of sight"_text);
  EXPECT_EQ(tip.windowRect().left, right);
  EXPECT_EQ(tip.windowRect().top, bottom + BelowPointer);
}

TEST_F(TipDialog, HiddenItLeavesNeitherWindowNorThread) {
  tip.ShowTip("Tip"_text);
  const HWND window = tip.window;
  tip.HideTip();
  EXPECT_FALSE(tip.isShown());
  EXPECT_FALSE(IsWindow(window));
  EXPECT_FALSE(tip.isRunning());
  tip.HideTip(); // nothing more
}

TEST_F(TipDialog, ComesAgainAfterItWasHidden) {
  for (int i = 0; i < 3; ++i) {
    movePointer(100 + i, 100);
    tip.ShowTip("Tip"_text);
    ASSERT_TRUE(tip.isShown());
    EXPECT_EQ(tip.windowRect().left, 100 + i);
    EXPECT_EQ(tip.clientRect().width(), extentOf("Tip"_text).width + 6);
    tip.HideTip();
  }
}

TEST_F(TipDialog, ShowsLinesOneBelowTheOther) {
  tip.ShowTip("One\r\nTwo"_text);
  EXPECT_EQ(tip.clientRect().height(), 2 * extentOf("One"_text).height + 2);
}

TEST_F(TipDialog, ATextSetWhileItPaintsIsWhole) {
  for (int i = 0; i < 50; ++i) tip.ShowTip(i % 2 ? "One text"_text : "Quite another text"_text);
  EXPECT_TRUE(tip.text.GetTitle().equals("One text"_text));
}
