// The button whose menu fills an edit box.
#include "win/WinEditBox.h"
#include "win/WinHintButton.h"
#include "window/Faces.h"
#include "window/TestDialog.h"

using namespace WindowTest;
using namespace WinLayer;
using Draw = WinButtonDraw;

namespace {

constexpr uint32_t PressCode = 0x1102;
constexpr uint32_t ChosenCode = 0x1103;

// The open popup menu, or null.
HWND openMenu() {
  const std::vector<HWND> found = windowsOfClass(L"#32768");
  for (HWND each : found)
    if (IsWindowVisible(each)) return each;
  return nullptr;
}

// A dialog with an edit box (2500) and the button that fills it (2501).
struct HintDialog : TestDialog {
  WinEditBox edit;
  WinHintButton hint;
  RawLayer::RawParameterList hints;

  HintDialog() {
    edit.rect = {10, 10, 150, 34};
    hint.Connect(edit, PressCode, ChosenCode);
  }
  void show() {
    hint.SetLabels(hints);
    hint.FitToContent();
    hint.set(WinRect{0, 0, hint.windowWidth, hint.windowHeight}.movedTo(150, 10));
    Create();
    addChild(edit);
    addChild(hint);
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(window); }));
    SetFocus(hint.window);
    settle();
    diary.clear();
  }
  [[nodiscard]] bool wasTold(const std::string& line) const {
    return pumpUntil([&] { return timesOf(diary, line) > 0; });
  }
  [[nodiscard]] bool holds(const char* text) const {
    return edit.GetTitle().equals(RawString::fromChars(text));
  }
};

struct HintButton : Fixture {
  HintDialog dialog;
  // Presses the keys one after the other once the menu stands, and waits for its end.
  void withMenu(
      const Action& open, std::initializer_list<uint16_t> keys, const Action& look = [] {}) {
    Steps steps;
    steps.when([] { return openMenu() != nullptr; },
               [&] {
                 look();
                 for (const uint16_t key : keys) pressKey(key);
               });
    open();
    EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !openMenu(); }));
    settle();
  }
};

const Action pressSpace = [] { pressKey(VK_SPACE); };

} // namespace

TEST_F(HintButton, WithoutATitleItIsSquareInside) {
  dialog.hint.FitToContent();
  EXPECT_EQ(dialog.hint.clientWidth, dialog.hint.clientHeight);
  EXPECT_GT(dialog.hint.clientHeight, 5);
  dialog.hint.SetTitle("Some hints"_text);
  dialog.hint.FitToContent();
  EXPECT_GT(dialog.hint.clientWidth, dialog.hint.clientHeight);
}

TEST_F(HintButton, AnArrowStandsInItsMiddle) {
  dialog.show();
  const WinRect client = dialog.hint.clientRect();
  const int32_t height = dialog.hint.clientHeight; // of its content
  const int32_t middle = client.width() / 2;
  const auto isDark = [&](int32_t x, int32_t y) {
    return GetGValue(pixel(dialog.hint.window, x, y)) < 0x60;
  };
  ASSERT_TRUE(comesToShow(dialog.hint.window, client, Draw::CornersAll | Draw::Focused));
  const int32_t top = (client.height() - height / 3) / 2;
  EXPECT_TRUE(isDark(middle, top));
  EXPECT_TRUE(isDark(middle - height / 4 + 1, top)); // as wide as half of the height
  EXPECT_FALSE(isDark(middle - height / 4 - 2, top));
  EXPECT_FALSE(isDark(middle, top - 1));
  EXPECT_FALSE(isDark(middle, top + height / 3));
}

TEST_F(HintButton, WithoutLabelsAPressIsOnlyForwarded) {
  dialog.show();
  pressKey(VK_SPACE);
  EXPECT_TRUE(dialog.wasTold("command 2501 1102"));
  settle();
  EXPECT_EQ(timesOf(dialog.diary, "command 2501 0"), 1);
  EXPECT_EQ(timesOf(dialog.diary, "command 2501 1103"), 0);
  EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(HintButton, TheMenuOpensUnderTheButton) {
  dialog.hints.add("Alice"_text);
  dialog.show();
  withMenu(pressSpace, {VK_ESCAPE}, [&] {
    RECT menu{};
    GetWindowRect(openMenu(), &menu);
    EXPECT_EQ(menu.top, dialog.hint.windowRect().bottom);
    EXPECT_EQ(menu.left, dialog.hint.windowRect().left);
  });
  EXPECT_TRUE(dialog.holds(""));
  EXPECT_EQ(timesOf(dialog.diary, "command 2501 1103"), 0);
}

TEST_F(HintButton, AChosenEntryFillsTheEditBox) {
  dialog.hints.add("Alice"_text);
  dialog.hints.add("Bob"_text);
  dialog.edit.SetTitle("before"_text);
  dialog.show();
  withMenu(pressSpace, {VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_TRUE(dialog.holds("Bob"));
  EXPECT_TRUE(dialog.wasTold("command 2501 1103"));
  EXPECT_EQ(dialog.edit.info.selection(), (RawLayer::RawRange{0, 3}));
  EXPECT_EQ(GetFocus(), dialog.edit.window);
}

TEST_F(HintButton, TheSecondTextOfALabelGoesIntoTheBox) {
  dialog.hints.set("The first of them"_text, "first"_text);
  dialog.show();
  withMenu(pressSpace, {VK_DOWN, VK_RETURN});
  EXPECT_TRUE(dialog.holds("first"));
}

TEST_F(HintButton, DownOpensTheMenuToo) {
  dialog.hints.add("Alice"_text);
  dialog.show();
  withMenu([] { pressKey(VK_DOWN); }, {VK_DOWN, VK_RETURN});
  EXPECT_TRUE(dialog.holds("Alice"));
}

TEST_F(HintButton, AMousePressOpensItAndAPressOnAnEntryChooses) {
  dialog.hints.add("Alice"_text);
  dialog.show();
  const WinPoint centre = centreOf(dialog.hint.window);
  Steps steps;
  steps.when([] { return openMenu() != nullptr; },
             [] {
               const WinPoint entry = centreOf(openMenu());
               pressMouse(entry.x, entry.y);
             });
  pressMouse(centre.x, centre.y);
  EXPECT_TRUE(pumpUntil([&] { return dialog.holds("Alice"); }));
}

TEST_F(HintButton, ALabelOfADashIsALine) {
  dialog.hints.add("Alice"_text);
  dialog.hints.add("-"_text);
  dialog.hints.add("Bob"_text);
  dialog.show();
  withMenu(pressSpace, {VK_DOWN, VK_DOWN, VK_RETURN}); // over the line
  EXPECT_TRUE(dialog.holds("Bob"));
}

TEST_F(HintButton, TheEntryThatTheBoxShowsIsChecked) {
  dialog.hints.add("Alice"_text);
  dialog.hints.add("Bob"_text);
  dialog.edit.SetTitle("BOB"_text);
  dialog.show();
  const auto checkedEntries = [] {
    std::string states;
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(openMenu(), MN_GETHMENU, 0, 0));
    for (int i = 0; i < GetMenuItemCount(menu); ++i)
      states += GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_CHECKED ? 'x' : '-';
    return states;
  };
  withMenu(pressSpace, {VK_ESCAPE}, [&] { EXPECT_EQ(checkedEntries(), "-x"); });
  dialog.hint.caseSensitive = true;
  SetFocus(dialog.hint.window);
  withMenu(pressSpace, {VK_ESCAPE}, [&] { EXPECT_EQ(checkedEntries(), "--"); });
}

TEST_F(HintButton, LabelsStandAsTheyAre) {
  dialog.hints.add("Rock & Roll"_text);
  dialog.show();
  withMenu(pressSpace, {VK_ESCAPE}, [] {
    wchar_t text[32] = {};
    GetMenuStringW(reinterpret_cast<HMENU>(SendMessageW(openMenu(), MN_GETHMENU, 0, 0)), 0, text,
                   31, MF_BYPOSITION);
    EXPECT_STREQ(text, L"Rock && Roll"); // which shows one of them
  });
}

TEST_F(HintButton, AskedForByTheBoxItMarksTheFirstEntry) {
  dialog.hints.add("Alice"_text);
  dialog.hints.add("Bob"_text);
  dialog.show();
  withMenu([&] { dialog.hint.ShowMenu(true); }, {VK_ESCAPE},
           [] {
             const auto menu = reinterpret_cast<HMENU>(SendMessageW(openMenu(), MN_GETHMENU, 0, 0));
             EXPECT_EQ(GetMenuDefaultItem(menu, TRUE, 0), 0U);
           });
}

TEST_F(HintButton, AnUnknownEntryIsNotTaken) {
  dialog.hints.add("Alice"_text);
  dialog.show();
  EXPECT_EQ(dialog.hint.OnMenuCommand(0, 0), -1);
  EXPECT_EQ(dialog.hint.OnMenuCommand(2, 0), -1);
  EXPECT_EQ(dialog.hint.OnMenuCommand(1, 0), 0);
}

TEST_F(HintButton, TheDialogMayGoWhileItsMenuIsOpen) {
  dialog.hints.add("Alice"_text);
  dialog.show();
  Steps steps;
  steps.when([] { return openMenu() != nullptr; }, [&] { DestroyWindow(dialog.window); });
  pressKey(VK_SPACE);
  EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !openMenu(); }));
  EXPECT_EQ(dialog.hint.window, nullptr);
}
