#include "job/JobCommandWhile.h"

#include "JobTestBed.h"
#include "TestKeys.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {
constexpr int EscapeKey = 0x1B;
}

TEST(JobCommandWhile, AFalseConditionRunsNothing) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=False\n AbortExecution\n}"));
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=fALSE\n AbortExecution\n}"));
}

TEST(JobCommandWhile, ABreakEndsItWithTruth) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=True\n Break\n}"));
  EXPECT_FALSE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
  EXPECT_EQ(
      bed.diary(),
      (Lines{"#Begin:Command#1", "@Executor>Command#1|[While][Condition=True][Break]",
             "#Begin:Command#2", "@Command#1>Command#2|[Break]", "@Command#2>Command#1|$ Failed",
             "#End:Command#2", "@Command#1>Executor|$ Success", "#End:Command#1"}));
}

TEST(JobCommandWhile, AFailureEndsItWithFalse) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("While {\n Condition=True\n AbortExecution\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandWhile, TheConditionIsFixedAtTheStart) {
  const JobTestBed bed;
  JobTestBed::setVariable("Each", "True");
  // The first round makes the variable of the condition false; the second one breaks.
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=$(Each)\n"
                              " If {\n  Condition=$(Counter)\n  Break\n }\n"
                              " Foreach {\n  Parameter=False\n }\n"
                              " For {\n  Begin=5\n  End=5\n  Add=1\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "False");
  int expansions = 0;
  int breaks = 0;
  for (const std::string& line : bed.diary()) {
    if (line.find("|$ $(Each)") != std::string::npos) ++expansions;
    if (line.find("|[Break]") != std::string::npos) ++breaks;
  }
  EXPECT_EQ(expansions, 1);
  EXPECT_EQ(breaks, 1);
}

TEST(JobCommandWhile, AConditionThatExpandsToNothingIsAnError) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("While {\n Condition=$(NoSuchName)\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is empty !\r\n  [command] While\r\n  "
                                       "[parameter] Condition\r\n"
                                       "  [value] $(NoSuchName)"});
}

TEST(JobCommandWhile, AMissingConditionIsAnError) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("While {\n Break\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                       "  [command] While\r\n  [parameter] Condition"});
}

TEST(JobCommandWhile, EscapeEndsItBehindARound) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey);
  EXPECT_FALSE(JobTestBed::run("While {\n Condition=True\n Else\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"User aborted !\r\n  [command] While"});
  const Lines diary = bed.diary();
  EXPECT_EQ(diary[5], "#End:Command#2"); // the round was finished
  EXPECT_EQ(diary[6], "#Error|$ UserAborted [command] While");
}

TEST(JobCommandWhile, EscapeIsNotAskedBehindABreakOrAFailure) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey);
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=True\n Break\n}"));
  EXPECT_FALSE(JobTestBed::run("While {\n Condition=True\n AbortExecution\n}"));
  EXPECT_TRUE(JobTestBed::run("While {\n Condition=False\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandWhile, EscapeHeldDownShowsOneDialogForNestedLoops) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey);
  EXPECT_FALSE(JobTestBed::run("While {\n Condition=True\n While {\n  Condition=True\n }\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"User aborted !\r\n  [command] While"});
}
