#include "job/JobCommandElse.h"

#include "JobTestBed.h"

using namespace JobLayer;

namespace {

const std::string Mark = "Foreach {\n Parameter=ran\n}\n";
const std::string ElseMarks = "Else {\n" + Mark + "}\n";

bool elseRan(const std::string& script) {
  EXPECT_TRUE(JobTestBed::run(script));
  return JobTestBed::variable("Each") == "ran";
}

} // namespace

TEST(JobCommandElse, DoesNotRunAheadOfAnyIf) {
  const JobTestBed bed;
  EXPECT_FALSE(elseRan(ElseMarks));
}

TEST(JobCommandElse, RunsBehindAFalseIf) {
  const JobTestBed bed;
  EXPECT_TRUE(elseRan("If {\n Condition=False\n}\n" + ElseMarks));
}

TEST(JobCommandElse, DoesNotRunBehindATrueIf) {
  const JobTestBed bed;
  EXPECT_FALSE(elseRan("If {\n Condition=True\n}\n" + ElseMarks));
}

TEST(JobCommandElse, RunsAfterAFalseIfOfAnEarlierRun) {
  const JobTestBed bed;
  JobTestBed::addButton("x", "If {\n Condition=False\n}");
  EXPECT_TRUE(JobTestBed::runner().RunButton(0, "LButton"_text, {}));
  EXPECT_TRUE(elseRan(ElseMarks));
}

TEST(JobCommandElse, MayStandFarFromItsIf) {
  const JobTestBed bed;
  EXPECT_TRUE(elseRan("If {\n Condition=False\n}\nForeach {\n Parameter=x\n}\n" + ElseMarks));
}

TEST(JobCommandElse, TwoInARowBothRun) {
  const JobTestBed bed;
  EXPECT_TRUE(elseRan("If {\n Condition=False\n}\nElse\n" + ElseMarks));
  EXPECT_TRUE(JobTestBed::runner().hasFlag(JobCommandList::ElseRuns));
}

TEST(JobCommandElse, AnIfInItsBodyChangesWhatFollows) {
  const JobTestBed bed;
  EXPECT_FALSE(
      elseRan("If {\n Condition=False\n}\nElse {\n If {\n  Condition=True\n }\n}\n" + ElseMarks));
}

TEST(JobCommandElse, GivesTheResultOfItsBody) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("If {\n Condition=False\n}\nElse {\n AbortExecution\n}"));
  EXPECT_TRUE(JobTestBed::run("If {\n Condition=True\n}\nElse {\n AbortExecution\n}"));
}
