// The system menu of a window that has no frame.
#include "window/EdgeDialog.h"

using namespace WindowTest;
using namespace WinLayer;

namespace {

constexpr int32_t Left = EdgeDialog::Left;
constexpr int32_t Top = EdgeDialog::Top;
constexpr int32_t Width = EdgeDialog::Width;
constexpr int32_t Height = EdgeDialog::Height;

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

class WinEdgeMenu : public Fixture {};

} // namespace

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

// As the menu is handed to the platform, which may grey by the window's style once more.
TEST_F(WinEdgeMenu, ButtonsAndEdgesOfTheHookEnableThem) {
  const auto handedOver = [](uint16_t flags) {
    EdgeDialog dialog(flags);
    std::vector<bool> disabled;
    const auto inner = dialog.answer;
    dialog.answer = [&](UINT message, WPARAM wParam, LPARAM lParam) {
      if (message == WM_INITMENU)
        for (const UINT command : {SC_MINIMIZE, SC_MAXIMIZE, SC_SIZE}) {
          const UINT state = GetMenuState(reinterpret_cast<HMENU>(wParam), command, MF_BYCOMMAND);
          disabled.push_back((state & (MF_DISABLED | MF_GRAYED)) != 0);
        }
      return inner(message, wParam, lParam);
    };
    dialog.open();
    rightClick([] {});
    return disabled;
  };
  EXPECT_EQ(handedOver(EdgeSystemMenu), (std::vector{true, true, true}));
  EXPECT_EQ(handedOver(EdgeSystemMenu | EdgeMinimizeButton), (std::vector{false, true, true}));
  EXPECT_EQ(handedOver(EdgeSystemMenu | EdgeMaximizeButton), (std::vector{true, false, true}));
  EXPECT_EQ(handedOver(EdgeSystemMenu | EdgeResize), (std::vector{true, true, false}));
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
                 GetMenuItemRect(nullptr, menu, static_cast<UINT>(i), &area);
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
