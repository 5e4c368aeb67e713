#include "win/WinMenuHandle.h"

#include <gtest/gtest.h>

using WinLayer::WinMenuHandle;

TEST(WinMenuHandle, StartsEmptyWithAMenuOfThePlatform) {
  const WinMenuHandle menu;
  EXPECT_NE(menu.menu(), nullptr);
  EXPECT_EQ(menu.count(), 0);
  EXPECT_FALSE(menu.isOpen());
  EXPECT_FALSE(menu.isAfterItem());
}

TEST(WinMenuHandle, CopiesShareOneMenu) {
  WinMenuHandle menu;
  const WinMenuHandle copy = menu;
  menu.appendItem(1);
  menu.setOpen(true);
  EXPECT_EQ(copy.menu(), menu.menu());
  EXPECT_EQ(copy.count(), 1);
  EXPECT_TRUE(copy.isOpen());
}

TEST(WinMenuHandle, SeparatorsAtTheTopAndBehindEachOtherAreDropped) {
  WinMenuHandle menu;
  menu.appendSeparator();
  EXPECT_EQ(menu.count(), 0);
  menu.appendItem(1);
  EXPECT_TRUE(menu.isAfterItem());
  menu.appendSeparator();
  menu.appendSeparator();
  EXPECT_EQ(menu.count(), 2);
  EXPECT_FALSE(menu.isAfterItem());
}

TEST(WinMenuHandle, ASubmenuCountsAsAnItem) {
  WinMenuHandle menu;
  const WinMenuHandle submenu;
  menu.appendSubmenu(submenu, 5);
  EXPECT_EQ(menu.count(), 1);
  EXPECT_TRUE(menu.isAfterItem());
}

TEST(WinMenuHandle, TextsAndLinesFollowTheSameRules) {
  using namespace RawLayer::RawLiterals;
  WinMenuHandle menu;
  menu.appendLine();
  EXPECT_EQ(menu.count(), 0);
  menu.appendText(1, "One"_text);
  EXPECT_TRUE(menu.isAfterItem());
  menu.appendLine();
  menu.appendLine();
  menu.appendSeparator();
  EXPECT_EQ(menu.count(), 2);
  EXPECT_FALSE(menu.isAfterItem());
  menu.appendText(2, "Two"_text, WinMenuHandle::Disabled);
  EXPECT_EQ(menu.count(), 3);
}
