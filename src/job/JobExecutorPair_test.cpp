#include "job/JobExecutorPair.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace JobLayer;

TEST(JobExecutorPair, PrintsTheNameAloneWhenTheNumberIsZero) {
  EXPECT_EQ(JobExecutorPair::executor().text(), "Executor"_text);
  EXPECT_EQ(JobExecutorPair::user().text(), "User"_text);
  EXPECT_EQ(JobExecutorPair::system().text(), "System"_text);
}

TEST(JobExecutorPair, PrintsNameAndNumberOtherwise) {
  EXPECT_EQ(JobExecutorPair::command(17).text(), "Command#17"_text);
  EXPECT_EQ(JobExecutorPair::variable(12).text(), "Variable#12"_text);
  EXPECT_EQ(JobExecutorPair::command(-1).text(), "Command#-1"_text);
}

TEST(JobExecutorPair, PrintingLeavesTheNameAlone) {
  const JobExecutorPair pair = JobExecutorPair::command(3);
  EXPECT_EQ(pair.text(), "Command#3"_text);
  EXPECT_EQ(pair.name, "Command"_text);
  EXPECT_EQ(JobExecutorPair::command(0).text(), "Command"_text);
}
