#include "job/JobCommandDefine.h"

#include "JobTestBed.h"

using namespace JobLayer;

TEST(JobCommandDefine, StoresTheTextAsItStands) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n X=$(Y)\n Z= two \n}"));
  EXPECT_EQ(JobTestBed::variable("X"), "$(Y)");
  EXPECT_EQ(JobTestBed::variable("Z"), " two");
}

TEST(JobCommandDefine, BindsLate) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n Y=one\n X=$(Y)\n}\nForeach {\n Parameter=$(X)\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "one");
  EXPECT_TRUE(JobTestBed::run("Define {\n Y=two\n}\nForeach {\n Parameter=$(X)\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "two");
}

TEST(JobCommandDefine, ANestedBlockNeitherRunsNorReports) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n NoSuch {\n  a=b\n }\n AbortExecution\n X=1\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_EQ(JobTestBed::variable("X"), "1");
  EXPECT_FALSE(JobTestBed::hasVariable("a"));
}

TEST(JobCommandDefine, AnEmptyBlockIsTrue) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define"));
  EXPECT_TRUE(JobTestBed::run("Define {\n}"));
}

TEST(JobCommandDefine, TheLastOfTwoEqualKeysStays) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n X=1\n X=2\n}"));
  EXPECT_EQ(JobTestBed::variable("X"), "2");
}

TEST(JobCommandDefine, ABuiltInNameIsNeverSeen) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n Not=mine\n}\nForeach {\n Parameter=$(Not:False)\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "True");
}
