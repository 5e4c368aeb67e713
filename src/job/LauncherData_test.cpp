#include "job/LauncherData.h"

#include <gtest/gtest.h>

using namespace JobLayer;

TEST(LauncherData, ThereIsOne) {
  EXPECT_EQ(&LauncherData::instance(), &LauncherData::instance());
}

TEST(LauncherData, StartsEmpty) {
  const LauncherData data;
  EXPECT_EQ(data.selectors.count(), 0);
  EXPECT_EQ(data.selectors.current, 0);
  EXPECT_EQ(data.selectors.reserved, 0);
  EXPECT_TRUE(data.selectors.templateUnit.name.isEmpty());
  EXPECT_EQ(data.buttons.count(), 0);
  EXPECT_TRUE(data.buttons.templateUnit.name.isEmpty());
  EXPECT_EQ(data.actions.count(), 0);
}

TEST(LauncherData, ANewEntryHasItsDefaults) {
  const JobButtonUnit button;
  EXPECT_EQ(button.flags, 0);
  EXPECT_EQ(button.icon, -1);
  EXPECT_EQ(button.width, 0);
  EXPECT_EQ(button.height, 0);
  EXPECT_EQ(button.rectangle, JobRectangle());
  const JobSelectorUnit selector;
  EXPECT_EQ(selector.flags, 0);
  EXPECT_EQ(selector.itemData1, 0);
  EXPECT_EQ(selector.itemData2, 0);
}
