#include "job/JobCommandBreak.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {
bool breakTravels() {
  return JobTestBed::runner().hasFlag(JobCommandList::BreakTravels);
}
} // namespace

TEST(JobCommandBreak, EndsTheLoopThroughANestedIf) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=a\n If {\n  Condition=True\n  Break\n }\n}"));
  EXPECT_FALSE(breakTravels());
  const Lines diary = bed.diary();
  ASSERT_EQ(diary.size(), 12U);
  EXPECT_EQ(diary[6], "@Command#3>Command#2|$ Failed");  // the break itself
  EXPECT_EQ(diary[8], "@Command#2>Command#1|$ Failed");  // the If around it
  EXPECT_EQ(diary[10], "@Command#1>Executor|$ Success"); // the loop
}

TEST(JobCommandBreak, EndsTheNearestLoopOnly) {
  const JobTestBed bed;
  EXPECT_TRUE(
      JobTestBed::run("Foreach {\n Parameter=a,b\n While {\n  Condition=True\n  Break\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "b");
}

TEST(JobCommandBreak, OutsideALoopItEndsTheRunInSilence) {
  const JobTestBed bed;
  JobTestBed::addButton("x", "Break\nFor {\n Begin=1\n End=1\n Add=1\n}");
  EXPECT_FALSE(JobTestBed::runner().RunButton(0, "LButton"_text, {}));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_FALSE(JobTestBed::hasVariable("Counter"));
  EXPECT_TRUE(breakTravels());
  const Lines diary = bed.diary();
  EXPECT_EQ(diary[diary.size() - 2], "@Executor>User|$ Failed");
}

TEST(JobCommandBreak, TheNextLoopForgetsIt) {
  for (const char* loop : {"Foreach {\n Parameter=a\n AbortExecution\n}",
                           "While {\n Condition=True\n AbortExecution\n}",
                           "For {\n Begin=0\n End=1\n Add=1\n AbortExecution\n}"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run("Break"));
    EXPECT_TRUE(breakTravels());
    EXPECT_FALSE(JobTestBed::run(loop)) << loop;
    EXPECT_FALSE(breakTravels());
  }
}

TEST(JobCommandBreak, WithBracesItIsTheSame) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=True\n Break {\n }\n}"));
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=True\n Break {\n  Unknown\n }\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}
