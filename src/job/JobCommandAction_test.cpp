#include "job/JobCommandAction.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobCommandAction, RunsTheActionWithItsTruth) {
  const JobTestBed bed;
  JobTestBed::addAction("Good", "Define {\n Ran=yes\n}");
  JobTestBed::addAction("Bad", "AbortExecution");
  EXPECT_TRUE(JobTestBed::run("Action {\n Name=Good\n}"));
  EXPECT_EQ(JobTestBed::variable("Ran"), "yes");
  EXPECT_FALSE(JobTestBed::run("Action {\n Name=Bad\n}"));
}

TEST(JobCommandAction, WithOnlyANameItSetsNoVariable) {
  const JobTestBed bed;
  JobTestBed::addAction("A", "");
  const int32_t before = JobVariableStore::instance().count();
  EXPECT_TRUE(JobTestBed::run("Action {\n Name=A\n}"));
  EXPECT_EQ(JobVariableStore::instance().count(), before);
}

TEST(JobCommandAction, ItsArgumentsAreUnexpandedVariablesThatStay) {
  const JobTestBed bed;
  JobTestBed::addAction("A", "Foreach {\n Parameter=$(Who)\n}");
  EXPECT_TRUE(JobTestBed::run("Define {\n Me=Ada\n}\nAction {\n Name=A\n Who=$(Me)\n"
                              " Inner {\n  x=y\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "Ada");
  EXPECT_EQ(JobTestBed::variable("Who"), "$(Me)");
  EXPECT_FALSE(JobTestBed::hasVariable("Name"));
  EXPECT_FALSE(JobTestBed::hasVariable("x"));
}

TEST(JobCommandAction, ArgumentsStayAlsoWhenItFails) {
  const JobTestBed bed;
  JobTestBed::addAction("Bad", "AbortExecution");
  EXPECT_FALSE(JobTestBed::run("Action {\n Name=Bad\n Who=x\n}"));
  EXPECT_EQ(JobTestBed::variable("Who"), "x");
}

TEST(JobCommandAction, TheNameIsExpanded) {
  const JobTestBed bed;
  JobTestBed::addAction("Real", "Define {\n Ran=yes\n}");
  EXPECT_TRUE(JobTestBed::run("Define {\n Which=Real\n}\nAction {\n Name=$(Which)\n}"));
  EXPECT_EQ(JobTestBed::variable("Ran"), "yes");
}

TEST(JobCommandAction, TheFirstOfTwoEqualNamesRuns) {
  const JobTestBed bed;
  JobTestBed::addAction("A", "Define {\n Ran=first\n}");
  JobTestBed::addAction("A", "Define {\n Ran=second\n}");
  EXPECT_TRUE(JobTestBed::run("Action {\n Name=A\n}"));
  EXPECT_EQ(JobTestBed::variable("Ran"), "first");
}

TEST(JobCommandAction, AnUnknownNameIsReported) {
  const JobTestBed bed;
  JobTestBed::addAction("Known", "");
  EXPECT_FALSE(JobTestBed::run("Action {\n Name=known\n Who=x\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"No such defined action !\r\n  [command] Action\r\n"
                                       "  [parameter] Name\r\n  [value] known"});
  EXPECT_FALSE(JobTestBed::hasVariable("Who"));
}

TEST(JobCommandAction, AMissingNameIsReported) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Action"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n  [command] Action\r\n"
                                       "  [parameter] Name"});
}

TEST(JobCommandAction, ANameThatExpandsToNothingIsReportedWithItsText) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Action {\n Name=$(Nothing)\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is empty !\r\n  [command] Action\r\n"
                                       "  [parameter] Name\r\n  [value] $(Nothing)"});
}

TEST(JobCommandAction, ABreakInsideEndsTheLoopOfTheCaller) {
  const JobTestBed bed;
  JobTestBed::addAction("Leave", "Break");
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=1,2,3\n Action {\n  Name=Leave\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "1");
}

TEST(JobCommandAction, ItsCommandsNameItAsTheirParent) {
  const JobTestBed bed;
  JobTestBed::addAction("A", "Define");
  EXPECT_TRUE(JobTestBed::run("Action {\n Name=A\n}"));
  EXPECT_EQ(bed.diary()[3], "@Command#1>Command#2|[Define]");
}
