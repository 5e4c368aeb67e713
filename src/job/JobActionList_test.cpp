#include "job/JobActionList.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace JobLayer;

TEST(JobActionList, AnEmptyListFindsNothing) {
  EXPECT_EQ(JobActionList().find("a"_text), nullptr);
}

TEST(JobActionList, ActionsAreFoundByTheirExactName) {
  JobActionList list;
  JobActionUnit* backup = list.add("Backup"_text);
  list.add("Other"_text);
  EXPECT_EQ(list.find("Backup"_text), backup);
  EXPECT_EQ(list.find("backup"_text), nullptr);
  EXPECT_EQ(list.find("Back"_text), nullptr);
}

TEST(JobActionList, TheFirstOfEqualNamesIsFound) {
  JobActionList list;
  JobActionUnit* first = list.add("a"_text);
  list.add("a"_text);
  EXPECT_EQ(list.find("a"_text), first);
  EXPECT_EQ(list.count(), 2);
}
