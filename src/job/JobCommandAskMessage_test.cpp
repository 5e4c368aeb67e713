#include "job/JobCommandAskMessage.h"

#include "JobMainDialog.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

Lines labelsOf(const std::string& buttons) {
  RawLayer::RawStringList list;
  JobWindowContext::splitLabels(raw(buttons), list);
  Lines labels;
  for (const RawLayer::RawString& label : list.elements()) labels.push_back(bytesOf(label));
  return labels;
}

} // namespace

TEST(JobCommandAskMessage, LabelsAreCutAtCommasAndSlashes) {
  EXPECT_EQ(labelsOf("Start,Stop"), (Lines{"Start", "Stop"}));
  EXPECT_EQ(labelsOf("A/B"), (Lines{"A", "B"}));
  EXPECT_EQ(labelsOf("A/B,C"), (Lines{"A", "B", "C"}));
  EXPECT_EQ(labelsOf("\"a,b\",\"c/d\",e"), (Lines{"a,b", "c/d", "e"}));
  EXPECT_EQ(labelsOf("\"open,x"), (Lines{"\"open,x"}));
  EXPECT_EQ(labelsOf("One"), (Lines{"One"}));
  EXPECT_EQ(labelsOf("A/"), (Lines{"A", ""}));
  EXPECT_EQ(labelsOf("/A"), (Lines{"", "A"}));
  EXPECT_EQ(labelsOf(""), Lines{});
}

TEST(JobCommandAskMessage, TheAnswerIsTheLabel) {
  JobMainDialog bed;
  bed.user.answer = 2;
  EXPECT_TRUE(JobTestBed::run("AskMessage {\n Parameter=Go $(x)?\n Button=Start,Stop\n}"));
  EXPECT_EQ(JobTestBed::variable("Result"), "Stop");
  EXPECT_EQ(bed.user.asked, Lines{"Go ?"});
}

TEST(JobCommandAskMessage, WithoutButtonsItAsksYesOrNo) {
  JobMainDialog bed;
  EXPECT_TRUE(JobTestBed::run("AskMessage {\n Parameter=Go ?\n}"));
  EXPECT_EQ(bed.user.labels, (Lines{"Yes", "No"}));
  EXPECT_EQ(JobTestBed::variable("Result"), "Yes");
}

TEST(JobCommandAskMessage, AnAnswerToAbortByStopsTheRunAndLeavesTheResult) {
  JobMainDialog bed;
  bed.user.answer = 2;
  JobTestBed::setVariable("Result", "before");
  EXPECT_FALSE(JobTestBed::run("AskMessage {\n Parameter=Go ?\n Button=Start,Stop\n"
                               " AbortBy=Stop\n}"));
  EXPECT_EQ(JobTestBed::variable("Result"), "before");
  EXPECT_TRUE(bed.user.reports.empty());
}

TEST(JobCommandAskMessage, AbortByComparesExactly) {
  JobMainDialog bed;
  bed.user.answer = 2;
  EXPECT_TRUE(JobTestBed::run("AskMessage {\n Parameter=Go ?\n AbortBy=no\n}"));
  EXPECT_EQ(JobTestBed::variable("Result"), "No");
}

TEST(JobCommandAskMessage, AClosedDialogStopsTheRun) {
  for (const int32_t answer : {0, 3, -1}) {
    JobMainDialog bed;
    bed.user.answer = answer;
    EXPECT_FALSE(JobTestBed::run("AskMessage {\n Parameter=Go ?\n}"));
    EXPECT_FALSE(JobTestBed::hasVariable("Result") && !JobTestBed::variable("Result").empty());
  }
}

TEST(JobCommandAskMessage, TheAnswerStandsInTheLog) {
  JobMainDialog bed;
  EXPECT_TRUE(JobTestBed::run("AskMessage {\n Parameter=Go ?\n}"));
  const Lines diary = bed.diary();
  const Lines record(diary.begin() + 2, diary.begin() + 6);
  EXPECT_EQ(record, (Lines{"#Begin:Command#1", "@User>Command#1|$ (Ask)Go ?",
                           "@Command#1>User|$ Yes", "#End:Command#1"}));
}

TEST(JobCommandAskMessage, WithoutAMainDialogItEndsTheRunWithoutAQuestion) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("AskMessage {\n Parameter=Go ?\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
  EXPECT_EQ(bed.diary().size(), 4U);
}

TEST(JobCommandAskMessage, AMissingTextIsReported) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("AskMessage"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                       "  [command] AskMessage\r\n  [parameter] Parameter"});
}

TEST(JobCommandAskMessage, AFaultInButtonsOrAbortByStopsIt) {
  for (const char* key : {"Button", "AbortBy"}) {
    JobMainDialog bed;
    EXPECT_FALSE(JobTestBed::run(std::string("AskMessage {\n Parameter=x\n ") + key + "=$(\n}"));
    EXPECT_EQ(bed.user.reports.size(), 1U);
    EXPECT_TRUE(bed.user.asked.empty());
  }
}
