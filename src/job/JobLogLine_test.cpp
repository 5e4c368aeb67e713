#include "job/JobLogLine.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

constexpr RawMoment Evening{2024, 10, 7, 18, 15, 30, 42};

std::string event(const RawString& first, const RawString& second, const RawString& prefix,
                  const RawString& detail) {
  return bytesOf(JobLogLine::event("Begin"_text, first, second, Evening, prefix, detail));
}

} // namespace

TEST(JobLogLine, StampsHaveTwoPointsAndFixedWidths) {
  EXPECT_EQ(JobLogLine::stamp(Evening), "20241007.181530.042"_text);
  EXPECT_EQ(JobLogLine::stamp({1, 2, 3, 4, 5, 6, 7}), "00010203.040506.007"_text);
  EXPECT_EQ(JobLogLine::stamp({9999, 12, 31, 23, 59, 59, 999}), "99991231.235959.999"_text);
}

TEST(JobLogLine, AnEventHasAPlaceForEachTextThatIsNotEmpty) {
  EXPECT_EQ(event(""_text, ""_text, ""_text, ""_text), "#Begin:20241007.181530.042\r\n");
  EXPECT_EQ(event("Variable#12"_text, ""_text, ""_text, ""_text),
            "#Begin:Variable#12:20241007.181530.042\r\n");
  EXPECT_EQ(event("a"_text, "b"_text, ""_text, ""_text), "#Begin:a:b:20241007.181530.042\r\n");
  EXPECT_EQ(event(""_text, "b"_text, ""_text, ""_text), "#Begin:b:20241007.181530.042\r\n");
}

TEST(JobLogLine, AnEventWithADetailHasItBehindItsPrefix) {
  EXPECT_EQ(event(""_text, ""_text, JobLogLine::prefix(), "NoSuchCommand [command] x"_text),
            "#Begin:20241007.181530.042|$ NoSuchCommand [command] x\r\n");
  EXPECT_EQ(event(""_text, ""_text, ""_text, "x"_text), "#Begin:20241007.181530.042|x\r\n");
  // Without a detail its prefix goes, too.
  EXPECT_EQ(event(""_text, ""_text, JobLogLine::prefix(), ""_text),
            "#Begin:20241007.181530.042\r\n");
}

TEST(JobLogLine, ATransitionAlwaysHasTheBar) {
  const auto transition = [](const RawString& prefix, const RawString& detail) {
    return bytesOf(
        JobLogLine::transition("Executor"_text, "Variable#12"_text, Evening, prefix, detail));
  };
  EXPECT_EQ(transition(JobLogLine::prefix(), "$(Path:Temp)"_text),
            "@Executor>Variable#12:20241007.181530.042|$ $(Path:Temp)\r\n");
  EXPECT_EQ(transition(""_text, "[Shell]"_text),
            "@Executor>Variable#12:20241007.181530.042|[Shell]\r\n");
  EXPECT_EQ(transition(""_text, ""_text), "@Executor>Variable#12:20241007.181530.042|\r\n");
  EXPECT_EQ(transition(JobLogLine::prefix(), ""_text),
            "@Executor>Variable#12:20241007.181530.042|$ \r\n");
}

TEST(JobLogLine, ACommentHasNothingBetweenItsTexts) {
  EXPECT_EQ(JobLogLine::comment("a"_text), "// a\r\n"_text);
  EXPECT_EQ(JobLogLine::comment("a"_text, "b"_text, "c"_text), "// abc\r\n"_text);
  EXPECT_EQ(JobLogLine::comment(""_text), "// \r\n"_text);
}

TEST(JobLogLine, TheZoneHasASignAndTwoDigitsEach) {
  EXPECT_EQ(JobLogLine::zone(0), "UTC+00:00"_text);
  EXPECT_EQ(JobLogLine::zone(540), "UTC+09:00"_text);
  EXPECT_EQ(JobLogLine::zone(345), "UTC+05:45"_text);
  EXPECT_EQ(JobLogLine::zone(-210), "UTC-03:30"_text);
  EXPECT_EQ(JobLogLine::zone(-30), "UTC-00:30"_text);
  EXPECT_EQ(JobLogLine::zone(840), "UTC+14:00"_text);
}

TEST(JobLogLine, TextsStandInTheLineAsTheyAre) {
  const RawString bytes = raw("\xE3\x81\x82|:>\t\xFF");
  EXPECT_EQ(bytesOf(JobLogLine::transition(bytes, bytes, Evening, ""_text, bytes)),
            "@\xE3\x81\x82|:>\t\xFF>\xE3\x81\x82|:>\t\xFF:20241007.181530.042|"
            "\xE3\x81\x82|:>\t\xFF"
            "\r\n");
}

TEST(JobLogLine, ALineIsBuiltInOneAllocation) {
  const RawString detail = raw(std::string(1000, 'x'));
  const RawString line =
      JobLogLine::transition("Executor"_text, "Command#1"_text, Evening, ""_text, detail);
  EXPECT_EQ(line.length(), 1000 + 1 + 8 + 1 + 9 + 1 + 19 + 1 + 2);
  EXPECT_LT(line.capacity(), 1100);
}
