#include "job/JobCommandFor.h"

#include "JobTestBed.h"
#include "TestKeys.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

constexpr int EscapeKey = 0x1B;

std::string loop(const std::string& begin, const std::string& end, const std::string& add,
                 const std::string& body) {
  return "For {\n Begin=" + begin + "\n End=" + end + "\n Add=" + add + "\n" + body + "\n}";
}

int count(const JobTestBed& bed, const std::string& part) {
  int found = 0;
  for (const std::string& line : bed.diary()) found += line.find(part) != std::string::npos ? 1 : 0;
  return found;
}

} // namespace

TEST(JobCommandFor, EqualNumbersRunNoRound) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run(loop("5", "5", "1", "AbortExecution")));
  EXPECT_EQ(JobTestBed::variable("Counter"), "5");
}

TEST(JobCommandFor, NumbersAreComparedByValue) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run(loop("0x10", "+16", "x", "AbortExecution")));
  EXPECT_EQ(JobTestBed::variable("Counter"), "16");
  EXPECT_TRUE(JobTestBed::run(loop("-0b11", "-3", "1", "AbortExecution")));
  EXPECT_EQ(JobTestBed::variable("Counter"), "-3");
  EXPECT_TRUE(JobTestBed::run(loop("4294967296", "0", "1", "AbortExecution")));
  EXPECT_EQ(JobTestBed::variable("Counter"), "0"); // 32 bits count
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandFor, NeverCounts) {
  const JobTestBed bed;
  // The inner loop's element tells the rounds apart: the second finds it and breaks.
  EXPECT_TRUE(JobTestBed::run(loop("0", "3", "1",
                                   "If {\n Condition=$(Each)\n Break\n}\n"
                                   "Foreach {\n Parameter=$(Counter)\n}")));
  EXPECT_EQ(JobTestBed::variable("Each"), "0");
  EXPECT_EQ(JobTestBed::variable("Counter"), "0");
  EXPECT_EQ(count(bed, "|[Break]"), 1);
}

TEST(JobCommandFor, SetsTheCounterAnewInEachRound) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run(loop("1", "3", "1",
                                   "If {\n Condition=$(Each)\n Break\n}\n"
                                   "Foreach {\n Parameter=x\n}\n" +
                                       loop("7", "7", "1", ""))));
  EXPECT_EQ(JobTestBed::variable("Counter"), "1");
}

TEST(JobCommandFor, RunsUntilEscape) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey);
  EXPECT_FALSE(JobTestBed::run(loop("0", "3", "1", "Else")));
  EXPECT_EQ(bed.dialogs.reports, Lines{"User aborted !\r\n  [command] For"});
  EXPECT_EQ(JobTestBed::variable("Counter"), "0");
  EXPECT_EQ(count(bed, "|[Else]"), 1);
}

TEST(JobCommandFor, AStepThatIsNoNumberIsSeenBehindTheFirstRound) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey); // which is asked for later
  EXPECT_FALSE(JobTestBed::run(loop("0", "3", "x", "Else")));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Incorrect number format !\r\n  [command] For\r\n"
                                       "  [parameter] Add\r\n  [value] x"});
  EXPECT_EQ(count(bed, "|[Else]"), 1);
}

TEST(JobCommandFor, AnEndThatIsNoNumberIsSeenBehindTheCounter) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run(loop("4", "3a", "x", "Else")));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Incorrect number format !\r\n  [command] For\r\n"
                                       "  [parameter] End\r\n  [value] 3a"});
  EXPECT_EQ(JobTestBed::variable("Counter"), "4");
  EXPECT_EQ(count(bed, "|[Else]"), 0);
}

TEST(JobCommandFor, ABeginThatIsNoNumberLeavesTheCounterAndTheBreakAlone) {
  const JobTestBed bed;
  JobTestBed::runner().setFlag(JobCommandList::BreakTravels, true);
  EXPECT_FALSE(JobTestBed::run(loop("x", "y", "z", "Else")));
  EXPECT_EQ(bed.dialogs.reports, Lines{"Incorrect number format !\r\n  [command] For\r\n"
                                       "  [parameter] Begin\r\n  [value] x"});
  EXPECT_FALSE(JobTestBed::hasVariable("Counter"));
  EXPECT_TRUE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
}

TEST(JobCommandFor, AllThreeValuesAreReadBeforeItGivesUp) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("For"));
  EXPECT_EQ(bed.dialogs.reports, (Lines{"Required parameter is missing !\r\n  "
                                        "[command] For\r\n  [parameter] Begin",
                                        "Required parameter is missing !\r\n  "
                                        "[command] For\r\n  [parameter] End",
                                        "Required parameter is missing !\r\n  "
                                        "[command] For\r\n  [parameter] Add"}));
  EXPECT_FALSE(JobTestBed::hasVariable("Counter"));
}

TEST(JobCommandFor, AFaultInOneValueEndsItBehindTheOthers) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run(loop("$(NoSuchName)", "3", "$(", "Else")));
  ASSERT_EQ(bed.dialogs.reports.size(), 2U);
  EXPECT_EQ(bed.dialogs.reports[0], "Required parameter is empty !\r\n  [command] For\r\n"
                                    "  [parameter] Begin\r\n  [value] $(NoSuchName)");
  EXPECT_EQ(count(bed, "|[Else]"), 0);
}

TEST(JobCommandFor, ValuesAreExpandedOnce) {
  const JobTestBed bed;
  JobTestBed::setVariable("Each", "1");
  EXPECT_TRUE(JobTestBed::run(loop("$(Each)", "2", "$(Each)",
                                   "If {\n Condition=$(Equal:$(Each):x)\n Break\n}\n"
                                   "Foreach {\n Parameter=x\n}")));
  EXPECT_EQ(JobTestBed::variable("Counter"), "1");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandFor, AFailureEndsItWithFalse) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run(loop("0", "1", "1", "AbortExecution")));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandFor, ABreakOfEarlierIsForgotten) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Break"));
  EXPECT_FALSE(JobTestBed::run(loop("0", "1", "1", "AbortExecution")));
  EXPECT_FALSE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
}
