// The hook that stands in for a window's frame: moving, resizing, the system menu, its own buttons.
#include "win/WinEdgePicker.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr int32_t Left = 100; // of the dialog, on the screen; it has no frame
constexpr int32_t Top = 100;
constexpr int32_t Width = TestDialog::ClientSize.width;
constexpr int32_t Height = TestDialog::ClientSize.height;
constexpr int32_t ButtonWidth = 40;
constexpr int32_t ButtonHeight = 16;
constexpr uint16_t AllButtons = EdgeCloseButton | EdgeMaximizeButton | EdgeMinimizeButton;
constexpr WPARAM CommandMask = 0xFFF0; // the system uses the lower bits itself

class TestPicker : public WinEdgePicker {
 public:
  using WinEdgePicker::WinEdgePicker;
  bool mayMove = true;
  bool mayResize = true;
  bool mayOpenMenu = true;
  WinRect askedClient;
  WinPoint askedPoint;
  uint32_t askedEdges = 0;

  bool CanMoveAt(const WinRect& client, WinPoint point) override {
    askedClient = client;
    askedPoint = point;
    return mayMove;
  }
  bool CanResizeAt(const WinRect& client, WinPoint, uint32_t edges) override {
    askedClient = client;
    askedEdges = edges;
    return mayResize;
  }
  bool CanOpenSystemMenuAt(const WinRect&, WinPoint point) override {
    askedPoint = point;
    return mayOpenMenu;
  }
};

struct SystemCommand {
  WPARAM command = 0;
  WinPoint point; // on the screen
};

// A dialog without a frame, with a picker over it, that writes system commands down.
class EdgeDialog : public TestDialog {
 public:
  TestPicker picker;
  std::vector<SystemCommand> commands;
  WinSize least{150, 60};
  WinSize greatest{400, 200};

  explicit EdgeDialog(uint16_t flags, DWORD extraStyle = 0) : picker(*this, flags) {
    style = WS_POPUP | WS_SYSMENU | extraStyle;
    fitToClient(ClientSize);
    rect = rect.movedTo(Left, Top);
    picker.edgeButtons.buttonWidth = ButtonWidth;
    picker.edgeButtons.buttonHeight = ButtonHeight;
    picker.edgeButtons.glyphWidth = picker.edgeButtons.glyphHeight = 9;
    addHook(picker);
    answer = [this](UINT message, WPARAM wParam, LPARAM lParam) {
      return answerMessage(message, wParam, lParam);
    };
  }
  // Stands in front with the pointer on it, so that the hook hears of every step.
  void open() {
    Create();
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(window); }));
    pointAt(Width / 2, Height / 2);
    ASSERT_TRUE(pumpUntil([this] { return picker.hasEdgeFlag(EdgeTracksLeave); }));
    settle();
  }
  void pointAt(int32_t x, int32_t y) {
    const WinRect place = windowRect();
    movePointer(place.left + x, place.top + y);
    settle();
  }
  void drag(WinPoint from, WinPoint by) {
    pointAt(from.x, from.y);
    const WinRect place = windowRect();
    mouseButton(MOUSEEVENTF_LEFTDOWN);
    settle();
    movePointer(place.left + from.x + by.x, place.top + from.y + by.y);
    settle();
    mouseButton(MOUSEEVENTF_LEFTUP);
    settle();
  }
  WinEdgeButton& edgeButton(WinEdgeButtons::Kind kind) { return picker.edgeButtons.buttons[kind]; }

 private:
  int32_t answerMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SYSCOMMAND) {
      commands.push_back(
          {wParam & CommandMask,
           {static_cast<int16_t>(LOWORD(lParam)), static_cast<int16_t>(HIWORD(lParam))}});
      return 0;
    }
    if (message == WM_GETMINMAXINFO) {
      auto& asked = *reinterpret_cast<MINMAXINFO*>(lParam);
      asked.ptMinTrackSize = {least.width, least.height};
      asked.ptMaxTrackSize = {greatest.width, greatest.height};
      return 0;
    }
    return WinNotHandled;
  }
};

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

HWND openMenu() {
  const HWND menu = FindWindowW(L"#32768", nullptr);
  return menu && IsWindowVisible(menu) ? menu : nullptr;
}

bool isDisabled(HWND window, UINT command) {
  const UINT state = GetMenuState(GetSystemMenu(window, FALSE), command, MF_BYCOMMAND);
  return state != static_cast<UINT>(-1) && (state & (MF_DISABLED | MF_GRAYED)) != 0;
}

// A right click where the pointer stands; `whileOpen` runs with the menu on the screen, which then
// closes without a choice.
void rightClick(const Action& whileOpen) {
  bool isClosed = false;
  Steps steps;
  steps
      .when([] { return openMenu() != nullptr; },
            [&whileOpen] {
              whileOpen();
              pressKey(VK_ESCAPE);
            })
      .when([] { return openMenu() == nullptr; }, [&isClosed] { isClosed = true; });
  mouseButton(MOUSEEVENTF_RIGHTDOWN);
  mouseButton(MOUSEEVENTF_RIGHTUP);
  EXPECT_TRUE(pumpUntil([&isClosed] { return isClosed; }));
  settle();
}

// A right click that opens nothing.
void idleRightClick() {
  mouseButton(MOUSEEVENTF_RIGHTDOWN);
  mouseButton(MOUSEEVENTF_RIGHTUP);
  settle();
  EXPECT_EQ(openMenu(), nullptr);
}

class WinEdgeMove : public Fixture {};
class WinEdgeResizing : public Fixture {};
class WinEdgeButtonWindow : public Fixture {};
class WinEdgePaint : public Fixture {};
class WinEdgeMenu : public Fixture {};

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

TEST_F(WinEdgeMove, ManyStepsAddUpBecauseTheStartPointStays) {
  EdgeDialog dialog(EdgeMove);
  dialog.open();
  dialog.pointAt(50, 40);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  EXPECT_TRUE(dialog.picker.hasEdgeFlag(EdgeDragging));
  EXPECT_EQ(GetCapture(), dialog.window);
  for (int32_t step = 1; step <= 10; ++step) {
    movePointer(Left + 50 + step * 7, Top + 40 + step * 5);
    ASSERT_TRUE(pumpUntil([&] { return dialog.windowRect().left == Left + step * 7; }));
    EXPECT_EQ(dialog.windowRect().top, Top + step * 5);
  }
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_FALSE(dialog.picker.hasEdgeFlag(EdgeDragging));
  EXPECT_NE(GetCapture(), dialog.window);
  movePointer(Left + 300, Top + 300);
  settle();
  EXPECT_EQ(dialog.windowRect().left, Left + 70);
}

TEST_F(WinEdgeMove, NothingMovesWithoutTheFlagOrWhereItIsNotAllowed) {
  EdgeDialog still(EdgeSystemMenu);
  still.open();
  still.drag({50, 40}, {30, 30});
  EXPECT_EQ(still.windowRect().left, Left);
  still.Create(); // leaves its place to the next
  DestroyWindow(still.window);

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

TEST_F(WinEdgeResizing, ManyStepsFollowThePointer) {
  EdgeDialog dialog(EdgeResize);
  dialog.open();
  dialog.pointAt(1, 50);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  for (int32_t step = 1; step <= 6; ++step) {
    movePointer(Left + 1 + step * 5, Top + 50);
    ASSERT_TRUE(pumpUntil([&] { return dialog.windowRect().left == Left + step * 5; }));
  }
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_EQ(dialog.windowRect(), (WinRect{Left + 30, Top, Left + Width, Top + Height}));

  dialog.pointAt(dialog.windowRect().width() - 1, 50);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  for (int32_t step = 1; step <= 6; ++step) {
    movePointer(Left + Width - 1 + step * 5, Top + 50);
    ASSERT_TRUE(pumpUntil([&] { return dialog.windowRect().right == Left + Width + step * 5; }));
  }
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
  dialog.drag({Width - 20, 8}, {-100, 40}); // onto the dialog
  EXPECT_TRUE(dialog.commands.empty());
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).pressed);
  EXPECT_FALSE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  EXPECT_EQ(dialog.windowRect().left, Left);
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

// --- The system menu

TEST_F(WinEdgeMenu, EntriesThatTheWindowCannotDoAreDisabled) {
  EdgeDialog dialog(EdgeSystemMenu);
  dialog.open();
  rightClick([&] {
    EXPECT_TRUE(isDisabled(dialog.window, SC_MINIMIZE));
    EXPECT_TRUE(isDisabled(dialog.window, SC_MAXIMIZE));
    EXPECT_TRUE(isDisabled(dialog.window, SC_RESTORE));
    EXPECT_TRUE(isDisabled(dialog.window, SC_SIZE));
    EXPECT_FALSE(isDisabled(dialog.window, SC_CLOSE));
  });
  EXPECT_EQ(dialog.picker.askedPoint, (WinPoint{Width / 2, Height / 2}));
}

TEST_F(WinEdgeMenu, ButtonsAndEdgesOfTheHookEnableThem) {
  EdgeDialog minimising(EdgeSystemMenu | EdgeMinimizeButton);
  minimising.open();
  rightClick([&] {
    EXPECT_FALSE(isDisabled(minimising.window, SC_MINIMIZE));
    EXPECT_TRUE(isDisabled(minimising.window, SC_MAXIMIZE));
    EXPECT_TRUE(isDisabled(minimising.window, SC_SIZE));
  });
  DestroyWindow(minimising.window);
  settle();
  EdgeDialog maximising(EdgeSystemMenu | EdgeMaximizeButton | EdgeResize);
  maximising.open();
  rightClick([&] {
    EXPECT_TRUE(isDisabled(maximising.window, SC_MINIMIZE));
    EXPECT_FALSE(isDisabled(maximising.window, SC_MAXIMIZE));
    EXPECT_FALSE(isDisabled(maximising.window, SC_SIZE));
  });
}

TEST_F(WinEdgeMenu, StylesOfTheWindowEnableThem) {
  EdgeDialog dialog(EdgeSystemMenu, WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_THICKFRAME);
  dialog.open();
  rightClick([&] {
    EXPECT_FALSE(isDisabled(dialog.window, SC_MINIMIZE));
    EXPECT_FALSE(isDisabled(dialog.window, SC_MAXIMIZE));
    EXPECT_FALSE(isDisabled(dialog.window, SC_SIZE));
  });
}

TEST_F(WinEdgeMenu, TheChoiceIsPostedWithThePoint) {
  EdgeDialog dialog(EdgeSystemMenu);
  dialog.open();
  Steps steps;
  steps.when([] { return openMenu() != nullptr; },
             [&dialog] {
               const HMENU menu = GetSystemMenu(dialog.window, FALSE);
               for (int i = 0; i < GetMenuItemCount(menu); ++i) {
                 if (GetMenuItemID(menu, i) != SC_CLOSE) continue;
                 RECT area{};
                 GetMenuItemRect(dialog.window, menu, static_cast<UINT>(i), &area);
                 pressMouse((area.left + area.right) / 2, (area.top + area.bottom) / 2);
               }
             });
  mouseButton(MOUSEEVENTF_RIGHTDOWN);
  mouseButton(MOUSEEVENTF_RIGHTUP);
  ASSERT_TRUE(pumpUntil([&] { return !dialog.commands.empty(); }));
  EXPECT_EQ(dialog.commands[0].command, static_cast<WPARAM>(SC_CLOSE));
  EXPECT_EQ(dialog.commands[0].point, (WinPoint{Left + Width / 2, Top + Height / 2}));
}

TEST_F(WinEdgeMenu, AClosedMenuPostsNoCommand) {
  EdgeDialog dialog(EdgeSystemMenu);
  dialog.open();
  rightClick([] {});
  ASSERT_TRUE(pumpUntil([&] { return !dialog.commands.empty(); }));
  EXPECT_EQ(dialog.commands[0].command, 0u);
}

TEST_F(WinEdgeMenu, OpensOnAButtonOfTheHook) {
  EdgeDialog dialog(EdgeSystemMenu | EdgePaint | EdgeCloseButton);
  dialog.open();
  dialog.pointAt(Width - 20, 8);
  ASSERT_TRUE(dialog.edgeButton(WinEdgeButtons::Close).hover);
  bool wasOpen = false;
  rightClick([&wasOpen] { wasOpen = true; });
  EXPECT_TRUE(wasOpen);
}

TEST_F(WinEdgeMenu, DoesNotOpenOnAnEdgeNorWhereItIsNotAllowedNorWithoutTheFlag) {
  EdgeDialog dialog(EdgeSystemMenu | EdgeResize);
  dialog.open();
  dialog.pointAt(1, 50);
  idleRightClick();
  dialog.picker.mayOpenMenu = false;
  dialog.pointAt(100, 60);
  idleRightClick();
  dialog.picker.mayOpenMenu = true;
  dialog.picker.edgeFlags = EdgeResize;
  idleRightClick();
  EXPECT_TRUE(dialog.commands.empty());
}
