#include "job/JobCommandPutMessage.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobCommandPutMessage, ShowsTheTextWithItsOwnNameBelow) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Define {\n Who=Ada\n}\nPutMessage {\n Parameter=Hello $(Who)\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Hello Ada\r\n  [parameter] PutMessage"});
  EXPECT_EQ(bed.dialogs.captions, Lines{"Tarvellon"});
}

TEST(JobCommandPutMessage, WritesAnErrorLineAlthoughNothingFailed) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("PutMessage {\n Parameter=Hello\n}"));
  EXPECT_EQ(bed.diary()[2], "#Error|$ Hello [parameter] PutMessage");
  EXPECT_EQ(bed.diary()[3], "@Command#1>Executor|$ Success");
}

TEST(JobCommandPutMessage, AMessageKeyShowsThatKeysText) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("PutMessage {\n Parameter=UserAborted\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"User aborted !\r\n  [parameter] PutMessage"});
}

TEST(JobCommandPutMessage, AnEmptyTextIsReportedTheOtherWayRound) {
  for (const char* block : {"PutMessage", "PutMessage {\n Parameter=$(None)\n}"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run(block));
    EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                         "  [command] Parameter\r\n  [value] PutMessage"});
  }
}

TEST(JobCommandPutMessage, AFaultInTheTextFailsIt) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("PutMessage {\n Parameter=$(\n}"));
  EXPECT_EQ(bed.dialogs.reports.size(), 1U);
}
