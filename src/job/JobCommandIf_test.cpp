#include "job/JobCommandIf.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

// A body that ran sets the variable Each.
bool bodyRan(const std::string& condition) {
  JobTestBed::setVariable("Each", "");
  EXPECT_TRUE(
      JobTestBed::run("If {\n Condition=" + condition + "\n Foreach {\n  Parameter=ran\n }\n}"));
  return JobTestBed::variable("Each") == "ran";
}

bool elseMayRun() {
  return JobTestBed::runner().hasFlag(JobCommandList::ElseRuns);
}

} // namespace

TEST(JobCommandIf, FalseInAnyCaseAndNothingAreFalse) {
  const JobTestBed bed;
  for (const char* text : {"False", "false", "FALSE", "fAlSe", "$(NoSuchName)", "$(Missing)"})
    EXPECT_FALSE(bodyRan(text)) << text;
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandIf, AllElseIsTrue) {
  const JobTestBed bed;
  for (const char* text : {"True", "0", "No", " False", "Falsehood", "x", "$"})
    EXPECT_TRUE(bodyRan(text)) << text;
}

TEST(JobCommandIf, TellsAnElseWhetherItMayRun) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("If {\n Condition=False\n}"));
  EXPECT_TRUE(elseMayRun());
  EXPECT_TRUE(JobTestBed::run("If {\n Condition=True\n}"));
  EXPECT_FALSE(elseMayRun());
}

TEST(JobCommandIf, TheOuterConditionCountsForWhatFollows) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("If {\n Condition=True\n If {\n  Condition=False\n }\n}"));
  EXPECT_FALSE(elseMayRun());
}

TEST(JobCommandIf, TheInnerConditionCountsInsideTheBody) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("If {\n Condition=True\n If {\n  Condition=False\n }\n"
                              " Else {\n  Foreach {\n   Parameter=ran\n  }\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "ran");
  EXPECT_FALSE(elseMayRun());
}

TEST(JobCommandIf, AFailingBodyFailsItAndClearsTheFlag) {
  const JobTestBed bed;
  JobTestBed::runner().setFlag(JobCommandList::ElseRuns, true);
  EXPECT_FALSE(JobTestBed::run("If {\n Condition=True\n AbortExecution\n}"));
  EXPECT_FALSE(elseMayRun());
}

TEST(JobCommandIf, AMissingConditionIsReportedTheOtherWayRound) {
  for (const char* block : {"If {\n}", "If {\n Condition=\n}", "If {\n Condition {\n }\n}", "If",
                            "If {\n condition=True\n}", "If {\n Condition\n Condition=True\n}"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run(block)) << block;
    EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                         "  [command] Condition\r\n"
                                         "  [value] If"})
        << block;
    EXPECT_EQ(bed.diary()[2], "#Error|$ RequiredParameterIsMissing [command] Condition [value] If");
    EXPECT_FALSE(elseMayRun());
  }
}

TEST(JobCommandIf, AFaultInTheConditionFailsItAndLeavesTheFlag) {
  for (const bool flag : {true, false}) {
    const JobTestBed bed;
    JobTestBed::runner().setFlag(JobCommandList::ElseRuns, flag);
    EXPECT_FALSE(JobTestBed::run("If {\n Condition=$(x\n AbortExecution\n}"));
    EXPECT_EQ(bed.dialogs.reports.size(), 1U);
    EXPECT_EQ(elseMayRun(), flag);
  }
}

TEST(JobCommandIf, TheConditionIsExpandedInItsName) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("If {\n Condition=$(ExitCode)\n}"));
  EXPECT_EQ(bed.diary()[3], "@Command#1>Variable#1|$ $(ExitCode)");
}
