#include "job/JobCommandAbort.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobCommandAbort, EndsTheRunWithoutAMessage) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("AbortExecution\nUnknown"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Command#1", "@Executor>Command#1|[AbortExecution]",
                                "@Command#1>Executor|$ Failed", "#End:Command#1"}));
}

TEST(JobCommandAbort, EndsEveryLoopAroundIt) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Foreach {\n Parameter=a,b\n While {\n  Condition=True\n"
                               "  AbortExecution\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "a");
  EXPECT_FALSE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
}
