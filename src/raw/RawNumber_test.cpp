#include "raw/RawNumber.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

struct Outcome {
  bool whole;
  uint16_t sign;
  int32_t base;
  uint64_t value;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};
void PrintTo(const Outcome& outcome, std::ostream* stream) {
  *stream << (outcome.whole ? "whole" : "fault") << " sign " << outcome.sign << " base "
          << outcome.base << " value " << outcome.value;
}

Outcome parsed(const std::string& bytes) {
  const RawString text = raw(bytes);
  RawNumberParser parser;
  const bool whole = parser.parse(text, text.all());
  return {whole, parser.sign, parser.base, parser.value};
}

TEST(RawNumberParser, StartsWithNothingRead) {
  const RawNumberParser parser;
  EXPECT_EQ(parser.sign, 0);
  EXPECT_EQ(parser.base, 10);
  EXPECT_EQ(parser.position, 0);
  EXPECT_EQ(parser.value, 0U);
}

TEST(RawNumberParser, DecimalNumbers) {
  EXPECT_EQ(parsed("0"), (Outcome{true, 0, 10, 0}));
  EXPECT_EQ(parsed("7"), (Outcome{true, 0, 10, 7}));
  EXPECT_EQ(parsed("1234567890123"), (Outcome{true, 0, 10, 1234567890123}));
  EXPECT_EQ(parsed("007"), (Outcome{true, 0, 10, 7}));
  EXPECT_EQ(parsed("00"), (Outcome{true, 0, 10, 0}));
}

TEST(RawNumberParser, AnEmptyRangeIsZero) {
  EXPECT_EQ(parsed(""), (Outcome{true, 0, 10, 0}));
  RawNumberParser parser;
  EXPECT_TRUE(parser.parse("12"_text, {1, 1}));
  EXPECT_TRUE(parser.parse("12"_text, {5, 9}));
  EXPECT_EQ(parser.value, 0U);
}

TEST(RawNumberParser, SignsAreKeptApart) {
  EXPECT_EQ(parsed("-12"), (Outcome{true, '-', 10, 12}));
  EXPECT_EQ(parsed("+12"), (Outcome{true, '+', 10, 12}));
  EXPECT_EQ(parsed("-"), (Outcome{false, '-', 10, 0}));
  EXPECT_EQ(parsed("+"), (Outcome{false, '+', 10, 0}));
  EXPECT_EQ(parsed("--1"), (Outcome{false, '-', 10, 0}));
  EXPECT_EQ(parsed("-5"), (Outcome{true, '-', 10, 5}));
}

TEST(RawNumberParser, Prefixes) {
  EXPECT_EQ(parsed("0xFF"), (Outcome{true, 0, 16, 255}));
  EXPECT_EQ(parsed("0xfF"), (Outcome{true, 0, 16, 255}));
  EXPECT_EQ(parsed("0b101"), (Outcome{true, 0, 2, 5}));
  EXPECT_EQ(parsed("-0x10"), (Outcome{true, '-', 16, 16}));
  EXPECT_EQ(parsed("0x"), (Outcome{true, 0, 16, 0}));
  EXPECT_EQ(parsed("0b"), (Outcome{true, 0, 2, 0}));
  EXPECT_EQ(parsed("-0x"), (Outcome{true, '-', 16, 0}));
}

TEST(RawNumberParser, CapitalLettersAreNoPrefixes) {
  EXPECT_EQ(parsed("0XFF"), (Outcome{false, 0, 10, 0}));
  EXPECT_EQ(parsed("0B1"), (Outcome{false, 0, 10, 0}));
}

TEST(RawNumberParser, AFaultKeepsWhatWasRead) {
  EXPECT_EQ(parsed("12a"), (Outcome{false, 0, 10, 12}));
  EXPECT_EQ(parsed("0x1G"), (Outcome{false, 0, 16, 1}));
  EXPECT_EQ(parsed("0b12"), (Outcome{false, 0, 2, 1}));
  EXPECT_EQ(parsed("1 "), (Outcome{false, 0, 10, 1}));
  EXPECT_EQ(parsed(" 1"), (Outcome{false, 0, 10, 0}));
  EXPECT_EQ(parsed("1x0"), (Outcome{false, 0, 10, 1}));
}

TEST(RawNumberParser, ASingleUnitMustBeADigit) {
  EXPECT_EQ(parsed("a"), (Outcome{false, 0, 10, 0}));
  EXPECT_EQ(parsed("-a"), (Outcome{false, '-', 10, 0}));
  EXPECT_EQ(parsed("x"), (Outcome{false, 0, 10, 0}));
}

TEST(RawNumberParser, ValuesWrapInSixtyFourBits) {
  EXPECT_EQ(parsed("18446744073709551615").value, UINT64_MAX);
  EXPECT_EQ(parsed("18446744073709551617"), (Outcome{true, 0, 10, 1}));
  EXPECT_EQ(parsed("0x1FFFFFFFFFFFFFFFF").value, UINT64_MAX);
}

TEST(RawNumberParser, ReadsOnlyTheRange) {
  RawNumberParser parser;
  EXPECT_TRUE(parser.parse("ab12cd"_text, {2, 4}));
  EXPECT_EQ(parser.value, 12U);
  EXPECT_EQ(parser.position, 4);
  EXPECT_FALSE(parser.parse("ab12cd"_text, {2, 99}));
  EXPECT_EQ(parser.position, 4) << "where the fault stands";
  EXPECT_TRUE(parser.parse("0x12"_text, {0, 1})) << "the prefix is cut off by the range";
  EXPECT_EQ(parser.base, 10);
}

TEST(RawNumberParser, APrefixNeedsBothUnitsInTheRange) {
  RawNumberParser parser;
  EXPECT_TRUE(parser.parse("-0x1"_text, {0, 2}));
  EXPECT_EQ(parser.base, 10);
  EXPECT_EQ(parser.value, 0U);
}

TEST(RawNumberParser, EachParseStartsAnew) {
  RawNumberParser parser;
  EXPECT_TRUE(parser.parse("-0xFF"_text, {0, 5}));
  EXPECT_TRUE(parser.parse("8"_text, {0, 1}));
  EXPECT_EQ(parser.sign, 0);
  EXPECT_EQ(parser.base, 10);
  EXPECT_EQ(parser.value, 8U);
}

TEST(RawNumberParser, WideTextsAreReadAlike) {
  RawNumberParser parser;
  EXPECT_TRUE(parser.parse(RawString::fromWide(u"0x1f"), {0, 4}));
  EXPECT_EQ(parser.value, 31U);
  EXPECT_FALSE(parser.parse(RawString::fromWide(u"１"), {0, 1})) << "only ASCII digits count";
}

TEST(RawNumberParser, ParseInBaseKnowsNoSignAndNoPrefix) {
  RawNumberParser parser;
  EXPECT_TRUE(parser.parseInBase("zZ"_text, {0, 2}, 36));
  EXPECT_EQ(parser.value, 35U * 36 + 35);
  EXPECT_EQ(parser.base, 36);
  EXPECT_FALSE(parser.parseInBase("-1"_text, {0, 2}, 10));
  EXPECT_EQ(parser.value, 0U);
  EXPECT_FALSE(parser.parseInBase("0x1"_text, {0, 3}, 16));
  EXPECT_TRUE(parser.parseInBase("12"_text, {2, 2}, 10));
  EXPECT_FALSE(parser.parseInBase("8"_text, {-5, 5}, 8));
  EXPECT_TRUE(parser.parseInBase("17"_text, {-5, 5}, 8));
  EXPECT_EQ(parser.value, 15U);
}

TEST(RawNumber, ToIntAppliesTheSignToTheLowBits) {
  EXPECT_EQ(toInt("42"_text), 42);
  EXPECT_EQ(toInt("-42"_text), -42);
  EXPECT_EQ(toInt("+42"_text), 42);
  EXPECT_EQ(toInt("0x10"_text), 16);
  EXPECT_EQ(toInt("-0b11"_text), -3);
  EXPECT_EQ(toInt("4294967295"_text), -1);
  EXPECT_EQ(toInt("4294967297"_text), 1);
  EXPECT_EQ(toInt("-2147483648"_text), INT32_MIN);
  EXPECT_EQ(toInt(""_text), 0);
}

TEST(RawNumber, ToIntGivesWhatWasReadUpToTheFault) {
  EXPECT_EQ(toInt("12a"_text), 12);
  EXPECT_EQ(toInt("-12 "_text), -12);
  EXPECT_EQ(toInt("abc"_text), 0);
  EXPECT_EQ(toInt("-"_text), 0);
}

TEST(RawNumber, IsNumberIsTheParsersAnswer) {
  EXPECT_TRUE(isNumber("0"_text));
  EXPECT_TRUE(isNumber(""_text));
  EXPECT_TRUE(isNumber("0x"_text));
  EXPECT_FALSE(isNumber("-"_text));
  EXPECT_FALSE(isNumber("12a"_text));
}

} // namespace
