// What WinMenuHandle makes of the platform's menus.
#include "win/WinMenuHandle.h"

#include "win/WinPlatform.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

using namespace WinLayer;

namespace {

HMENU platformMenu(const WinMenuHandle& menu) {
  return static_cast<HMENU>(menu.menu());
}

std::wstring textAt(const WinMenuHandle& menu, UINT position) {
  wchar_t text[100] = {};
  GetMenuStringW(platformMenu(menu), position, text, 100, MF_BYPOSITION);
  return text;
}

UINT stateAt(const WinMenuHandle& menu, UINT position) {
  return GetMenuState(platformMenu(menu), position, MF_BYPOSITION);
}

} // namespace

TEST(WinMenuHandleWin, TextEntriesHaveTextIdAndState) {
  WinMenuHandle menu;
  menu.appendText(11, RawString::fromChars("\xE8\xA8\x80\xE8\xAA\x9E"));
  menu.appendText(12, "Off"_text, WinMenuHandle::Disabled);
  menu.appendText(13, "On"_text, WinMenuHandle::Checked);
  EXPECT_EQ(GetMenuItemCount(platformMenu(menu)), 3);
  EXPECT_EQ(textAt(menu, 0), L"\u8A00\u8A9E");
  EXPECT_EQ(GetMenuItemID(platformMenu(menu), 0), 11U);
  EXPECT_EQ(stateAt(menu, 0), 0U);
  EXPECT_EQ(stateAt(menu, 1), UINT{MF_DISABLED});
  EXPECT_EQ(stateAt(menu, 2), UINT{MF_CHECKED});
}

TEST(WinMenuHandleWin, ALineIsASeparatorThatThePlatformDraws) {
  WinMenuHandle menu;
  menu.appendText(1, "One"_text);
  menu.appendLine();
  menu.appendText(2, "Two"_text);
  menu.appendSeparator();
  EXPECT_EQ(stateAt(menu, 1) & (MF_SEPARATOR | MF_OWNERDRAW), UINT{MF_SEPARATOR});
  EXPECT_EQ(stateAt(menu, 3) & (MF_SEPARATOR | MF_OWNERDRAW), UINT{MF_SEPARATOR | MF_OWNERDRAW});
}

TEST(WinMenuHandleWin, ASubmenuOutlivesItsParent) {
  const WinMenuHandle submenu;
  {
    WinMenuHandle parent;
    parent.appendSubmenu(submenu, 5);
    EXPECT_EQ(GetSubMenu(platformMenu(parent), 0), platformMenu(submenu));
  }
  EXPECT_TRUE(IsMenu(platformMenu(submenu)));
}

TEST(WinMenuHandleWin, TheLastReferenceDestroysTheMenu) {
  std::optional<WinMenuHandle> first(std::in_place);
  const HMENU menu = platformMenu(*first);
  std::optional<WinMenuHandle> second(*first);
  first.reset();
  EXPECT_TRUE(IsMenu(menu));
  second.reset();
  EXPECT_FALSE(IsMenu(menu));
}
