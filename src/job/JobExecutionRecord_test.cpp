#include "job/JobExecutionRecord.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobExecutionRecord, BracketsARunInFourLines) {
  const JobTestBed bed;
  {
    JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(),
                              "(Button)x"_text);
    EXPECT_EQ(bed.diary(), (Lines{"#Begin:Executor", "@User>Executor|$ (Button)x"}));
  }
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Executor", "@User>Executor|$ (Button)x",
                                "@Executor>User|$ Success", "#End:Executor"}));
}

TEST(JobExecutionRecord, StampsEachLine) {
  const JobTestBed bed;
  { JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(), "x"_text); }
  const std::string log = bed.log();
  const std::string year = std::to_string(RawLayer::localTime().year);
  EXPECT_EQ(log.substr(0, 17 + 4), "#Begin:Executor:" + year + log[20]);
  EXPECT_EQ(log.substr(16 + 8, 1), ".");
  EXPECT_EQ(log.substr(16 + 15, 1), ".");
  EXPECT_EQ(log.substr(16 + 19, 2), "\r\n");
}

TEST(JobExecutionRecord, NamesParentAndSelf) {
  const JobTestBed bed;
  {
    JobExecutionRecord record(JobExecutorPair::command(5), JobExecutorPair::variable(12),
                              "$(Path:Temp)"_text);
    record.setResult("Success (C:\\Temp)"_text);
  }
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Variable#1", "@Command#1>Variable#1|$ $(Path:Temp)",
                                "@Variable#1>Command#1|$ Success (C:\\Temp)", "#End:Variable#1"}));
}

TEST(JobExecutionRecord, TakesSuccessFailedOrATextAsItsResult) {
  const JobTestBed bed;
  const auto result = [](auto value) {
    JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(), "x"_text);
    record.setResult(value);
  };
  result(true);
  result(false);
  result("Unknown ()"_text);
  result(RawString());
  const Lines diary = bed.diary();
  ASSERT_EQ(diary.size(), 16U);
  EXPECT_EQ(diary[2], "@Executor>User|$ Success");
  EXPECT_EQ(diary[6], "@Executor>User|$ Failed");
  EXPECT_EQ(diary[10], "@Executor>User|$ Unknown ()");
  EXPECT_EQ(diary[14], "@Executor>User|$ ");
}

TEST(JobExecutionRecord, ClosesOnce) {
  const JobTestBed bed;
  {
    JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(), "x"_text);
    record.close();
    record.setResult(false);
    record.close();
  }
  const Lines diary = bed.diary();
  ASSERT_EQ(diary.size(), 4U);
  EXPECT_EQ(diary[2], "@Executor>User|$ Success");
}

TEST(JobExecutionRecord, ACommandCarriesItsParametersWithoutAPrefix) {
  const JobTestBed bed;
  {
    JobExecutionRecord record(JobExecutorPair::executor(), JobExecutorPair::command(1), "If"_text,
                              "[If][Condition=True]"_text);
  }
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Command#1", "@Executor>Command#1|[If][Condition=True]",
                                "@Command#1>Executor|$ Success", "#End:Command#1"}));
}

TEST(JobExecutionRecord, ACommandHasItsTitleWhenParametersAreNotLogged) {
  const JobTestBed bed;
  JobFacts::instance().logCategories = "UC"_text;
  {
    JobExecutionRecord record(JobExecutorPair::executor(), JobExecutorPair::command(1), "If"_text,
                              "[If][Condition=True]"_text);
  }
  EXPECT_EQ(bed.diary()[1], "@Executor>Command#1|$ If");
}

TEST(JobExecutionRecord, KeepsQuietWithoutItsCategory) {
  const JobTestBed bed;
  JobFacts::instance().logCategories = "PV"_text;
  {
    JobExecutionRecord run(JobExecutorPair::user(), JobExecutorPair::executor(), "x"_text);
    JobExecutionRecord command(JobExecutorPair::executor(), JobExecutorPair::command(1), "If"_text,
                               "[If]"_text);
  }
  EXPECT_EQ(bed.diary(), Lines{});
  JobFacts::instance().logCategories = "C"_text;
  {
    JobExecutionRecord run(JobExecutorPair::user(), JobExecutorPair::executor(), "x"_text);
    JobExecutionRecord command(JobExecutorPair::executor(), JobExecutorPair::command(1), "If"_text,
                               "[If]"_text);
  }
  EXPECT_EQ(bed.diary().size(), 4U);
}
