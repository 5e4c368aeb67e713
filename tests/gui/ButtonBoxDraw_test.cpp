// What the button box shows: every pixel beside a picture drawn the slow way, and the tips.
#include "gui/ButtonBoxBed.h"

#include "win/WinText.h"

using namespace AppLayer;
using namespace WindowTest;
using namespace RawLayer::RawLiterals;
using JobLayer::JobIconControl;
using WinLayer::WinButtonDraw;
using WinLayer::WinViewStyle;
using Property = GuiButtonBoxProperty;

namespace {

class GuiButtonBoxDraw : public ButtonBoxTest {
 protected:
  ~GuiButtonBoxDraw() override { JobLayer::JobIconSource::install(nullptr); }

  // Icons of a file that every system has, extracted at once.
  static void useIcons() {
    JobIconControl::instance().delayed = false;
    JobIconControl::instance().extensions.addUnique("dll"_text);
    JobLayer::JobIconSource::install(&JobIconControl::instance());
  }
  static std::string icon(int index) {
    return "IconFile=C:\\windows\\system32\\shell32.dll\r\nIconIndex=" + std::to_string(index) +
           "\r\n";
  }

  // The picture of the box, drawn unit by unit with the platform's own text drawing.
  void drawReference(const GuiPixelBuffer& buffer, uint32_t cursorLook) {
    GuiButtonLayout layout;
    layout.horizontal = LauncherOptions::instance().horizontal;
    layout.align = LauncherOptions::instance().buttonAlign;
    const WinLayer::WinSelect font(buffer.dc(), box().fontHandle());
    SetBkMode(buffer.dc(), TRANSPARENT);
    SetTextColor(buffer.dc(), GetSysColor(COLOR_WINDOWTEXT));
    const WinSize size = buffer.view().size();
    WinLayer::fillRect(buffer.dc(), {0, 0, size.width, size.height}, GetSysColor(COLOR_3DFACE));
    int32_t index = 0;
    for (const JobButtonUnit& unit : buttons().elements()) {
      const uint32_t look = index++ == cursor() ? cursorLook : 0;
      if (unit.isUsable()) drawUnit(buffer, layout, unit, look);
    }
  }
  // True when the window shows exactly that; else where the first difference lies.
  testing::AssertionResult showsReference(uint32_t cursorLook) {
    settle();
    const WinRect client = box().clientRect();
    GuiPixelBuffer expected;
    GuiPixelBuffer seen;
    const WinLayer::WinWindowDc dc(box().window);
    if (!expected.reserve(dc.get(), {client.width(), client.height()}) ||
        !seen.reserve(dc.get(), {client.width(), client.height()}))
      return testing::AssertionFailure() << "no surface";
    drawReference(expected, cursorLook);
    BitBlt(seen.dc(), 0, 0, client.width(), client.height(), dc.get(), 0, 0, SRCCOPY);
    GdiFlush();
    for (int32_t y = 0; y < client.height(); ++y)
      for (int32_t x = 0; x < client.width(); ++x)
        if ((expected.view().row(y)[x] ^ seen.view().row(y)[x]) & 0xFFFFFF)
          return testing::AssertionFailure()
                 << "at " << x << "," << y << " stands " << std::hex << seen.view().row(y)[x]
                 << " and not " << expected.view().row(y)[x];
    return testing::AssertionSuccess();
  }

 private:
  static void drawUnit(const GuiPixelBuffer& buffer, const GuiButtonLayout& layout,
                       const JobButtonUnit& unit, uint32_t look) {
    const WinRect area = GuiButtonLayout::rectOf(unit);
    const WinSize size{area.width(), area.height()};
    std::vector<uint32_t> face(static_cast<size_t>(size.width) * static_cast<size_t>(size.height));
    WinButtonDraw::paint(face.data(), size, look, GetSysColor(COLOR_3DFACE));
    GdiFlush();
    buffer.view().copy({area.left, area.top}, face.data(), size);
    const GuiButtonLayout::Content content = layout.contentOf(unit);
    if (GuiButtonLayout::showsIcon(unit))
      JobIconControl::instance().draw(unit.icon, buffer.dc(), content.icon);
    if (GuiButtonLayout::showsTitle(unit))
      WinLayer::drawText(buffer.dc(), unit.title, content.text, DT_NOPREFIX | DT_CENTER);
  }
};

class GuiButtonBoxTips : public ButtonBoxTest {
 protected:
  GuiButtonBoxTips() { LauncherOptions::instance().viewTip = true; }
  static HWND tipWindow() {
    for (HWND window : windowsOfClass(L"Class_TipDialog"))
      if (IsWindowVisible(window)) return window;
    return nullptr;
  }
  // The tip stands at the pointer and is as wide as the text needs.
  static bool tipFits(WinPoint pointer, const RawString& text) {
    RECT area{};
    GetWindowRect(tipWindow(), &area);
    const WinLayer::WinWindowDc dc(nullptr);
    const WinLayer::WinSelect font(dc.get(), WinLayer::WinFont::tip().handle());
    const WinRect extent = WinLayer::measureText(dc.get(), text, {0, 0, 999, 99}, DT_NOPREFIX);
    return area.left == pointer.x &&
           area.top == pointer.y + GetSystemMetrics(SM_CYCURSOR) * 2 / 3 &&
           area.right - area.left == extent.width() + 6 + 2;
  }
  static bool showsTip() {
    return pumpUntil([] { return tipWindow() != nullptr; });
  }
  static bool hidesTip() {
    return pumpUntil([] { return tipWindow() == nullptr; });
  }
};

} // namespace

// --- Pictures

TEST_F(GuiButtonBoxDraw, AColumnOfTitlesInEachLook) {
  open(button("a", "Title=Notepad\r\n") + Separator +
       button("b", "Title=A longer title & more\r\n") + button("h", "Hidden=True\r\n") +
       button("c", "Title=x\r\n"));
  EXPECT_TRUE(showsReference(0));
  pressLeft(2);
  EXPECT_TRUE(showsReference(WinButtonDraw::Focused));
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  EXPECT_TRUE(showsReference(WinButtonDraw::Pressed));
  pointAt(0);
  EXPECT_EQ(cursor(), 0);
  EXPECT_TRUE(showsReference(WinButtonDraw::Pressed));
  mouseButton(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(showsReference(WinButtonDraw::Focused));
}

TEST_F(GuiButtonBoxDraw, ContentsAtTheLeftAndAtTheRight) {
  for (const int32_t align : {0, 2}) {
    LauncherOptions::instance().buttonAlign = align;
    open(button("a", "Title=Notepad\r\n") + button("b", "Title=x\r\n"));
    EXPECT_TRUE(showsReference(0)) << align;
    close();
  }
}

TEST_F(GuiButtonBoxDraw, IconsAloneAndWithTitles) {
  useIcons();
  open(button("a", icon(1) + "Title=With an icon\r\n") + button("b", icon(2)) +
       button("c", icon(1)) + button("d", "Title=Without\r\n"));
  ASSERT_GE(buttons().at(0)->icon, 0);
  EXPECT_TRUE(showsReference(0));
  InvalidateRect(box().window, nullptr, FALSE); // from what was kept
  EXPECT_TRUE(showsReference(0));
  pressLeft(1);
  EXPECT_TRUE(showsReference(WinButtonDraw::Focused));
}

TEST_F(GuiButtonBoxDraw, ARowOfButtons) {
  useIcons();
  LauncherOptions::instance().horizontal = true;
  open(button("a", "Title=Notepad\r\n") + Separator + button("b", icon(3)) +
       button("c", icon(1) + "Title=\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\r\n"));
  EXPECT_TRUE(showsReference(0));
}

TEST_F(GuiButtonBoxDraw, TabsAndLineBreaksInTitles) {
  open(button("a", "Title=one\ttwo\r\n") + button("b", "Title=three lines\r\n") +
       button("c", "Title=under it\r\n"));
  buttons().at(1)->title = "first\r\nsecond\r\nthird"_text;
  GuiButtonLayout layout;
  layout.measureAll(buttons(), [this](const RawString& title) {
    const WinLayer::WinWindowDc dc(box().window);
    const WinLayer::WinSelect font(dc.get(), box().fontHandle());
    const WinRect area =
        WinLayer::measureText(dc.get(), title, {0, 0, 0x7FFF, 0x7FFF}, DT_NOPREFIX);
    return WinSize{area.width(), area.height()};
  });
  layout.arrange(buttons());
  ASSERT_GT(buttons().at(1)->height, 24); // stands out of its row, and the next face covers it
  box().invalidate();
  EXPECT_TRUE(showsReference(0));
}

TEST_F(GuiButtonBoxDraw, TheMeasuresAreThoseOfTitlesInTheWindowFont) {
  open(button("a", "Title=Notepad\r\n") + Separator + button("b", "Title=A longer title\r\n"));
  const WinLayer::WinWindowDc dc(box().window);
  const WinLayer::WinSelect font(dc.get(), WinLayer::WinFont::window().handle());
  const WinRect text =
      WinLayer::measureText(dc.get(), "A longer title"_text, {0, 0, 0x7FFF, 0x7FFF}, DT_NOPREFIX);
  EXPECT_EQ(box().clientWidth, text.width() + 8);
  EXPECT_EQ(box().clientHeight, 24 + 7 + 24);
  EXPECT_EQ(box().windowWidth, box().clientWidth);
  EXPECT_EQ(box().windowHeight, box().clientHeight);
}

TEST_F(GuiButtonBoxDraw, MeasuringIsRecorded) {
  open(button("a"));
  const std::vector<std::string> diary = bed.diary();
  EXPECT_NE(std::find(diary.begin(), diary.end(), "@System>Executor|$ SetupButtons"), diary.end());
}

TEST_F(GuiButtonBoxDraw, TheWindowIsAnOwnerDrawnChildThatTakesFiles) {
  open(button("a"));
  wchar_t name[50] = {};
  GetClassNameW(box().window, name, 50);
  EXPECT_STREQ(name, L"Button");
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(box().window, GWL_STYLE));
  EXPECT_EQ(style & (WS_CHILD | WS_VISIBLE | BS_OWNERDRAW),
            static_cast<DWORD>(WS_CHILD | WS_VISIBLE | BS_OWNERDRAW));
  EXPECT_TRUE(GetWindowLongPtrW(box().window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES);
  EXPECT_EQ(box().edgeFlags & 0xFF, 5); // moves the window, opens the system menu
  EXPECT_EQ(GetWindow(box().window, GW_CHILD), nullptr);
}

// --- Tips

TEST_F(GuiButtonBoxTips, ATipShowsWhereThePointerRests) {
  open(button("a", "TipText=Tip of a\r\n") + button("b", "Title=Tip is the title\r\n"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  EXPECT_TRUE(pumpUntil([this] { return tipFits(centreOf(0), "Tip of a"_text); }));
}

TEST_F(GuiButtonBoxTips, ARestOnAnotherButtonChangesIt) {
  LauncherOptions::instance().horizontal = true; // the tip stands below the pointer
  open(button("a", "TipText=Tip of a\r\n") + button("b", "Title=The title of b\r\n"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  const HWND before = tipWindow();
  pointAt(1);
  EXPECT_TRUE(pumpUntil([this] { return tipFits(centreOf(1), "The title of b"_text); }));
  EXPECT_EQ(tipWindow(), before);
}

TEST_F(GuiButtonBoxTips, LeavingHidesIt) {
  open(button("a"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  movePointer(20, 20);
  EXPECT_TRUE(hidesTip());
  // And it comes again.
  pointAt(0);
  EXPECT_TRUE(showsTip());
}

TEST_F(GuiButtonBoxTips, WithTheFocusLookLeavingLetsItStand) {
  open(button("a"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  SetFocus(box().window);
  ASSERT_TRUE(has(Property::FocusLook));
  movePointer(20, 20);
  EXPECT_TRUE(pumpUntil([this] { return box().inside == 0; }));
  settle();
  EXPECT_NE(tipWindow(), nullptr);
}

TEST_F(GuiButtonBoxTips, ATrackedMoveOfMoreThanFivePixelsHidesIt) {
  open(button("a", "Title=A title of some width\r\n"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  POINT at{centreOf(0).x, centreOf(0).y};
  ScreenToClient(box().window, &at);
  const auto moves = [&](int32_t x, int32_t y) {
    return box().OnMouseMoveTracked({at.x + x, at.y + y});
  };
  EXPECT_TRUE(moves(5, -5));
  EXPECT_TRUE(moves(-5, 5));
  EXPECT_NE(tipWindow(), nullptr);
  EXPECT_FALSE(moves(0, -6));
  EXPECT_EQ(tipWindow(), nullptr);
  EXPECT_FALSE(moves(6, 0));
}

TEST_F(GuiButtonBoxTips, NoRestMakesMovesTracked) {
  open(button("a", "Title=A title of some width\r\n"));
  EXPECT_EQ(box().hoverTime, 500U);
  pointAt(0);
  ASSERT_TRUE(showsTip());
  EXPECT_EQ(box().trackMoves, 0);
  const WinPoint point = centreOf(0);
  movePointer(point.x + 20, point.y);
  settle();
  EXPECT_NE(tipWindow(), nullptr);
}

TEST_F(GuiButtonBoxTips, APressWithTheFocusHidesItAndNoneComesThen) {
  open(button("a"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  pressLeft(0);
  EXPECT_TRUE(hidesTip());
  EXPECT_TRUE(has(Property::FocusLook));
  EXPECT_FALSE(box().OnMouseHover({5, 5}));
  EXPECT_EQ(tipWindow(), nullptr);
}

TEST_F(GuiButtonBoxTips, SeparatorsAndHiddenButtonsHaveNone) {
  open(button("h", "Hidden=True\r\n") + button("a") + Separator);
  EXPECT_FALSE(box().OnMouseHover({3, 0}));
  const WinRect area = GuiButtonLayout::rectOf(*buttons().at(2));
  EXPECT_FALSE(box().OnMouseHover({area.left + 2, area.bottom - 2}));
  EXPECT_FALSE(box().OnMouseHover({area.left + 2, area.bottom + 50}));
  EXPECT_EQ(tipWindow(), nullptr);
}

TEST_F(GuiButtonBoxTips, WithoutTheOptionThereIsNone) {
  LauncherOptions::instance().viewTip = false;
  open(button("a"));
  EXPECT_EQ(box().hoverTime, 0U);
  EXPECT_FALSE(box().OnMouseHover({5, 5}));
  EXPECT_EQ(tipWindow(), nullptr);
}

TEST_F(GuiButtonBoxTips, TheWindowsEndEndsItsThread) {
  open(button("a"));
  pointAt(0);
  ASSERT_TRUE(showsTip());
  DestroyWindow(dialog().window);
  EXPECT_EQ(tipWindow(), nullptr);
}
