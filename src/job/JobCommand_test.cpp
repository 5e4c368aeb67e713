#include "job/JobCommand.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

// A command outside the table, for the ways to read values.
class Reader final : public JobCommandUnitEx {
 public:
  Reader() : JobCommandUnitEx("Reader"_text) {}
  bool Execute(const JobParamList&, const JobExecutorPair&) override { return true; }

  std::string required(const std::string& script) {
    return bytesOf(
        requiredValue(JobTestBed::script(script), "Key"_text, JobExecutorPair::command(9)));
  }
  static std::string optional(const std::string& script) {
    return bytesOf(
        optionalValue(JobTestBed::script(script), "Key"_text, JobExecutorPair::command(9)));
  }
  static bool failed() { return expansionFailed(); }
  // The number in the text, or 99 for none.
  static int32_t number(const std::string& text) {
    int32_t value = 0;
    return readNumber(raw(text), value) ? value : 99;
  }
};

} // namespace

TEST(JobCommand, AnOptionalValueIsExpanded) {
  const JobTestBed bed;
  JobTestBed::setVariable("x", "abc");
  EXPECT_EQ(Reader::optional("Key=<$(x)>"), "<abc>");
  EXPECT_FALSE(Reader::failed());
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommand, AnOptionalValueMayBeMissingEmptyOrABlock) {
  const JobTestBed bed;
  EXPECT_EQ(Reader::optional(""), "");
  EXPECT_EQ(Reader::optional("Key="), "");
  EXPECT_EQ(Reader::optional("Key\nKey=x"), "");
  EXPECT_EQ(Reader::optional("key=x"), "");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommand, AFaultOfAnOptionalValueIsKept) {
  const JobTestBed bed;
  Reader::optional("Key=$(x");
  EXPECT_TRUE(Reader::failed());
  EXPECT_EQ(bed.dialogs.reports.size(), 1U);
  Reader::optional("Key=x");
  EXPECT_FALSE(Reader::failed());
}

TEST(JobCommand, ValuesAreExpandedInTheNameOfTheCaller) {
  const JobTestBed bed;
  JobTestBed::setVariable("x", "abc");
  Reader::optional("Key=$(x)");
  EXPECT_EQ(bed.diary()[1], "@Command#1>Variable#1|$ $(x)");
}

TEST(JobCommand, TheFirstOfTwoEntriesCounts) {
  const JobTestBed bed;
  Reader reader;
  EXPECT_EQ(reader.required("Key=a\nKey=b"), "a");
  EXPECT_EQ(reader.required("Key {\n}\nKey=b"), "");
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                       "  [command] Reader\r\n  [parameter] Key"});
}

TEST(JobCommand, ARequiredValueThatIsMissingIsReported) {
  Reader reader;
  const Lines missing{"Required parameter is missing !\r\n  [command] "
                      "Reader\r\n  [parameter] Key"};
  for (const char* script : {"", "Key=", "Key", "key=x"}) {
    const JobTestBed bed;
    EXPECT_EQ(reader.required(script), "") << script;
    EXPECT_EQ(bed.dialogs.reports, missing) << script;
  }
}

TEST(JobCommand, ARequiredValueThatExpandsToNothingIsReportedWithItsText) {
  const JobTestBed bed;
  Reader reader;
  EXPECT_EQ(reader.required("Key=$(NoSuchName)"), "");
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is empty !\r\n  [command] Reader\r\n  "
                                       "[parameter] Key\r\n"
                                       "  [value] $(NoSuchName)"});
}

TEST(JobCommand, ARequiredValueWithAFaultHasOneReport) {
  const JobTestBed bed;
  Reader reader;
  EXPECT_EQ(reader.required("Key=abc$("), "");
  ASSERT_EQ(bed.dialogs.reports.size(), 1U);
  EXPECT_EQ(bed.dialogs.reports[0].substr(0, 29), "Unbalanced variable block !\r\n");
}

TEST(JobCommand, ARequiredValueOfBlanksIsNotEmpty) {
  const JobTestBed bed;
  Reader reader;
  EXPECT_EQ(reader.required("Key=  x"), "  x");
  JobTestBed::setVariable("blank", " ");
  EXPECT_EQ(reader.required("Key=$(blank)"), " ");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommand, NumbersMayHaveASignAndAPrefix) {
  EXPECT_EQ(Reader::number("12"), 12);
  EXPECT_EQ(Reader::number("-12"), -12);
  EXPECT_EQ(Reader::number("+12"), 12);
  EXPECT_EQ(Reader::number("0x1F"), 31);
  EXPECT_EQ(Reader::number("-0b101"), -5);
  EXPECT_EQ(Reader::number("0x"), 0);
  EXPECT_EQ(Reader::number(""), 0);
  EXPECT_EQ(Reader::number("4294967297"), 1); // the low 32 bits count
}

TEST(JobCommand, WhatTheParserRefusesIsNoNumber) {
  for (const char* text : {"x", "12a", "-", " 1", "1 ", "0XFF", "1.5", "0xG"})
    EXPECT_EQ(Reader::number(text), 99) << text;
}
