// Moving and resizing a window that has no frame.
#include "window/EdgeDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr int32_t Left = EdgeDialog::Left;
constexpr int32_t Top = EdgeDialog::Top;
constexpr int32_t Width = EdgeDialog::Width;
constexpr int32_t Height = EdgeDialog::Height;

// A child with a picker of its own over the same dialog.
class EdgeChild : public WinView {
 public:
  TestPicker picker{*this, EdgeMove | EdgeSystemMenu};
  EdgeChild() {
    className = "BUTTON"_text;
    style = WS_CHILD | WS_VISIBLE | BS_OWNERDRAW;
    rect = {20, 30, 120, 90};
    addHook(picker);
  }
};

class WinEdgeMove : public Fixture {};
class WinEdgeResizing : public Fixture {};

} // namespace

// --- Moving

TEST_F(WinEdgeMove, ADragMovesTheWindowWithThePointer) {
  EdgeDialog dialog(EdgeMove);
  dialog.open();
  dialog.drag({50, 40}, {37, -21});
  EXPECT_EQ(dialog.windowRect(),
            (WinRect{Left + 37, Top - 21, Left + 37 + Width, Top - 21 + Height}));
  EXPECT_EQ(dialog.picker.askedPoint, (WinPoint{50, 40}));
  EXPECT_EQ(dialog.picker.askedClient, (WinRect{0, 0, Width, Height}));
}

// The steps are sent: a window manager tells late of places where the window has been.
TEST_F(WinEdgeMove, ManyStepsAddUpBecauseTheStartPointStays) {
  EdgeDialog dialog(EdgeMove);
  dialog.open();
  dialog.pointAt(50, 40);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  ASSERT_TRUE(pumpUntil([&] { return dialog.picker.hasEdgeFlag(EdgeDragging); }));
  EXPECT_EQ(GetCapture(), dialog.window);
  const WinRect start = dialog.windowRect();
  for (int32_t step = 1; step <= 10; ++step) {
    dialog.send(WM_MOUSEMOVE, {50 + 7, 40 - 2}); // the client goes along
    EXPECT_EQ(dialog.windowRect(), start.movedBy(step * 7, step * -2));
  }
  dialog.send(WM_LBUTTONUP, {50, 40});
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgeDragging));
  EXPECT_NE(GetCapture(), dialog.window);
  dialog.send(WM_MOUSEMOVE, {90, 90});
  EXPECT_EQ(dialog.windowRect(), start.movedBy(70, -20));
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

TEST_F(WinEdgeMove, NothingMovesWithoutTheFlagOrWhereItIsNotAllowed) {
  EdgeDialog still(EdgeSystemMenu);
  still.open();
  still.drag({50, 40}, {30, 30});
  EXPECT_EQ(still.windowRect().left, Left);
  DestroyWindow(still.window); // leaves its place to the next

  EdgeDialog refusing(EdgeMove);
  refusing.picker.mayMove = false;
  refusing.open();
  refusing.drag({50, 40}, {30, 30});
  EXPECT_EQ(refusing.windowRect().left, Left);
  EXPECT_EQ(refusing.picker.askedPoint, (WinPoint{50, 40}));
}

TEST_F(WinEdgeMove, ALostCaptureEndsTheDrag) {
  EdgeDialog dialog(EdgeMove);
  dialog.addButtons(1);
  dialog.open();
  dialog.pointAt(50, 80);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  ASSERT_TRUE(dialog.picker.hasEdgeFlag(EdgeDragging));
  SetCapture(dialog.button(0).window);
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgeDragging));
  ReleaseCapture();
  dialog.pointAt(90, 90);
  EXPECT_EQ(dialog.windowRect().left, Left);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

TEST_F(WinEdgeMove, AHookOverAChildMovesTheDialog) {
  TestDialog dialog;
  EdgeChild child;
  dialog.style = WS_POPUP | WS_SYSMENU;
  dialog.fitToClient(TestDialog::ClientSize);
  dialog.rect = dialog.rect.movedTo(Left, Top);
  dialog.Create();
  dialog.addChild(child);
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog.window); }));
  const WinRect inner = child.windowRect();
  movePointer(Left + 60, Top + 50);
  settle();
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  movePointer(Left + 75, Top + 70);
  settle();
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_EQ(dialog.windowRect().left, Left + 15);
  EXPECT_EQ(dialog.windowRect().top, Top + 20);
  EXPECT_EQ(child.windowRect(), inner.movedBy(15, 20));
  EXPECT_EQ(child.picker.askedPoint, (WinPoint{40, 20})); // in the child
  EXPECT_EQ(child.picker.askedClient, (WinRect{0, 0, 100, 60}));
}

// --- Edges

TEST_F(WinEdgeResizing, EachEdgeHasItsPointer) {
  EdgeDialog dialog(EdgeResize);
  dialog.open();
  const struct {
    WinPoint at;
    LPCWSTR shape;
    uint32_t edges;
  } places[] = {
      {{1, 50}, IDC_SIZEWE, 1},          {{Width - 2, 50}, IDC_SIZEWE, 4},
      {{100, 1}, IDC_SIZENS, 2},         {{100, Height - 2}, IDC_SIZENS, 8},
      {{1, 1}, IDC_SIZENWSE, 3},         {{Width - 2, Height - 2}, IDC_SIZENWSE, 12},
      {{Width - 2, 1}, IDC_SIZENESW, 6}, {{1, Height - 2}, IDC_SIZENESW, 9},
  };
  for (const auto& each : places) {
    dialog.pointAt(each.at.x, each.at.y);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, each.shape)) << each.edges;
    EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
    EXPECT_EQ(dialog.picker.askedEdges, each.edges);
    dialog.pointAt(100, 60);
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_ARROW));
    EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
  }
}

TEST_F(WinEdgeResizing, AnEdgeIsThreePixelsWideAndOneAtItsBorder) {
  EdgeDialog dialog(EdgeResize);
  dialog.open();
  dialog.pointAt(3, 60);
  EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
  dialog.pointAt(4, 60);
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
  dialog.pointAt(Width - 3, 60);
  EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
  dialog.pointAt(Width - 4, 60);
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
}

TEST_F(WinEdgeResizing, AViewThatOnlyMovesKeepsItsPointerNearTheEdges) {
  EdgeDialog dialog(EdgeMove);
  dialog.open();
  const HCURSOR own = LoadCursorW(nullptr, IDC_CROSS);
  const auto inner = dialog.answer;
  dialog.answer = [own, inner](UINT message, WPARAM wParam, LPARAM lParam) -> int32_t {
    if (message != WM_SETCURSOR) return inner(message, wParam, lParam);
    SetCursor(own);
    return TRUE;
  };
  for (const WinPoint at : {WinPoint{1, 60}, WinPoint{1, 1}, WinPoint{Width - 2, Height - 2}}) {
    dialog.pointAt(at.x, at.y);
    EXPECT_EQ(GetCursor(), own);
    EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgePointerOnEdge));
  }
  dialog.drag({1, 60}, {-20, 0}); // and an edge moves like any other place
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left - 20, Top, Left - 20 + Width, Top + Height}));
}

TEST_F(WinEdgeResizing, EveryEdgeAndCornerIsDragged) {
  const struct {
    WinPoint from;
    WinRect change;
  } drags[] = {
      {{1, 50}, {20, 0, 0, 0}},          {{100, 1}, {0, 10, 0, 0}},
      {{Width - 2, 50}, {0, 0, 20, 0}},  {{100, Height - 2}, {0, 0, 0, 10}},
      {{1, 1}, {20, 10, 0, 0}},          {{Width - 2, 1}, {0, 10, 20, 0}},
      {{1, Height - 2}, {20, 0, 0, 10}}, {{Width - 2, Height - 2}, {0, 0, 20, 10}},
  };
  for (const auto& each : drags) {
    EdgeDialog dialog(EdgeResize);
    dialog.open();
    dialog.drag(each.from, {20, 10});
    EXPECT_EQ(dialog.windowRect(),
              (WinRect{Left + each.change.left, Top + each.change.top,
                       Left + Width + each.change.right, Top + Height + each.change.bottom}))
        << each.from.x << "," << each.from.y;
    DestroyWindow(dialog.window);
    settle();
  }
}

// The steps are sent: a window manager answers late when a window moves and changes its size at
// once, and steps that come meanwhile would start from an older rectangle.
TEST_F(WinEdgeResizing, StepsOfALeftEdgeCountFromWhereItIs) {
  EdgeDialog dialog(EdgeResize);
  dialog.open();
  dialog.startResize(1, 50);
  for (int32_t step = 1; step <= 6; ++step) {
    dialog.send(WM_MOUSEMOVE, {1 + 5, 50}); // the client goes along
    EXPECT_EQ(dialog.windowRect(), (WinRect{Left + step * 5, Top, Left + Width, Top + Height}));
  }
  dialog.send(WM_LBUTTONUP, {1 - 3, 50}); // the last step of the drag
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left + 27, Top, Left + Width, Top + Height}));
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

TEST_F(WinEdgeResizing, StepsOfARightEdgeCountFromTheSizeAtTheStart) {
  EdgeDialog dialog(EdgeResize);
  dialog.open();
  dialog.startResize(Width - 1, 50);
  for (int32_t step = 1; step <= 6; ++step) {
    dialog.send(WM_MOUSEMOVE, {Width - 1 + step * 5, 50}); // the client stays
    EXPECT_EQ(dialog.windowRect(), (WinRect{Left, Top, Left + Width + step * 5, Top + Height}));
  }
  dialog.send(WM_LBUTTONUP, {Width - 1 + 30, 50});
  EXPECT_EQ(dialog.windowRect().right, Left + Width + 30);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

TEST_F(WinEdgeResizing, TheWindowSaysItsLimitsOnce) {
  EdgeDialog dialog(EdgeResize);
  dialog.open();
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgeKnowsLimits));
  dialog.drag({Width - 2, Height - 2}, {-290, -110});
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left, Top, Left + 150, Top + 60}));
  EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgeKnowsLimits));

  dialog.least = {10, 10}; // not asked for again
  dialog.drag({1, 1}, {60, 30});
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left, Top, Left + 150, Top + 60}));
  dialog.drag({150 - 2, 60 - 2}, {600, 500});
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left, Top, Left + 400, Top + 200}));
}

TEST_F(WinEdgeResizing, AnEdgeThatRefusesIsNoEdge) {
  EdgeDialog dialog(EdgeResize);
  dialog.picker.mayResize = false;
  dialog.open();
  dialog.drag({1, 50}, {20, 0});
  EXPECT_EQ(dialog.picker.askedEdges, 1u);
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left, Top, Left + Width, Top + Height}));
}
