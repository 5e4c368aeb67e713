// The plain button, by mouse and keyboard, and what it looks like.
#include "TestText.h"
#include "win/WinButton.h"
#include "window/Faces.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;
using Draw = WinButtonDraw;

namespace {

constexpr uint32_t Finish = 0x1101;
constexpr WinRect Place{10, 60, 90, 90};
constexpr WinRect Face{0, 0, 80, 30};

// A dialog with two of its own buttons, and the one to be tested behind them (number 2502).
struct ButtonDialog : TestDialog {
  WinButton tested;
  ButtonDialog() { addButtons(2); }
  void show(const char* text, uint32_t flags = Draw::CornersAll, uint32_t command = Finish) {
    tested.SetUp(RawString::fromChars(text), flags, command);
    tested.set(Place);
    Create();
    addChild(tested);
    settle();
    diary.clear();
  }
  void showWithFocus(const char* text, uint32_t flags = Draw::CornersAll) {
    show(text, flags);
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(window); }));
    SetFocus(tested.window);
    diary.clear();
  }
  [[nodiscard]] bool wasTold(const std::string& line, int64_t times = 1) const {
    return pumpUntil([&] { return timesOf(diary, line) >= times; });
  }
};

class Button : public Fixture {
 protected:
  ButtonDialog dialog_;
};

} // namespace

TEST_F(Button, ShowsItsFaceInEachLook) {
  dialog_.show("");
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll));
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog_.window); }));
  SetFocus(dialog_.tested.window);
  EXPECT_TRUE(dialog_.tested.focused);
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll | Draw::Focused));
  const WinPoint centre = centreOf(dialog_.tested.window);
  movePointer(centre.x, centre.y);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll | Draw::Pressed));
  mouseButton(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll | Draw::Focused));
  EnableWindow(dialog_.tested.window, FALSE);
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll | Draw::Disabled));
}

TEST_F(Button, LosingTheFocusItLooksNormal) {
  dialog_.showWithFocus("");
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll | Draw::Focused));
  SetFocus(dialog_.focusOf(0));
  EXPECT_FALSE(dialog_.tested.focused);
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll));
}

TEST_F(Button, CornersAndFramesAreThoseThatItWasGiven) {
  constexpr uint32_t flags = Draw::CornerTopLeft | Draw::FrameLeft | Draw::FrameBottom;
  dialog_.show("", flags);
  EXPECT_TRUE(comesToShow(dialog_.tested.window, Face, flags));
}

TEST_F(Button, ItsTextStandsInTheMiddleInTheTextColour) {
  dialog_.show("Abort");
  ASSERT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll));
  const WinWindowDc dc(dialog_.tested.window);
  int left = Face.right;
  int right = 0;
  int top = Face.bottom;
  int bottom = 0;
  for (int y = 4; y < 26; ++y)
    for (int x = 4; x < 76; ++x)
      if (GetGValue(GetPixel(dc.get(), x, y)) < 0xC0) { // ink, soft edges included
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      }
  ASSERT_LT(left, right);
  EXPECT_NEAR(left + right, 79, 4) << left << " to " << right;
  EXPECT_NEAR(top + bottom, 29, 6) << top << " to " << bottom;
}

TEST_F(Button, ADisabledTextIsGrey) {
  dialog_.show("MMM");
  EnableWindow(dialog_.tested.window, FALSE);
  ASSERT_TRUE(comesToShow(dialog_.tested.window, Face, Draw::CornersAll | Draw::Disabled));
  EXPECT_GT(pixelsOf(dialog_.tested.window, 0xA0A0A0), 20);
}

TEST_F(Button, APressOfTheMouseTellsTheOwnerAndPostsTheCommand) {
  dialog_.show("Finish");
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog_.window); }));
  const WinPoint centre = centreOf(dialog_.tested.window);
  pressMouse(centre.x, centre.y);
  ASSERT_TRUE(dialog_.wasTold("command 2502 1101"));
  settle();
  EXPECT_EQ(timesOf(dialog_.diary, "command 2502 0"), 1);
  EXPECT_EQ(timesOf(dialog_.diary, "command 2502 1101"), 1);
  EXPECT_EQ(GetFocus(), dialog_.tested.window);
}

TEST_F(Button, ReleasedElsewhereNothingIsPressed) {
  dialog_.show("Finish");
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog_.window); }));
  const WinPoint centre = centreOf(dialog_.tested.window);
  movePointer(centre.x, centre.y);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  settle();
  movePointer(centre.x, centre.y + 100);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
  EXPECT_EQ(timesOf(dialog_.diary, "command 2502 1101"), 0);
}

TEST_F(Button, ADoubleClickIsTwoPresses) {
  dialog_.show("Finish");
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog_.window); }));
  const WinPoint centre = centreOf(dialog_.tested.window);
  pressMouse(centre.x, centre.y);
  pressMouse(centre.x, centre.y);
  EXPECT_TRUE(dialog_.wasTold("command 2502 1101", 2));
  settle();
  EXPECT_EQ(timesOf(dialog_.diary, "command 2502 1101"), 2);
}

TEST_F(Button, EnterAndSpaceAreOnePressEach) {
  dialog_.showWithFocus("Finish");
  int64_t presses = 0;
  for (const uint16_t key : {uint16_t{VK_RETURN}, uint16_t{VK_SPACE}}) {
    pressKey(key);
    ++presses;
    EXPECT_TRUE(dialog_.wasTold("command 2502 1101", presses));
    settle();
    EXPECT_EQ(timesOf(dialog_.diary, "command 2502 0"), presses);
    EXPECT_EQ(timesOf(dialog_.diary, "command 2502 1101"), presses);
  }
}

TEST_F(Button, WithoutACommandOnlyThePressIsTold) {
  dialog_.show("Finish", Draw::CornersAll, 0);
  ASSERT_TRUE(pumpUntil([&] { return bringToFront(dialog_.window); }));
  SetFocus(dialog_.tested.window);
  pressKey(VK_RETURN);
  EXPECT_TRUE(dialog_.wasTold("command 2502 0"));
  settle();
  EXPECT_EQ(timesOf(dialog_.diary, "command 2502 0"), 1);
}

TEST_F(Button, ArrowsMoveTheFocus) {
  dialog_.showWithFocus("Finish");
  const struct {
    uint16_t key;
    int button;
  } moves[] = {{VK_LEFT, 1}, {VK_UP, 1}, {VK_RIGHT, 0}, {VK_DOWN, 0}};
  for (const auto& move : moves) {
    SetFocus(dialog_.tested.window);
    pressKey(move.key);
    EXPECT_TRUE(pumpUntil([&] { return GetFocus() == dialog_.focusOf(move.button); }));
  }
}

TEST_F(Button, EscapeIsTheDialogs) {
  dialog_.showWithFocus("Finish");
  pressKey(VK_ESCAPE);
  EXPECT_TRUE(dialog_.wasTold("command 2502 1004"));
}

TEST_F(Button, AToggleInvertsOnEachSpace) {
  constexpr uint32_t flags = Draw::CornersAll | Draw::FramesAll | Draw::Toggle;
  dialog_.showWithFocus("", flags);
  for (const bool checked : {true, false, true}) {
    pressKey(VK_SPACE);
    EXPECT_TRUE(pumpUntil([&] { return dialog_.tested.checked == checked; }));
    EXPECT_TRUE(comesToShow(dialog_.tested.window, Face,
                            flags | Draw::Focused | (checked ? Draw::Checked : 0U)));
  }
  EXPECT_EQ(pixel(dialog_.tested.window, 40, 1), COLORREF{0xFF27FF});
  EXPECT_EQ(pixel(dialog_.tested.window, 40, 28), COLORREF{0xFF00FF});
}

TEST_F(Button, APlainButtonIsNeverChecked) {
  dialog_.showWithFocus("");
  pressKey(VK_SPACE);
  EXPECT_TRUE(dialog_.wasTold("command 2502 1101"));
  EXPECT_FALSE(dialog_.tested.checked);
}

TEST_F(Button, ALineBreakInTheTextMakesTwoLines) {
  WinButton one;
  one.SetUp("Check"_text, 0, 0);
  one.FitToContent();
  WinButton two;
  two.SetUp("Check\\nAll"_text, Draw::FramesAll, Finish);
  two.FitToContent();
  EXPECT_TRUE(two.GetTitle().equals("Check\r\nAll"_text));
  EXPECT_EQ(two.drawFlags, Draw::FramesAll);
  EXPECT_EQ(two.command, Finish);
  EXPECT_EQ(two.clientWidth, one.clientWidth);
  EXPECT_EQ(two.clientHeight, 2 * one.clientHeight);
  EXPECT_EQ(one.windowWidth, one.clientWidth + 8); // margins of 4
  EXPECT_EQ(one.windowHeight, one.clientHeight + 8);
}

TEST_F(Button, EachMarkOfALineBreakIsReplaced) {
  WinButton button;
  button.SetUp("a\\nb\\\\n\\n"_text, 0, 0);
  EXPECT_TRUE(button.GetTitle().equals("a\r\nb\\\r\n\r\n"_text));
}

// --- Faces

TEST_F(Button, FacesAreKeptByLookAndSize) {
  WinButtonFaces faces;
  const uint32_t* normal = faces.pixels({40, 20}, Draw::CornersAll);
  EXPECT_EQ(faces.pixels({40, 20}, Draw::CornersAll | Draw::Toggle), normal); // the same face
  EXPECT_NE(faces.pixels({40, 20}, Draw::CornersAll | Draw::Pressed), normal);
  EXPECT_NE(faces.pixels({20, 40}, Draw::CornersAll), normal);
  EXPECT_EQ(faces.pixels({40, 20}, Draw::CornersAll), normal);
  EXPECT_EQ(faces.pixels({0, 20}, Draw::CornersAll), nullptr);
  EXPECT_EQ(faces.pixels({40, -1}, Draw::CornersAll), nullptr);
}

TEST_F(Button, ManyFacesAreStillRight) {
  WinButtonFaces faces;
  std::vector<uint32_t> wanted(200 * 30);
  for (int32_t width = 100; width <= 400; ++width) faces.pixels({width, 30}, Draw::Focused);
  WinButtonDraw::paint(wanted.data(), {200, 30}, Draw::Focused, WinViewStyle::dialogColour());
  const uint32_t* face = faces.pixels({200, 30}, Draw::Focused);
  EXPECT_TRUE(std::equal(wanted.begin(), wanted.end(), face));
}
