#include "job/JobCommandPickup.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobCommandPickup, TakesTheValueOfTheKey) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n Which=b\n}\nPickup {\n Parameter=$(Which)\n a=1\n"
                              " b=$(Which)2\n b=3\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "b2");
}

TEST(JobCommandPickup, ATextThatMatchesNoKeyGivesNothingAndGoesOn) {
  const JobTestBed bed;
  JobTestBed::setVariable("Pickup", "old");
  EXPECT_TRUE(JobTestBed::run("Pickup {\n Parameter=A\n a=1\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "");
}

TEST(JobCommandPickup, KeysAreNotExpandedAndABlockGivesNothing) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n k=a\n}\nPickup {\n Parameter=a\n $(k)=1\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "");
  EXPECT_TRUE(JobTestBed::run("Pickup {\n Parameter=a\n a {\n }\n a=1\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "");
}

TEST(JobCommandPickup, TheParameterIsACandidateItself) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Pickup {\n Parameter=Parameter\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "Parameter");
}

TEST(JobCommandPickup, AFailedExpansionOfTheValueStillSucceeds) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Pickup {\n Parameter=a\n a=x$(\n}"));
  EXPECT_EQ(bed.dialogs.reports.size(), 1U);
  EXPECT_FALSE(JobTestBed::run("Pickup {\n Parameter=$(\n}"));
}

TEST(JobCommandPickup, AnEmptyTextIsReportedTheOtherWayRound) {
  for (const char* block : {"Pickup", "Pickup {\n Parameter=$(None)\n}"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run(block));
    EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                         "  [command] Parameter\r\n  [value] Pickup"});
  }
}
