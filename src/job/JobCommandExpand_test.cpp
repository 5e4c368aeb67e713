#include "job/JobCommandExpand.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

// A command that shows what its block became: the value of `x` as it stood after the rewrite.
std::string rewritten(const std::string& script) {
  EXPECT_TRUE(JobTestBed::run(script)) << script;
  return JobTestBed::variable("x");
}

} // namespace

TEST(JobCommandExpand, RewritesTheBlocksBelow) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Expand {\n Name=notepad\n Define {\n  x=run $(Name) now\n }\n}"),
            "run notepad now");
  EXPECT_FALSE(JobTestBed::hasVariable("Name"));
}

TEST(JobCommandExpand, TheSecondInAValueIsLeftToTheExpander) {
  const JobTestBed bed;
  JobTestBed::setVariable("N", "variable");
  EXPECT_TRUE(JobTestBed::run("Expand {\n N=early\n Foreach {\n  Parameter=$(N) $(N)\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "early variable");
}

TEST(JobCommandExpand, WhatIsNoKeyOfItStaysForTheCommand) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Expand {\n N=1\n Define {\n  x=$(N) $(Drop)\n }\n}"), "1 $(Drop)");
}

TEST(JobCommandExpand, ReplacesOnlyTheFirstInAValue) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Expand {\n N=1\n Define {\n  x=$(N)$(N)\n }\n}"), "1$(N)");
}

TEST(JobCommandExpand, ReadsItsValuesEarly) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Define {\n Now=early\n}\nExpand {\n N=$(Now)\n Define {\n  Now=late\n }\n"
                      " Define {\n  x=$(N)\n }\n}"),
            "late"); // each block is rewritten with the value of its own moment
  EXPECT_EQ(rewritten("Define {\n Now=early\n}\nExpand {\n N=$(Now)\n Define {\n  x=$(N)\n"
                      "  Now=late\n }\n}"),
            "early");
}

TEST(JobCommandExpand, WithoutSubstitutionsItsBlocksRunAsTheyStand) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Expand {\n Define {\n  x=$(N)\n }\n}"), "$(N)");
}

TEST(JobCommandExpand, ABlockAboveTheFirstKeyIsNotRewritten) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Expand {\n Define {\n  x=$(N)\n }\n N=1\n Define {\n  y=$(N)\n }\n}"),
            "$(N)");
  EXPECT_EQ(JobTestBed::variable("y"), "1");
}

TEST(JobCommandExpand, ReachesEveryLevelAndLeavesTheSourceAlone) {
  const JobTestBed bed;
  const JobParamList script = JobTestBed::script(
      "Expand {\n N=$(Each)\n If {\n  Condition=True\n  Define {\n   x=$(N)\n  }\n }\n}");
  RawLayer::RawString before;
  script.summarizeAll(before);
  JobTestBed::setVariable("Each", "one");
  EXPECT_TRUE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(JobTestBed::variable("x"), "one");
  JobTestBed::setVariable("Each", "two");
  EXPECT_TRUE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(JobTestBed::variable("x"), "two");
}

TEST(JobCommandExpand, ALaterSubstitutionSeesWhatAnEarlierInserted) {
  const JobTestBed bed;
  EXPECT_EQ(rewritten("Expand {\n A=$\n B=done\n Define {\n  x=$(A)(B)\n }\n}"), "done");
  EXPECT_EQ(rewritten("Expand {\n B=done\n A=$\n Define {\n  x=$(A)(B)\n }\n}"), "$(B)");
  EXPECT_EQ(rewritten("Expand {\n A=a\n A=b\n Define {\n  x=$(A)$(A)\n }\n}"), "ab");
}

TEST(JobCommandExpand, KeysAreNotTouched) {
  const JobTestBed bed;
  JobTestBed::addAction("act", "Define {\n Ran=yes\n}");
  EXPECT_TRUE(JobTestBed::run("Expand {\n Name=act\n Action {\n  Name=$(Name)\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Ran"), "yes");
}

TEST(JobCommandExpand, TheFirstFailureStopsIt) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Expand {\n AbortExecution\n Define {\n  x=1\n }\n}"));
  EXPECT_FALSE(JobTestBed::hasVariable("x"));
}

TEST(JobCommandExpand, AFaultInAValueStopsItWithTheExpandersReport) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Expand {\n N=$(open\n Define {\n  x=1\n }\n}"));
  ASSERT_EQ(bed.dialogs.reports.size(), 1U);
  EXPECT_EQ(bed.dialogs.reports[0].rfind("Unbalanced variable block !", 0), 0U);
  EXPECT_FALSE(JobTestBed::hasVariable("x"));
}

TEST(JobCommandExpand, AFaultyValueWithoutABlockBelowIsNeverRead) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Expand {\n N=$(open\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandExpand, AnUnknownKeywordInsideIsReported) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Expand {\n Foo\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"No such command !\r\n  [command] Foo"});
}

TEST(JobCommandExpand, ItsBlocksNameItAsTheirParent) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Expand {\n N=1\n Define {\n  x=$(N)\n }\n}"));
  EXPECT_EQ(bed.diary()[3], "@Command#1>Command#2|[Define][x=1]");
}
