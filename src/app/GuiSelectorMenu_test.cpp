#include "app/GuiSelectorMenu.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace AppLayer;
using JobLayer::JobMarkedRange;

namespace {

// The ids, in brackets when they can be chosen; a line as "|".
std::string shown(const JobMarkedRange& marked) {
  std::string text;
  for (const GuiSelectorMenu::Entry& entry : GuiSelectorMenu::entries(marked)) {
    const std::string id = entry.id ? std::to_string(entry.id) : "|";
    text += entry.isEnabled ? "[" + id + "]" : id;
  }
  return text;
}

} // namespace

TEST(GuiSelectorMenu, TheEntriesHaveTheirTexts) {
  std::string text;
  for (const GuiSelectorMenu::Entry& entry : GuiSelectorMenu::entries({}))
    text += bytesOf(entry.text) + "\n";
  EXPECT_EQ(text, "Insert separator.\nDelete selected items.\n\nMove up selected items.\n"
                  "Move down selected items.\n\nSort selected items.\n"
                  "Reverse selected selected items.\n");
}

TEST(GuiSelectorMenu, WithoutAMarkNothingCanBeChosen) {
  EXPECT_EQ(shown({-1, -1, false}), "12|45|67");
}

TEST(GuiSelectorMenu, OneRunOfMarkedEntriesAllowsAll) {
  EXPECT_EQ(shown({0, 0, true}), "[1][2]|[4][5]|[6][7]");
}

TEST(GuiSelectorMenu, ScatteredEntriesCannotBeSorted) {
  EXPECT_EQ(shown({0, 2, false}), "[1][2]|[4][5]|67");
}
