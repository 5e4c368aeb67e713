// The buttons of a window that has no frame, by the pointer and to the pixel.
#include "window/EdgeDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr int32_t Left = EdgeDialog::Left;
constexpr int32_t Top = EdgeDialog::Top;
constexpr int32_t Width = EdgeDialog::Width;
constexpr int32_t Height = EdgeDialog::Height;
constexpr int32_t ButtonWidth = EdgeDialog::ButtonWidth;
constexpr int32_t ButtonHeight = EdgeDialog::ButtonHeight;
constexpr uint16_t AllButtons = EdgeDialog::AllButtons;

class WinEdgeButtonWindow : public Fixture {};
class WinEdgePaint : public Fixture {};

} // namespace

// --- Buttons

TEST_F(WinEdgeButtonWindow, CloseIsPostedByAPressAndAReleaseOnIt) {
  EdgeDialog dialog(EdgeMove | EdgePaint | EdgeCloseButton);
  dialog.open();
  dialog.pointAt(Width - 20, 8);
  EXPECT_TRUE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgePointerOnButton));
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  EXPECT_TRUE(dialog.edgeButton(WinEdgeButtons::Close).pressed);
  EXPECT_EQ(GetCapture(), dialog.window);
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgeDragging));
  EXPECT_TRUE(dialog.commands.empty());
  mouseButton(MOUSEEVENTF_LEFTUP);
  ASSERT_TRUE(pumpUntil([&] { return !dialog.commands.empty(); }));
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).pressed);
  EXPECT_NE(GetCapture(), dialog.window);
  ASSERT_EQ(dialog.commands.size(), 1u);
  EXPECT_EQ(dialog.commands[0].command, static_cast<WPARAM>(SC_CLOSE));
  EXPECT_EQ(dialog.commands[0].point, (WinPoint{Left + Width - 20, Top + 8}));
}

TEST_F(WinEdgeButtonWindow, AReleaseOutsideDoesNothing) {
  EdgeDialog dialog(EdgeMove | EdgePaint | EdgeCloseButton);
  dialog.open();
  const WinRect place = dialog.windowRect();
  dialog.drag({Width - 20, 8}, {-100, 40}); // onto the dialog
  EXPECT_TRUE(dialog.commands.empty());
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).pressed);
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  EXPECT_EQ(dialog.windowRect(), place);
  dialog.drag({Width - 20, 8}, {300, 300}); // beyond it
  EXPECT_TRUE(dialog.commands.empty());
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).pressed);
}

TEST_F(WinEdgeButtonWindow, AReleaseCountsWhenThePointerCameBack) {
  EdgeDialog dialog(EdgePaint | EdgeCloseButton);
  dialog.open();
  dialog.pointAt(Width - 20, 8);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  dialog.pointAt(50, 50);
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  EXPECT_TRUE(dialog.edgeButton(WinEdgeButtons::Close).pressed);
  dialog.pointAt(Width - 10, 4);
  mouseButton(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(pumpUntil([&] { return dialog.commands.size() == 1; }));
}

TEST_F(WinEdgeButtonWindow, EachPostsItsCommand) {
  EdgeDialog dialog(EdgePaint | AllButtons);
  dialog.open();
  const WPARAM expected[] = {SC_CLOSE, SC_MAXIMIZE, SC_MINIMIZE};
  for (int32_t i = 0; i < 3; ++i) {
    dialog.pointAt(Width - 20 - i * ButtonWidth, 8);
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    mouseButton(MOUSEEVENTF_LEFTUP);
    ASSERT_TRUE(pumpUntil([&] { return dialog.commands.size() == static_cast<size_t>(i) + 1; }));
    EXPECT_EQ(dialog.commands.back().command, expected[i]);
  }
}

TEST_F(WinEdgeButtonWindow, LeavingTheWindowEndsTheHover) {
  EdgeDialog dialog(EdgePaint | EdgeCloseButton);
  dialog.open();
  dialog.pointAt(Width - 20, 8);
  ASSERT_TRUE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  movePointer(Left + Width + 100, Top + Height + 100);
  EXPECT_TRUE(pumpUntil([&] { return !dialog.edgeButton(WinEdgeButtons::Close).hover; }));
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgePointerOnButton));
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgeTracksLeave));
  EXPECT_TRUE(pumpUntil(
      [&] { return pixel(dialog.window, Width - 20, 2) == WinViewStyle::dialogColour(); }));
}

TEST_F(WinEdgeButtonWindow, OnAnEdgeThePointerIsOnNoButton) {
  EdgeDialog dialog(EdgeResize | EdgePaint | EdgeCloseButton);
  dialog.open();
  dialog.pointAt(Width - 20, 8);
  ASSERT_TRUE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  dialog.pointAt(Width - 20, 2); // in its rectangle, and on the top edge
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgePointerOnButton));
  dialog.drag({Width - 20, 2}, {0, 20}); // resizes
  EXPECT_TRUE(dialog.commands.empty());
  EXPECT_EQ(dialog.windowRect().top, Top + 20);
}

TEST_F(WinEdgeButtonWindow, ADragOverThemHoversNothing) {
  EdgeDialog dialog(EdgeMove | EdgePaint | EdgeCloseButton);
  dialog.open();
  dialog.pointAt(100, 60);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  SendMessageW(dialog.window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(Width - 20, 8));
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

// --- Painting

TEST_F(WinEdgePaint, GroundFrameAndButtonsHaveTheirColours) {
  EdgeDialog dialog(EdgePaint | EdgeCloseButton);
  dialog.open();
  UpdateWindow(dialog.window);
  EXPECT_EQ(pixel(dialog.window, 100, 60), WinViewStyle::dialogColour());
  for (const WinPoint at : {WinPoint{0, 0}, WinPoint{Width - 1, 0}, WinPoint{0, Height - 1},
                            WinPoint{Width - 1, Height - 1}, WinPoint{0, 60}, WinPoint{60, 0}})
    EXPECT_EQ(pixel(dialog.window, at.x, at.y), 0xC0C0C0u) << at.x << "," << at.y;
  EXPECT_EQ(pixel(dialog.window, Width - ButtonWidth, 8), 0xE0E0E0u);
  EXPECT_EQ(pixel(dialog.window, Width - 20, ButtonHeight - 1), 0xE0E0E0u);
  EXPECT_EQ(pixel(dialog.window, Width - ButtonWidth - 1, 8), WinViewStyle::dialogColour());
  EXPECT_EQ(pixel(dialog.window, Width - 20, ButtonHeight), WinViewStyle::dialogColour());
  EXPECT_EQ(pixel(dialog.window, Width - ButtonWidth + 2, 3), WinViewStyle::dialogColour());
}

TEST_F(WinEdgePaint, HoverAndPressColourTheButton) {
  EdgeDialog dialog(EdgePaint | AllButtons);
  dialog.open();
  const int32_t inClose = Width - ButtonWidth + 3;
  const auto shows = [&](int32_t x, COLORREF colour) {
    return pumpUntil([&] { return pixel(dialog.window, x, 3) == colour; });
  };
  dialog.pointAt(Width - 20, 8);
  EXPECT_TRUE(shows(inClose, 0x0000FF));
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  EXPECT_TRUE(shows(inClose, 0x7F7FFF));
  dialog.pointAt(50, 60);
  EXPECT_TRUE(shows(inClose, WinViewStyle::dialogColour()));
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  dialog.pointAt(Width - 20 - ButtonWidth, 8);
  EXPECT_TRUE(shows(inClose - ButtonWidth, 0xC0C0C0));
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  EXPECT_TRUE(shows(inClose - ButtonWidth, 0xDFDFDF));
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

TEST_F(WinEdgePaint, GlyphsAreDrawnToThePixel) {
  EdgeDialog dialog(EdgePaint | AllButtons);
  dialog.open();
  UpdateWindow(dialog.window);
  const auto glyphOf = [&](WinEdgeButtons::Kind kind) {
    return dialog.picker.edgeButtons.glyphRect(dialog.edgeButton(kind));
  };
  const auto at = [&](int32_t x, int32_t y) { return pixel(dialog.window, x, y); };
  constexpr COLORREF Ink = 0x404040;
  const COLORREF ground = WinViewStyle::dialogColour();

  const WinRect close = glyphOf(WinEdgeButtons::Close).shrunkBy(9 / 5);
  ASSERT_EQ(close.width(), 7);
  for (int32_t i = 0; i < 6; ++i) {
    EXPECT_EQ(at(close.left + i, close.top + i), Ink) << i;
    EXPECT_EQ(at(close.left + i + 1, close.top + i), Ink) << i;
    EXPECT_EQ(at(close.right - 1 - i, close.top + i), Ink) << i;
    EXPECT_EQ(at(close.right - 2 - i, close.top + i), Ink) << i;
  }
  EXPECT_EQ(at(close.left - 1, close.top), ground);
  EXPECT_EQ(at(close.right, close.top), ground);
  EXPECT_EQ(at(close.left, close.top + 3), ground);
  EXPECT_EQ(at(close.left + 3, close.top), ground);

  const WinRect box = glyphOf(WinEdgeButtons::Maximize);
  EXPECT_EQ(at(box.left + 1, box.top + 1), Ink);
  EXPECT_EQ(at(box.right - 2, box.top + 1), Ink);
  EXPECT_EQ(at(box.right - 2, box.bottom - 1), Ink);
  EXPECT_EQ(at(box.left + 2, box.top + 2), ground);
  EXPECT_EQ(at(box.left, box.top + 1), ground);

  const WinRect bar = glyphOf(WinEdgeButtons::Minimize);
  EXPECT_EQ(at(bar.left + 1, bar.top + 6), Ink);
  EXPECT_EQ(at(bar.right - 2, bar.bottom - 1), Ink);
  EXPECT_EQ(at(bar.left, bar.top + 6), ground);
  EXPECT_EQ(at(bar.left + 1, bar.top + 5), ground);
}

TEST_F(WinEdgePaint, AMaximisedWindowOffersToBeRestored) {
  EdgeDialog dialog(EdgePaint | AllButtons, WS_MAXIMIZEBOX);
  dialog.greatest = {5000, 5000};
  dialog.open();
  ShowWindow(dialog.window, SW_MAXIMIZE);
  ASSERT_TRUE(pumpUntil([&] {
    return dialog.edgeButton(WinEdgeButtons::Maximize).command == static_cast<uint32_t>(SC_RESTORE);
  }));
  UpdateWindow(dialog.window);
  settle();
  const WinRect glyph =
      dialog.picker.edgeButtons.glyphRect(dialog.edgeButton(WinEdgeButtons::Maximize));
  EXPECT_EQ(dialog.edgeButton(WinEdgeButtons::Close).rect.right, dialog.clientRect().right);
  EXPECT_EQ(pixel(dialog.window, glyph.left + 3, glyph.top + 1), 0x404040u);
  EXPECT_EQ(pixel(dialog.window, glyph.left + 1, glyph.top + 3), 0x404040u);
  EXPECT_EQ(pixel(dialog.window, glyph.right - 2, glyph.bottom - 4), 0x404040u);
  EXPECT_EQ(pixel(dialog.window, glyph.left + 3, glyph.top + 4), WinViewStyle::dialogColour());
  ShowWindow(dialog.window, SW_RESTORE);
  EXPECT_TRUE(pumpUntil([&] {
    return dialog.edgeButton(WinEdgeButtons::Maximize).command ==
           static_cast<uint32_t>(SC_MAXIMIZE);
  }));
}

TEST_F(WinEdgePaint, WithoutTheFlagTheViewPaintsItself) {
  EdgeDialog dialog(EdgeMove | EdgeCloseButton);
  dialog.open();
  UpdateWindow(dialog.window);
  EXPECT_EQ(pixel(dialog.window, 0, 60), WinViewStyle::dialogColour());
  EXPECT_EQ(pixel(dialog.window, Width - ButtonWidth, 8), WinViewStyle::dialogColour());
}

TEST_F(WinEdgePaint, ChildrenAreNotPaintedOver) {
  EdgeDialog dialog(EdgePaint);
  dialog.addButtons(1);
  dialog.open();
  const HWND child = dialog.button(0).window;
  UpdateWindow(child);
  {
    const WinWindowDc dc(child);
    fillRect(dc.get(), {0, 0, 60, 30}, 0x123456);
  }
  RedrawWindow(dialog.window, nullptr, nullptr, RDW_INVALIDATE | RDW_NOCHILDREN);
  UpdateWindow(dialog.window);
  EXPECT_EQ(pixel(child, 30, 15), 0x123456u);
}

TEST_F(WinEdgePaint, LeavesNoDrawingObjectsBehind) {
  EdgeDialog dialog(EdgePaint | AllButtons);
  dialog.open();
  const auto paint = [&] {
    dialog.invalidate();
    UpdateWindow(dialog.window);
  };
  paint();
  const uint32_t before = drawingObjects();
  ASSERT_GT(before, 0u);
  for (int i = 0; i < 200; ++i) paint();
  EXPECT_EQ(drawingObjects(), before);
}
