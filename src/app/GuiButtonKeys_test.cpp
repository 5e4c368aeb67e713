#include "app/GuiButtonKeys.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace AppLayer;
using JobLayer::JobButtonList;
using JobLayer::JobButtonUnit;
using Action = GuiButtonAction;

namespace {

enum Key : uint32_t {
  Tab = 0x09,
  Enter = 0x0D,
  Escape = 0x1B,
  Space = 0x20,
  PageUp = 0x21,
  PageDown = 0x22,
  End = 0x23,
  Home = 0x24,
  Left = 0x25,
  Up = 0x26,
  Right = 0x27,
  Down = 0x28,
  Insert = 0x2D,
  Delete = 0x2E,
};

Action inColumn(uint32_t key) {
  return buttonActionOf(key, false, false);
}
Action inRow(uint32_t key) {
  return buttonActionOf(key, false, true);
}
Action altInColumn(uint32_t key) {
  return buttonActionOf(key, true, false);
}
Action altInRow(uint32_t key) {
  return buttonActionOf(key, true, true);
}

// One entry for each letter: a button, "h" hidden, "-" a separator.
class GuiButtonCursor : public testing::Test {
 protected:
  JobButtonList buttons;
  void fill(const std::string& kinds) {
    buttons.clear();
    for (const char kind : kinds) {
      JobButtonUnit* unit = buttons.add(raw(std::string(1, kind)));
      if (kind == 'h') unit->flags |= JobButtonUnit::IsHidden;
    }
  }
  [[nodiscard]] int32_t next(int32_t cursor) const {
    return buttonCursorAfter(buttons, cursor, Action::ToNext);
  }
  [[nodiscard]] int32_t previous(int32_t cursor) const {
    return buttonCursorAfter(buttons, cursor, Action::ToPrevious);
  }
};

} // namespace

TEST(GuiButtonKeys, KeysThatMeanTheSameInBothDirections) {
  for (const bool horizontal : {false, true}) {
    EXPECT_EQ(buttonActionOf(Enter, false, horizontal), Action::Run);
    EXPECT_EQ(buttonActionOf(Space, false, horizontal), Action::Run);
    EXPECT_EQ(buttonActionOf(PageUp, false, horizontal), Action::ToFirst);
    EXPECT_EQ(buttonActionOf(Home, false, horizontal), Action::ToFirst);
    EXPECT_EQ(buttonActionOf(PageDown, false, horizontal), Action::ToLast);
    EXPECT_EQ(buttonActionOf(End, false, horizontal), Action::ToLast);
    EXPECT_EQ(buttonActionOf(Delete, false, horizontal), Action::Delete);
    EXPECT_EQ(buttonActionOf(Delete, true, horizontal), Action::Delete);
  }
}

TEST(GuiButtonKeys, ArrowsAlongMoveTheCursor) {
  EXPECT_EQ(inColumn(Up), Action::ToPrevious);
  EXPECT_EQ(inColumn(Down), Action::ToNext);
  EXPECT_EQ(inRow(Left), Action::ToPrevious);
  EXPECT_EQ(inRow(Right), Action::ToNext);
}

TEST(GuiButtonKeys, ArrowsAcrossShowTheMenu) {
  EXPECT_EQ(inColumn(Left), Action::ShowMenu);
  EXPECT_EQ(inColumn(Right), Action::ShowMenu);
  EXPECT_EQ(inRow(Up), Action::ShowMenu);
  EXPECT_EQ(inRow(Down), Action::ShowMenu);
  EXPECT_EQ(altInColumn(Left), Action::ShowMenu);
  EXPECT_EQ(altInColumn(Right), Action::ShowMenu);
  EXPECT_EQ(altInRow(Up), Action::ShowMenu);
  EXPECT_EQ(altInRow(Down), Action::ShowMenu);
}

TEST(GuiButtonKeys, ArrowsAlongWithAltMoveTheButton) {
  EXPECT_EQ(altInColumn(Up), Action::MoveUp);
  EXPECT_EQ(altInColumn(Down), Action::MoveDown);
  EXPECT_EQ(altInRow(Left), Action::MoveUp);
  EXPECT_EQ(altInRow(Right), Action::MoveDown);
}

TEST(GuiButtonKeys, OtherKeysMeanNothing) {
  for (const uint32_t key : {uint32_t{Tab}, uint32_t{Escape}, uint32_t{Insert}, uint32_t{'A'}}) {
    EXPECT_EQ(inColumn(key), Action::None) << key;
    EXPECT_EQ(inRow(key), Action::None) << key;
  }
  for (const uint32_t key : {Enter, Space, PageUp, PageDown, End, Home, Tab})
    EXPECT_EQ(altInColumn(key), Action::None) << key;
}

TEST_F(GuiButtonCursor, HiddenButtonsAndSeparatorsArePassedOver) {
  fill("ah-hb");
  EXPECT_EQ(next(0), 4);
  EXPECT_EQ(previous(4), 0);
  EXPECT_EQ(next(2), 4);
  EXPECT_EQ(previous(2), 0);
}

TEST_F(GuiButtonCursor, AtAnEndItStays) {
  fill("-ab-");
  EXPECT_EQ(next(2), -1);
  EXPECT_EQ(previous(1), -1);
}

TEST_F(GuiButtonCursor, FirstAndLastAreThoseThatCanBePressed) {
  fill("-habh-");
  EXPECT_EQ(buttonCursorAfter(buttons, 3, Action::ToFirst), 2);
  EXPECT_EQ(buttonCursorAfter(buttons, 2, Action::ToLast), 3);
}

TEST_F(GuiButtonCursor, WithoutACurrentButtonNextGivesTheFirstAndPreviousNone) {
  fill("-ab");
  EXPECT_EQ(next(-1), 1);
  EXPECT_EQ(previous(-1), -1);
}

TEST_F(GuiButtonCursor, NothingCanBeReachedWhereNothingCanBePressed) {
  for (const char* kinds : {"", "h-h"}) {
    fill(kinds);
    for (const Action action :
         {Action::ToFirst, Action::ToLast, Action::ToNext, Action::ToPrevious})
      EXPECT_EQ(buttonCursorAfter(buttons, -1, action), -1) << kinds;
  }
}

TEST_F(GuiButtonCursor, OtherActionsDoNotMoveIt) {
  fill("ab");
  for (const Action action : {Action::None, Action::Run, Action::ShowMenu, Action::Delete})
    EXPECT_EQ(buttonCursorAfter(buttons, 0, action), -1);
}
