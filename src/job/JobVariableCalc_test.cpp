#include "job/JobVariableCalc.h"

#include "JobExpansion.h"

using namespace JobLayer;

namespace {

// What the arithmetic gives, or "fault".
std::string calc(const std::string& expression) {
  RawString result = "untouched"_text;
  if (calculate(raw(expression), result)) return bytesOf(result);
  EXPECT_EQ(result, "untouched"_text);
  return "fault";
}

} // namespace

TEST(JobVariableCalc, TighterOperatorsGoFirst) {
  EXPECT_EQ(calc("1+2*3"), "7");
  EXPECT_EQ(calc("2*3+1"), "7");
  EXPECT_EQ(calc("1+2*3-4/2"), "5");
  EXPECT_EQ(calc("1<<2+1"), "8");
  EXPECT_EQ(calc("1<2<<3"), "1");
  EXPECT_EQ(calc("2==1<3"), "0");
  EXPECT_EQ(calc("6&3==3"), "0");
  EXPECT_EQ(calc("1^3&2"), "3");
  EXPECT_EQ(calc("4|1^1"), "4");
  EXPECT_EQ(calc("1&&2|0"), "1");
  EXPECT_EQ(calc("1||0&&0"), "1");
}

TEST(JobVariableCalc, EqualStrengthGroupsFromTheLeft) {
  EXPECT_EQ(calc("1-2-3"), "-4");
  EXPECT_EQ(calc("1-2*3-4"), "-9");
  EXPECT_EQ(calc("100/10/5"), "2");
  EXPECT_EQ(calc("2*7%4"), "2");
  EXPECT_EQ(calc("1-2+3-4*5*6-7"), "-125");
  EXPECT_EQ(calc("16>>1>>1"), "4");
  EXPECT_EQ(calc("3>2>1"), "0");
  EXPECT_EQ(calc("1+2==3+0&&4-2*2==0"), "1");
}

TEST(JobVariableCalc, BracketsGoFirst) {
  EXPECT_EQ(calc("3*(4+5)-2"), "25");
  EXPECT_EQ(calc("(1+2)*(3+4)"), "21");
  EXPECT_EQ(calc("((((7))))"), "7");
  EXPECT_EQ(calc("(2-(3-(4-5)))*2"), "-4");
  EXPECT_EQ(calc("(1-4)*2"), "-6") << "a bracket can give a negative operand";
  EXPECT_EQ(calc("2*(1-4)"), "-6");
  EXPECT_EQ(calc("(1-4)"), "-3");
}

TEST(JobVariableCalc, EveryOperator) {
  EXPECT_EQ(calc("6*7"), "42");
  EXPECT_EQ(calc("7/2"), "3");
  EXPECT_EQ(calc("7%3"), "1");
  EXPECT_EQ(calc("7+3"), "10");
  EXPECT_EQ(calc("7-9"), "-2");
  EXPECT_EQ(calc("3<<4"), "48");
  EXPECT_EQ(calc("48>>4"), "3");
  EXPECT_EQ(calc("1<2"), "1");
  EXPECT_EQ(calc("2<1"), "0");
  EXPECT_EQ(calc("2>1"), "1");
  EXPECT_EQ(calc("1>2"), "0");
  EXPECT_EQ(calc("2<=2"), "1");
  EXPECT_EQ(calc("3<=2"), "0");
  EXPECT_EQ(calc("2>=2"), "1");
  EXPECT_EQ(calc("2>=3"), "0");
  EXPECT_EQ(calc("2==2"), "1");
  EXPECT_EQ(calc("2==3"), "0");
  EXPECT_EQ(calc("2!=3"), "1");
  EXPECT_EQ(calc("2!=2"), "0");
  EXPECT_EQ(calc("12&10"), "8");
  EXPECT_EQ(calc("12^10"), "6");
  EXPECT_EQ(calc("12|10"), "14");
  EXPECT_EQ(calc("2&&3"), "1");
  EXPECT_EQ(calc("2&&0"), "0");
  EXPECT_EQ(calc("0&&2"), "0");
  EXPECT_EQ(calc("0||2"), "1");
  EXPECT_EQ(calc("2||0"), "1");
  EXPECT_EQ(calc("0||0"), "0");
}

TEST(JobVariableCalc, DivisionTruncatesTowardZero) {
  EXPECT_EQ(calc("(0-7)/2"), "-3");
  EXPECT_EQ(calc("(0-7)%2"), "-1");
  EXPECT_EQ(calc("7/(0-2)"), "-3");
  EXPECT_EQ(calc("7%(0-2)"), "1");
}

TEST(JobVariableCalc, DivisionByZeroIsAFault) {
  EXPECT_EQ(calc("1/0"), "fault");
  EXPECT_EQ(calc("1%0"), "fault");
  EXPECT_EQ(calc("1/(2-2)"), "fault");
  EXPECT_EQ(calc("0&&(1/0)"), "fault") << "both sides are computed";
  EXPECT_EQ(calc("1||1/0"), "fault");
}

TEST(JobVariableCalc, WrapsAroundIn32Bits) {
  EXPECT_EQ(calc("2147483647+1"), "-2147483648");
  EXPECT_EQ(calc("0-2147483647-2"), "2147483647");
  EXPECT_EQ(calc("65536*65536"), "0");
  EXPECT_EQ(calc("2147483647*2147483647"), "1");
  EXPECT_EQ(calc("(0-2147483647-1)/(0-1)"), "-2147483648");
  EXPECT_EQ(calc("(0-2147483647-1)%(0-1)"), "0");
  EXPECT_EQ(calc("1<<31"), "-2147483648");
}

TEST(JobVariableCalc, OperandsCountTheirLow32Bits) {
  EXPECT_EQ(calc("4294967296+1"), "1");
  EXPECT_EQ(calc("4294967295+0"), "-1");
  EXPECT_EQ(calc("2147483648+0"), "-2147483648");
  EXPECT_EQ(calc("123456789012345678901234567890+0"), "1312754386");
  EXPECT_EQ(calc("007+0"), "7");
}

TEST(JobVariableCalc, ShiftsUseFiveBitsAndKeepTheSign) {
  EXPECT_EQ(calc("1<<32"), "1");
  EXPECT_EQ(calc("1<<33"), "2");
  EXPECT_EQ(calc("1<<(0-1)"), "-2147483648");
  EXPECT_EQ(calc("(0-8)>>1"), "-4");
  EXPECT_EQ(calc("(0-1)>>31"), "-1");
  EXPECT_EQ(calc("8>>35"), "1");
  EXPECT_EQ(calc("(0-1)<<4"), "-16");
}

TEST(JobVariableCalc, ALoneTokenIsNotChecked) {
  EXPECT_EQ(calc("5"), "5");
  EXPECT_EQ(calc("abc"), "abc");
  EXPECT_EQ(calc("007"), "007");
  EXPECT_EQ(calc("99999999999999999999"), "99999999999999999999");
  EXPECT_EQ(calc("+"), "+");
  EXPECT_EQ(calc("  a1  "), "a1");
  EXPECT_EQ(calc("(abc)"), "abc");
  EXPECT_EQ(calc("(+-*)"), "+-*");
  EXPECT_EQ(calc("\xC3\xA4"), "\xC3\xA4");
}

TEST(JobVariableCalc, ABracketGivesItsLoneTokenAsItStands) {
  EXPECT_EQ(calc("1(+)2"), "3");
  EXPECT_EQ(calc("6((*))7"), "42");
  EXPECT_EQ(calc("1(2)3"), "fault");
  EXPECT_EQ(calc("1(1+1)3"), "fault");
  EXPECT_EQ(calc("(abc)+1"), "fault");
}

TEST(JobVariableCalc, TokensGoByTheClassOfTheirCharacters) {
  EXPECT_EQ(calc("1 + 2"), "3");
  EXPECT_EQ(calc("\t1\r\n+\x01"
                 "2\x7F"),
            "3");
  EXPECT_EQ(calc("1+-2"), "fault");
  EXPECT_EQ(calc("1- -2"), "fault");
  EXPECT_EQ(calc("-1"), "fault");
  EXPECT_EQ(calc("+1"), "fault");
  EXPECT_EQ(calc("1 2"), "fault");
  EXPECT_EQ(calc("1 0+1"), "fault");
  EXPECT_EQ(calc("1< <2"), "fault");
  EXPECT_EQ(calc("1&&&1"), "fault");
  EXPECT_EQ(calc("2*(3)"), "6") << "a bracket ends a run";
  EXPECT_EQ(calc("2*((3))+(1)"), "7");
}

TEST(JobVariableCalc, WhatIsNoNumberIsNoOperand) {
  EXPECT_EQ(calc("abc+1"), "fault");
  EXPECT_EQ(calc("1+abc"), "fault");
  EXPECT_EQ(calc("12a+1"), "fault");
  EXPECT_EQ(calc("0x10+1"), "fault");
  EXPECT_EQ(calc("1.5+1"), "fault");
  EXPECT_EQ(calc("\xEF\xBC\x91+1"), "fault");
}

TEST(JobVariableCalc, UnknownOperatorsAreFaults) {
  for (const char* sign :
       {"=", "<>", "!", "~", "**", "//", "===", "<<<", "and", "1", "?", "$", ","})
    EXPECT_EQ(calc(std::string("1 ") + sign + " 2"), "fault") << sign;
  EXPECT_EQ(calc("1+2=3"), "fault");
  EXPECT_EQ(calc("1=2*3"), "fault");
}

TEST(JobVariableCalc, UnfinishedExpressionsAreFaults) {
  EXPECT_EQ(calc(""), "fault");
  EXPECT_EQ(calc("  "), "fault");
  EXPECT_EQ(calc("1+"), "fault");
  EXPECT_EQ(calc("1+2*"), "fault");
  EXPECT_EQ(calc("1*2+"), "fault");
  EXPECT_EQ(calc("1+2 3"), "fault");
  EXPECT_EQ(calc("()"), "fault");
  EXPECT_EQ(calc("1+()"), "fault");
  EXPECT_EQ(calc("("), "fault");
  EXPECT_EQ(calc(")"), "fault");
  EXPECT_EQ(calc("(1"), "fault");
  EXPECT_EQ(calc("1)"), "fault");
  EXPECT_EQ(calc(")1("), "fault");
  EXPECT_EQ(calc("(1+2"), "fault");
  EXPECT_EQ(calc("1+2)"), "fault");
  EXPECT_EQ(calc("(1))+(1"), "fault");
}

TEST(JobVariableCalc, ReadsTextsOfAnyEncoding) {
  RawString result;
  ASSERT_TRUE(calculate(raw("3 * (4+5) - 2").shareAs(RawLayer::EncodingWide), result));
  EXPECT_EQ(result, "25"_text);
  const RawString word = RawString::fromWide(u"\x3042");
  ASSERT_TRUE(calculate(word, result));
  EXPECT_EQ(result, word);
}

TEST(JobVariableCalc, DepthAndLengthDoNotMatter) {
  constexpr int depth = 200000;
  EXPECT_EQ(calc(std::string(depth, '(') + "1" + std::string(depth, ')')), "1");
  EXPECT_EQ(calc(std::string(depth, '(') + "1"), "fault");
  std::string sum = "0";
  std::string wrapped = std::string(20000, '(') + "0";
  for (int i = 0; i < 20000; ++i) {
    sum += "+1*1";
    wrapped += "+1)";
  }
  EXPECT_EQ(calc(sum), "20000");
  EXPECT_EQ(calc(wrapped), "20000");
}

TEST(JobVariableCalc, IsAFunctionOfTheLanguage) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Calc:1+2*3)"), "7");
  EXPECT_EQ(bed("$(Calc:2*3+1)"), "7");
  EXPECT_EQ(bed("$(Calc:5)"), "5");
  EXPECT_EQ(bed("$(Calc:abc)"), "abc");
  EXPECT_EQ(bed("$(Calc:1<<3|1)"), "9");
  bed.setVariable("bracket", "(1+2)");
  EXPECT_EQ(bed("$(Calc:$(bracket)*3)"), "9");
  bed.setVariable("n", "41");
  EXPECT_EQ(bed("$(Calc:$(n)+1)"), "42");
}

TEST(JobVariableCalc, AFaultIsStateInvalidWithoutAMessage) {
  JobExpansion bed;
  EXPECT_EQ(bed.results("$(Calc:1/0)"), (Texts{"Invalid ()"}));
  EXPECT_EQ(bed("[$(Calc:1/0)]"), "[]");
  EXPECT_EQ(bed.state, VariableSuccess);
  EXPECT_EQ(bed.results("$(Calc:)"), (Texts{"Invalid ()"}));
  EXPECT_TRUE(bed.takeReports().empty());
  EXPECT_EQ(bed.results("$(Calc)"), (Texts{"Invalid ()"}));
  EXPECT_EQ(bed.takeReports(), (Texts{"Too few variable arguments !\r\n"
                                      "  [variable] Calc\r\n"
                                      "  [value] $(Calc)"}));
}
