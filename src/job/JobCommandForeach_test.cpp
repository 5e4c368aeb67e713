#include "job/JobCommandForeach.h"

#include "JobTestBed.h"
#include "TestKeys.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

constexpr int EscapeKey = 0x1B;

Lines elements(const std::string& text) {
  const RawString list = raw(text);
  Lines found;
  for (int32_t position = 0; position < list.length();)
    found.push_back(bytesOf(JobCommandForeach::takeElement(list, position)));
  return found;
}

// What Each was in each round, as the conditions of the body saw it.
Lines rounds(const JobTestBed& bed) {
  Lines found;
  for (const std::string& line : bed.diary()) {
    const std::size_t start = line.find("|$ Success (");
    if (start != std::string::npos)
      found.push_back(line.substr(start + 12, line.size() - start - 13));
  }
  return found;
}

const std::string Look = " If {\n  Condition=$(Each)\n }\n";

} // namespace

TEST(JobCommandForeach, ListsArePartedAtCommas) {
  EXPECT_EQ(elements("a"), Lines{"a"});
  EXPECT_EQ(elements("a,b,c"), (Lines{"a", "b", "c"}));
}

TEST(JobCommandForeach, ATrailingCommaGivesNoElement) {
  EXPECT_EQ(elements("a,b,"), (Lines{"a", "b"}));
  EXPECT_EQ(elements(","), Lines{""});
}

TEST(JobCommandForeach, AnEmptyElementCounts) {
  EXPECT_EQ(elements("a,,b"), (Lines{"a", "", "b"}));
  EXPECT_EQ(elements(",a"), (Lines{"", "a"}));
  EXPECT_EQ(elements("\"\",a"), (Lines{"", "a"}));
}

TEST(JobCommandForeach, ElementsAreNotTrimmed) {
  EXPECT_EQ(elements(" a , b "), (Lines{" a ", " b "}));
}

TEST(JobCommandForeach, QuotesProtectCommas) {
  EXPECT_EQ(elements("a,\"b,c\",d"), (Lines{"a", "b,c", "d"}));
  EXPECT_EQ(elements("\"a,b\""), Lines{"a,b"});
}

TEST(JobCommandForeach, WhatStandsBehindAClosingQuoteIsDropped) {
  EXPECT_EQ(elements("\"a\" and more,b"), (Lines{"a", "b"}));
  EXPECT_EQ(elements("\"a\"\"b\",c"), (Lines{"a", "c"}));
  EXPECT_EQ(elements("\"a\" rest"), Lines{"a"});
}

TEST(JobCommandForeach, AQuoteInsideAnElementIsPlain) {
  EXPECT_EQ(elements("a\"b,c\"d"), (Lines{"a\"b", "c\"d"}));
  EXPECT_EQ(elements(" \"a,b\""), (Lines{" \"a", "b\""}));
}

TEST(JobCommandForeach, AnOpenQuoteTakesTheRest) {
  EXPECT_EQ(elements("a,\"b,c"), (Lines{"a", "b,c"}));
  EXPECT_EQ(elements("a,\""), (Lines{"a", ""}));
}

TEST(JobCommandForeach, TrailBytesAreNoSigns) {
  // UTF-16 as bytes: U+2C41 has the sign's value in its second byte.
  const RawString list = RawString::fromBytes(RawLayer::EncodingUtf16Le, "\x41\x2C,\0\x41\x2C", 6);
  int32_t position = 0;
  EXPECT_EQ(JobCommandForeach::takeElement(list, position).length(), 2);
  EXPECT_EQ(elements("\xE3\x81\x82,\xE3\x80\x8C"), (Lines{"\xE3\x81\x82", "\xE3\x80\x8C"}));
}

TEST(JobCommandForeach, RunsItsBodyForEachElement) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=a,\"b,c\",,d\n" + Look + "}"));
  EXPECT_EQ(rounds(bed), (Lines{"a", "b,c", "", "d"}));
  EXPECT_EQ(JobTestBed::variable("Each"), "d");
}

TEST(JobCommandForeach, TwoRoundsForAListWithATrailingComma) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=a,b,\n" + Look + "}"));
  EXPECT_EQ(rounds(bed), (Lines{"a", "b"}));
}

TEST(JobCommandForeach, TheListIsExpandedOnce) {
  const JobTestBed bed;
  JobTestBed::setVariable("Each", "x,y");
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=$(Each)\n}"));
  EXPECT_EQ(rounds(bed), Lines{"x,y"});
  EXPECT_EQ(JobTestBed::variable("Each"), "y");
}

TEST(JobCommandForeach, ADropListIsOneElementUpToItsFirstQuote) {
  const JobTestBed bed;
  JobTestBed::setVariable("DropList", "\"C:\\a b\" \"C:\\c\"");
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=$(DropList)\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "C:\\a b");
}

TEST(JobCommandForeach, AnEmptyListIsAnError) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Foreach {\n Parameter=\n}"));
  EXPECT_FALSE(JobTestBed::run("Foreach {\n Parameter=$(Missing)\n}"));
  EXPECT_EQ(bed.dialogs.reports, (Lines{"Required parameter is missing !\r\n  [command] Foreach\r\n"
                                        "  [parameter] Parameter",
                                        "Required parameter is empty !\r\n  [command] Foreach\r\n"
                                        "  [parameter] Parameter\r\n  [value] $(Missing)"}));
}

TEST(JobCommandForeach, ABreakEndsItWithTruth) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=a,b\n Break\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "a");
  EXPECT_FALSE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
}

TEST(JobCommandForeach, AFailureEndsItWithFalse) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Foreach {\n Parameter=a,b\n AbortExecution\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "a");
}

TEST(JobCommandForeach, EscapeEndsItWithItsNameInTheValuesPlace) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey);
  EXPECT_FALSE(JobTestBed::run("Foreach {\n Parameter=a,b\n}"));
  EXPECT_EQ(bed.dialogs.reports, Lines{"User aborted !\r\n  [value] Foreach"});
  EXPECT_EQ(JobTestBed::variable("Each"), "a");
}

TEST(JobCommandForeach, EscapeIsAskedBehindTheLastRoundToo) {
  JobTestBed bed;
  TestKeys keys;
  keys.press(EscapeKey);
  EXPECT_FALSE(JobTestBed::run("Foreach {\n Parameter=a\n}"));
  EXPECT_EQ(bed.dialogs.reports.size(), 1U);
}

TEST(JobCommandForeach, ALongListTakesNoTimeToSpeakOf) {
  std::string list;
  for (int i = 0; i < 100000; ++i) list += "\"" + std::to_string(i) + "\",";
  EXPECT_EQ(elements(list).size(), 100000U);
}
