// The plain boxes: a text on its ground, an icon, a surface that scrolls.
#include "TestText.h"
#include "win/WinImageBox.h"
#include "win/WinPlaneBox.h"
#include "win/WinStaticBox.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr COLORREF Ground = 0x202020;
constexpr COLORREF LowerGround = 0x80C0E0;
constexpr COLORREF Ink = 0x0000FF;
constexpr int32_t BoxWidth = 120;
constexpr int32_t BoxHeight = 61;

// What the text left on the ground: its bounds in the client, empty without any.
WinRect inkBounds(HWND window, COLORREF ink) {
  RECT client{};
  GetClientRect(window, &client);
  const WinWindowDc dc(window);
  WinRect bounds{client.right, client.bottom, 0, 0};
  for (int32_t y = 0; y < client.bottom; ++y)
    for (int32_t x = 0; x < client.right; ++x) {
      if (GetPixel(dc.get(), x, y) != ink) continue;
      bounds = {std::min(bounds.left, x), std::min(bounds.top, y), std::max(bounds.right, x + 1),
                std::max(bounds.bottom, y + 1)};
    }
  return bounds.right > bounds.left ? bounds : WinRect{};
}

class StaticDialog : public TestDialog {
 public:
  WinStaticBox box;
  StaticDialog() {
    box.rect = {10, 10, 10 + BoxWidth, 10 + BoxHeight};
    box.background = Ground;
    box.textColour = Ink;
    box.SetTitle("HHH"_text);
  }
  void open() {
    Create();
    addChild(box);
    UpdateWindow(box.window);
    settle();
  }
  [[nodiscard]] COLORREF at(int32_t x, int32_t y) const { return pixel(box.window, x, y); }
};

// Black with a red middle, opaque.
HICON makeIcon(int32_t size) {
  std::vector<uint32_t> pixels(static_cast<size_t>(size * size), 0xFFFF0000);
  const std::vector<uint8_t> mask(static_cast<size_t>(size * size / 8 + size), 0);
  const WinBitmapOwner colours(CreateBitmap(size, size, 1, 32, pixels.data()));
  const WinBitmapOwner masks(CreateBitmap(size, size, 1, 1, mask.data()));
  ICONINFO info{};
  info.fIcon = TRUE;
  info.hbmColor = colours.get();
  info.hbmMask = masks.get();
  return CreateIconIndirect(&info);
}

class ScrolledBox : public WinPlaneBox {
 public:
  WinSize wanted{300, 500};
  int measured = 0;
  int afterMeasured = 0;
  WinPoint drawnAt;
  Diary order;

  ScrolledBox() { rect = {10, 10, 110, 90}; }
  void DrawContent(HDC dc, WinPoint place) override {
    drawnAt = place;
    fillRect(dc, {place.x, place.y, place.x + 5, place.y + 5}, Ink);
  }
  void MeasureContent(HDC dc) override {
    EXPECT_NE(dc, nullptr);
    ++measured;
    contentWidth = wanted.width;
    contentHeight = wanted.height;
  }
  void AfterMeasure() override { ++afterMeasured; }
  using WinPlaneBox::contentChanged;
  using WinPlaneBox::hasFlag;
};

class PlaneDialog : public TestDialog {
 public:
  ScrolledBox box;
  void open() {
    Create();
    addChild(box);
    UpdateWindow(box.window);
    settle();
  }
  void scroll(UINT message, WORD code) {
    SendMessageW(box.window, message, MAKEWPARAM(code, 0), 0);
  }
  void wheel(int delta, WORD keys = 0) {
    SendMessageW(box.window, WM_MOUSEWHEEL, MAKEWPARAM(keys, delta), 0);
  }
  [[nodiscard]] SCROLLINFO bar(int which) const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    GetScrollInfo(box.window, which, &info);
    return info;
  }
};

class WinStaticBoxWindow : public Fixture {};
class WinImageBoxWindow : public Fixture {};
class WinPlaneBoxWindow : public Fixture {};

} // namespace

// --- Static box

TEST_F(WinStaticBoxWindow, ComesUpAsAnOwnerDrawnTextAtTheLeftTop) {
  const WinStaticBox box;
  EXPECT_EQ(box.className, "STATIC"_text);
  EXPECT_EQ(box.classKind, 2u);
  EXPECT_EQ(box.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | SS_OWNERDRAW));
  EXPECT_EQ(box.viewFlags, 2);
  EXPECT_EQ(box.fitFlags, WinViewFitting::TextLeft | WinViewFitting::TextTop);
  EXPECT_EQ(box.margins, (WinRect{2, 2, 2, 2}));
  EXPECT_EQ(box.background, WinViewStyle::dialogColour());
  EXPECT_EQ(box.secondBackground, static_cast<COLORREF>(-1));
  EXPECT_EQ(box.textColour, WinViewStyle::windowTextColour());
}

TEST_F(WinStaticBoxWindow, OneColourFillsItAll) {
  StaticDialog dialog;
  dialog.box.ClearTitle();
  dialog.open();
  for (const WinPoint at :
       {WinPoint{0, 0}, WinPoint{BoxWidth - 1, BoxHeight - 1}, WinPoint{60, 29}, WinPoint{60, 31}})
    EXPECT_EQ(dialog.at(at.x, at.y), Ground);
}

TEST_F(WinStaticBoxWindow, TheSecondColourIsTheLowerBandAndTheTextStandsOverBoth) {
  StaticDialog dialog;
  dialog.box.secondBackground = LowerGround;
  dialog.box.fitFlags = WinViewFitting::TextLeft | WinViewFitting::TextMiddle;
  dialog.open();
  constexpr int32_t Middle = BoxHeight / 2;
  EXPECT_EQ(dialog.at(0, 0), Ground);
  EXPECT_EQ(dialog.at(BoxWidth - 1, Middle - 1), Ground);
  EXPECT_EQ(dialog.at(BoxWidth - 1, Middle), LowerGround);
  EXPECT_EQ(dialog.at(BoxWidth - 1, BoxHeight - 1), LowerGround);
  const WinRect ink = inkBounds(dialog.box.window, Ink);
  EXPECT_LT(ink.top, Middle);
  EXPECT_GT(ink.bottom, Middle);
}

TEST_F(WinStaticBoxWindow, TextStandsWhereTheFitFlagsSay) {
  const auto boundsFor = [](uint16_t flags) {
    StaticDialog dialog;
    dialog.box.fitFlags = flags;
    dialog.open();
    return inkBounds(dialog.box.window, Ink);
  };
  using Fit = WinViewFitting;
  const WinRect leftTop = boundsFor(Fit::TextLeft | Fit::TextTop);
  const WinRect rightBottom = boundsFor(Fit::TextRight | Fit::TextBottom);
  const WinRect middle = boundsFor(Fit::TextCentre | Fit::TextMiddle);
  ASSERT_GT(leftTop.width(), 0);
  EXPECT_GE(leftTop.left, 2);
  EXPECT_LT(leftTop.left, 6);
  EXPECT_GE(leftTop.top, 2);
  EXPECT_LE(rightBottom.right, BoxWidth - 2);
  EXPECT_GT(rightBottom.right, BoxWidth - 7);
  EXPECT_GT(rightBottom.top, BoxHeight / 2);
  EXPECT_NEAR(middle.left, BoxWidth - middle.right, 6);
  EXPECT_GT(middle.top, leftTop.top);
  EXPECT_LT(middle.top, rightBottom.top);
}

TEST_F(WinStaticBoxWindow, MarginsMoveTheText) {
  StaticDialog plain;
  plain.open();
  const WinRect before = inkBounds(plain.box.window, Ink);
  StaticDialog moved;
  moved.box.margins = {12, 9, 2, 2};
  moved.open();
  EXPECT_EQ(inkBounds(moved.box.window, Ink), before.movedBy(10, 7));
}

TEST_F(WinStaticBoxWindow, LinesOfTheTitleAreKept) {
  StaticDialog dialog;
  dialog.box.SetTitle("H\nH"_text);
  dialog.open();
  StaticDialog single;
  single.box.SetTitle("H"_text);
  single.open();
  const WinRect two = inkBounds(dialog.box.window, Ink);
  const WinRect one = inkBounds(single.box.window, Ink);
  EXPECT_EQ(two.width(), one.width());
  EXPECT_GT(two.height(), one.height() + one.height() / 2);
}

TEST_F(WinStaticBoxWindow, AWrappedTextGetsLinesOfItsWidth) {
  StaticDialog dialog;
  dialog.box.SetTitle("HHH HHH HHH HHH HHH HHH HHH HHH"_text);
  dialog.open();
  const WinRect flat = inkBounds(dialog.box.window, Ink);
  StaticDialog wrapping;
  wrapping.box.SetTitle("HHH HHH HHH HHH HHH HHH HHH HHH"_text);
  wrapping.box.fitFlags |= WinViewFitting::TextWrapped;
  wrapping.open();
  const WinRect wrapped = inkBounds(wrapping.box.window, Ink);
  EXPECT_GT(wrapped.height(), flat.height());
  EXPECT_LE(wrapped.right, BoxWidth - 2);
}

TEST_F(WinStaticBoxWindow, AnAmpersandIsALetter) {
  StaticDialog dialog;
  dialog.box.SetTitle("&"_text);
  dialog.open();
  EXPECT_GT(inkBounds(dialog.box.window, Ink).width(), 0);
}

TEST_F(WinStaticBoxWindow, ADisabledBoxHasGreyText) {
  StaticDialog dialog;
  dialog.open();
  EnableWindow(dialog.box.window, FALSE);
  InvalidateRect(dialog.box.window, nullptr, FALSE);
  UpdateWindow(dialog.box.window);
  EXPECT_EQ(inkBounds(dialog.box.window, Ink), WinRect{});
  EXPECT_GT(inkBounds(dialog.box.window, GetSysColor(COLOR_GRAYTEXT)).width(), 0);
}

TEST_F(WinStaticBoxWindow, TextsOfAnyScriptLeaveInk) {
  for (const RawString& text : {"日本語"_text, "Ärger"_text, "שלום"_text}) {
    StaticDialog dialog;
    dialog.box.SetTitle(text);
    dialog.open();
    EXPECT_GT(inkBounds(dialog.box.window, Ink).width(), 5);
  }
}

// --- Image box

TEST_F(WinImageBoxWindow, ComesUpCentredAndEmpty) {
  WinImageBox box;
  EXPECT_EQ(box.className, "STATIC"_text);
  EXPECT_EQ(box.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | SS_OWNERDRAW));
  EXPECT_EQ(box.viewFlags, 2);
  EXPECT_EQ(box.margins, (WinRect{2, 2, 2, 2}));
  EXPECT_EQ(box.icon, nullptr);
  WinRect area{1, 2, 3, 4};
  box.MeasureText(area);
  EXPECT_EQ(area, WinRect{});
}

TEST_F(WinImageBoxWindow, FitsItsIconAndTheMargins) {
  WinIconHolder holder;
  holder.setShared(LoadIconW(nullptr, IDI_QUESTION), {48, 32});
  WinImageBox box;
  box.icon = &holder;
  box.FitToContent();
  EXPECT_EQ(box.clientWidth, 48);
  EXPECT_EQ(box.clientHeight, 32);
  EXPECT_EQ(box.windowWidth, 52);
  EXPECT_EQ(box.windowHeight, 36);
}

TEST_F(WinImageBoxWindow, WithoutAHolderShowsOnlyItsGround) {
  TestDialog dialog;
  WinImageBox box;
  box.rect = {10, 10, 60, 60};
  dialog.Create();
  dialog.addChild(box);
  UpdateWindow(box.window);
  for (int32_t at = 0; at < 50; at += 7) EXPECT_EQ(pixel(box.window, at, at), box.dialogColour());
}

TEST_F(WinImageBoxWindow, TheIconStandsInTheMiddleOfItsHeight) {
  WinIconHolder holder;
  holder.setOwned(makeIcon(16), {16, 16});
  TestDialog dialog;
  WinImageBox box;
  box.icon = &holder;
  box.rect = {10, 10, 30, 70};
  dialog.Create();
  dialog.addChild(box);
  UpdateWindow(box.window);
  EXPECT_EQ(inkBounds(box.window, 0x0000FF), (WinRect{2, 22, 18, 38}));
}

TEST_F(WinImageBoxWindow, AHolderDestroysOnlyWhatItOwns) {
  const HICON shared = LoadIconW(nullptr, IDI_WARNING);
  const HICON own = makeIcon(16);
  {
    WinIconHolder holder;
    holder.setOwned(own, {16, 16});
    EXPECT_TRUE(holder.isOwned());
    EXPECT_EQ(holder.handle(), own);
    holder.setShared(shared, {32, 32});
    EXPECT_FALSE(holder.isOwned());
    EXPECT_EQ(holder.handle(), shared);
    EXPECT_EQ(holder.width, 32);
  }
  ICONINFO info{};
  EXPECT_FALSE(GetIconInfo(own, &info));
  ASSERT_TRUE(GetIconInfo(shared, &info));
  const WinBitmapOwner colours(info.hbmColor);
  const WinBitmapOwner masks(info.hbmMask);
}

// --- Plane box

TEST_F(WinPlaneBoxWindow, ComesUpUnmeasured) {
  const WinPlaneBox box;
  EXPECT_EQ(box.className, "BUTTON"_text);
  EXPECT_EQ(box.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | BS_OWNERDRAW));
  EXPECT_EQ(box.planeFlags, 2);
  EXPECT_EQ(box.lineStepX, 10);
  EXPECT_EQ(box.lineStepY, 10);
  EXPECT_EQ(box.scrollX, 0);
  EXPECT_EQ(box.scrollY, 0);
  EXPECT_EQ(box.lastX, -1);
  EXPECT_EQ(box.lastY, -1);
}

TEST_F(WinPlaneBoxWindow, MeasuresOnceAndDrawsInsideItsMargins) {
  PlaneDialog dialog;
  dialog.box.margins = {3, 4, 5, 6};
  dialog.open();
  EXPECT_EQ(dialog.box.viewRect, (WinRect{3, 4, 95, 74}));
  EXPECT_EQ(dialog.box.measured, 1);
  EXPECT_EQ(dialog.box.afterMeasured, 1);
  EXPECT_EQ(dialog.box.drawnAt, (WinPoint{3, 4}));
  EXPECT_EQ(inkBounds(dialog.box.window, Ink), (WinRect{3, 4, 8, 9}));
  dialog.box.invalidate();
  UpdateWindow(dialog.box.window);
  EXPECT_EQ(dialog.box.measured, 1);
  dialog.box.contentChanged();
  UpdateWindow(dialog.box.window);
  EXPECT_EQ(dialog.box.measured, 2);
}

TEST_F(WinPlaneBoxWindow, BarsStepByALineByHalfAViewAndToTheEnds) {
  PlaneDialog dialog; // a view of 100 by 80 over 300 by 500
  dialog.open();
  const auto expectY = [&](WORD code, int32_t y) {
    dialog.scroll(WM_VSCROLL, code);
    EXPECT_EQ(dialog.box.scrollY, y) << code;
  };
  expectY(SB_LINEUP, 0);
  expectY(SB_LINEDOWN, 10);
  expectY(SB_PAGEDOWN, 50);
  expectY(SB_PAGEUP, 10);
  expectY(SB_BOTTOM, 420);
  expectY(SB_LINEDOWN, 420);
  expectY(SB_TOP, 0);
  const auto expectX = [&](WORD code, int32_t x) {
    dialog.scroll(WM_HSCROLL, code);
    EXPECT_EQ(dialog.box.scrollX, x) << code;
  };
  expectX(SB_LINERIGHT, 10);
  expectX(SB_PAGERIGHT, 60);
  expectX(SB_RIGHT, 200);
  expectX(SB_LEFT, 0);
  EXPECT_EQ(dialog.box.scrollY, 0);
}

TEST_F(WinPlaneBoxWindow, ScrollingMovesWhatIsDrawn) {
  PlaneDialog dialog;
  dialog.open();
  dialog.scroll(WM_VSCROLL, SB_LINEDOWN);
  dialog.scroll(WM_HSCROLL, SB_LINERIGHT);
  dialog.scroll(WM_HSCROLL, SB_LINERIGHT);
  UpdateWindow(dialog.box.window);
  EXPECT_EQ(dialog.box.drawnAt, (WinPoint{-20, -10}));
}

TEST_F(WinPlaneBoxWindow, TheWheelScrollsByLinesFasterWithControlAndShift) {
  PlaneDialog dialog;
  dialog.open();
  dialog.wheel(-120);
  EXPECT_EQ(dialog.box.scrollY, 10);
  dialog.wheel(-120, MK_CONTROL);
  EXPECT_EQ(dialog.box.scrollY, 40);
  dialog.wheel(-120, MK_SHIFT);
  EXPECT_EQ(dialog.box.scrollY, 70);
  dialog.wheel(-120, MK_CONTROL | MK_SHIFT);
  EXPECT_EQ(dialog.box.scrollY, 160);
  dialog.wheel(120);
  EXPECT_EQ(dialog.box.scrollY, 150);
  dialog.wheel(-12000);
  EXPECT_EQ(dialog.box.scrollY, 420);
  dialog.wheel(32000);
  EXPECT_EQ(dialog.box.scrollY, 0);
}

TEST_F(WinPlaneBoxWindow, TheWheelOfTheMouseReachesIt) {
  PlaneDialog dialog;
  dialog.open();
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog.window); }));
  SetFocus(dialog.box.window);
  const WinPoint centre = centreOf(dialog.box.window);
  movePointer(centre.x, centre.y);
  settle();
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = MOUSEEVENTF_WHEEL;
  input.mi.mouseData = static_cast<DWORD>(-WHEEL_DELTA);
  SendInput(1, &input, sizeof input);
  EXPECT_TRUE(pumpUntil([&] { return dialog.box.scrollY == 10; }));
}

TEST_F(WinPlaneBoxWindow, ContentSmallerThanTheViewStaysAtTheStart) {
  PlaneDialog dialog;
  dialog.box.wanted = {40, 30};
  dialog.open();
  for (int delta : {-120, 120, -1200, 1200, -30000})
    for (const int keys : {0, MK_CONTROL, MK_SHIFT, MK_CONTROL | MK_SHIFT}) {
      dialog.wheel(delta, static_cast<WORD>(keys));
      EXPECT_EQ(dialog.box.scrollX, 0);
      EXPECT_EQ(dialog.box.scrollY, 0);
    }
  dialog.scroll(WM_VSCROLL, SB_BOTTOM);
  EXPECT_EQ(dialog.box.scrollY, 0);
}

TEST_F(WinPlaneBoxWindow, MeasuresBeforeItScrolls) {
  PlaneDialog dialog;
  dialog.open();
  dialog.box.wanted = {300, 85};
  dialog.box.contentChanged();
  dialog.wheel(-1200);
  EXPECT_EQ(dialog.box.scrollY, 5);
  EXPECT_EQ(dialog.box.measured, 2);
}

TEST_F(WinPlaneBoxWindow, GrowingTakesTheOffsetsBack) {
  PlaneDialog dialog;
  dialog.open();
  dialog.scroll(WM_VSCROLL, SB_BOTTOM);
  dialog.scroll(WM_HSCROLL, SB_RIGHT);
  SetWindowPos(dialog.box.window, nullptr, 10, 10, 250, 110, SWP_NOZORDER);
  EXPECT_EQ(dialog.box.viewRect, (WinRect{0, 0, 250, 110}));
  EXPECT_EQ(dialog.box.scrollX, 50);
  EXPECT_EQ(dialog.box.scrollY, 390);
  EXPECT_TRUE(dialog.box.hasFlag(WinPlaneBox::MustFitGeometry));
}

TEST_F(WinPlaneBoxWindow, ScrollBarsShowContentViewAndOffset) {
  PlaneDialog dialog;
  dialog.box.style |= WS_VSCROLL | WS_HSCROLL;
  dialog.open();
  ASSERT_TRUE(pumpUntil([&] { return dialog.bar(SB_VERT).nMax == 499; }));
  const WinRect view = dialog.box.viewRect;
  EXPECT_EQ(view, dialog.box.clientRect());
  EXPECT_LT(view.width(), 100);
  EXPECT_EQ(dialog.bar(SB_VERT).nPage, static_cast<UINT>(view.height()));
  EXPECT_EQ(dialog.bar(SB_VERT).nPos, 0);
  EXPECT_EQ(dialog.bar(SB_HORZ).nMax, 299);
  EXPECT_EQ(dialog.bar(SB_HORZ).nPage, static_cast<UINT>(view.width()));
  dialog.wheel(-240);
  dialog.scroll(WM_HSCROLL, SB_LINERIGHT);
  UpdateWindow(dialog.box.window);
  EXPECT_EQ(dialog.bar(SB_VERT).nPos, 20);
  EXPECT_EQ(dialog.bar(SB_HORZ).nPos, 10);
}

TEST_F(WinPlaneBoxWindow, FocusIsMarkedAndItsLossIsTold) {
  PlaneDialog dialog;
  dialog.addButtons(1);
  dialog.open();
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog.window); }));
  SetFocus(dialog.box.window);
  EXPECT_TRUE(dialog.box.hasFlag(WinPlaneBox::HasFocus));
  dialog.diary.clear();
  SetFocus(dialog.focusOf(0));
  EXPECT_FALSE(dialog.box.hasFlag(WinPlaneBox::HasFocus));
  const std::string told = "command " + std::to_string(dialog.box.identifier) + " 1005";
  EXPECT_EQ(timesOf(dialog.diary, told), 1);
}
