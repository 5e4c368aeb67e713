#include "job/JobVariableExpander.h"

#include "JobExpansion.h"

using namespace JobLayer;

namespace {

// Shows what was expanded, and tells of a fault that nobody may look at.
class MarkingExpander : public JobVariableArgument::Expander {
 public:
  JobVariableResult expand(const RawString& text) override {
    expanded.push_back(bytesOf(text));
    return {VariableInvalid, RawString::concat("<"_text, text, ">"_text)};
  }
  JobVariableResult evaluate(const RawString& name, JobVariableArgument& argument) override {
    asked = {bytesOf(name), bytesOf(argument.callText()), std::to_string(argument.argumentCount()),
             bytesOf(argument.get(0, 1))};
    return {VariableSuccess, "answer"_text};
  }
  bool isDefined(const RawString&) override { return false; }
  Texts expanded;
  Texts asked;
};

// Gives texts as they stand.
class PlainExpander : public MarkingExpander {
 public:
  JobVariableResult expand(const RawString& text) override { return {VariableSuccess, text}; }
};

struct Call {
  JobTestBed bed;
  PlainExpander expander;
  JobVariableArgument argument{expander, "text $(Name:...) text"_text};

  explicit Call(const Texts& arguments) {
    argument.range = {5, 16};
    argument.name = "Name"_text;
    argument.tokens.add("Name"_text);
    for (const std::string& each : arguments) argument.tokens.add(raw(each));
  }
};

} // namespace

TEST(JobVariableArgument, GivesItsTextsExpanded) {
  MarkingExpander expander;
  JobVariableArgument argument(expander, "$(Name:a)"_text);
  argument.tokens.add("Name"_text);
  argument.tokens.add("a"_text);
  EXPECT_EQ(argument.argumentCount(), 1);
  EXPECT_TRUE(expander.expanded.empty());
  EXPECT_EQ(argument.get(1), "<a>"_text);
  EXPECT_EQ(argument.get(0), "<Name>"_text);
  EXPECT_EQ(expander.expanded, (Texts{"a", "Name"}));
}

TEST(JobVariableArgument, ExpandsAnewAtEachReading) {
  MarkingExpander expander;
  JobVariableArgument argument(expander, "$(a)"_text);
  argument.tokens.add("a"_text);
  argument.get(0);
  argument.get(0);
  EXPECT_EQ(expander.expanded.size(), 2U);
}

TEST(JobVariableArgument, GivesATextAsWrittenWhenAsked) {
  MarkingExpander expander;
  JobVariableArgument argument(expander, "$(a:$(b))"_text);
  argument.tokens.add("a"_text);
  argument.tokens.add("$(b)"_text);
  EXPECT_EQ(argument.get(1, JobVariableArgument::Unexpanded), "$(b)"_text);
  EXPECT_TRUE(expander.expanded.empty());
}

TEST(JobVariableArgument, DoesNotLookAtTheStateOfAnInnerExpansion) {
  MarkingExpander expander;
  JobVariableArgument argument(expander, "$(a)"_text);
  argument.tokens.add("a"_text);
  argument.get(0);
  EXPECT_EQ(argument.failure, 0);
}

TEST(JobVariableArgument, AMissingOneIsReportedWithTheCall) {
  Call call({"a"});
  EXPECT_TRUE(call.argument.get(2).isEmpty());
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Too few variable arguments !\r\n"
                                             "  [variable] Name\r\n"
                                             "  [value] $(Name:...)"}));
}

TEST(JobVariableArgument, AMissingOptionalOneIsEmpty) {
  Call call({"a"});
  EXPECT_TRUE(call.argument.get(2, JobVariableArgument::Optional).isEmpty());
  EXPECT_EQ(call.argument.failure, 0);
  EXPECT_TRUE(call.bed.dialogs.reports.empty());
}

TEST(JobVariableArgument, ANumberIsDecimalDigitsWithASign) {
  Call call({"0", "12", "-12", "+12", "007", "-0", "9223372036854775807", "-9223372036854775808"});
  EXPECT_EQ(call.argument.getNumber(1), 0);
  EXPECT_EQ(call.argument.getNumber(2), 12);
  EXPECT_EQ(call.argument.getNumber(3), -12);
  EXPECT_EQ(call.argument.getNumber(4), 12);
  EXPECT_EQ(call.argument.getNumber(5), 7);
  EXPECT_EQ(call.argument.getNumber(6, JobVariableArgument::NotNegative), 0);
  EXPECT_EQ(call.argument.getNumber(7), INT64_MAX);
  EXPECT_EQ(call.argument.getNumber(8), INT64_MIN);
  EXPECT_EQ(call.argument.failure, 0);
}

TEST(JobVariableArgument, ANumberBeyond64BitsWrapsAround) {
  Call call({"9223372036854775808", "18446744073709551616", "18446744073709551615"});
  EXPECT_EQ(call.argument.getNumber(1), INT64_MIN);
  EXPECT_EQ(call.argument.getNumber(2), 0);
  EXPECT_EQ(call.argument.getNumber(3), -1);
  EXPECT_EQ(call.argument.failure, 0);
}

TEST(JobVariableArgument, NothingElseIsANumber) {
  for (const char* text : {"", "0x10", "0b1", "12a", "a", "-", "+", "--1", "+-1", "- 1", " 1", "1 ",
                           "1.0", "1e3", "\xEF\xBC\x91"}) {
    Call call({text});
    EXPECT_EQ(call.argument.getNumber(1), 0) << text;
    EXPECT_EQ(call.argument.failure, 2) << text;
    const std::string value = *text == 0 ? "" : std::string("\r\n  [value] ") + text;
    EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Incorrect number format !\r\n  [variable] Name" +
                                               value + "\r\n  [script] $(Name:...)"}));
  }
}

TEST(JobVariableArgument, ANegativeNumberCanBeAFault) {
  Call call({"-1"});
  EXPECT_EQ(call.argument.getNumber(1, JobVariableArgument::NotNegative), 0);
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Number is out of range !\r\n"
                                             "  [variable] Name\r\n"
                                             "  [value] -1\r\n"
                                             "  [script] $(Name:...)"}));
}

TEST(JobVariableArgument, AMissingNumberIsOneReportOnly) {
  Call call({});
  EXPECT_EQ(call.argument.getNumber(1), 0);
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports.size(), 1U);
}

TEST(JobVariableArgument, AMissingOptionalNumberIsNoNumber) {
  Call call({});
  EXPECT_EQ(call.argument.getNumber(1, JobVariableArgument::Optional), 0);
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Incorrect number format !\r\n"
                                             "  [variable] Name\r\n"
                                             "  [script] $(Name:...)"}));
}

TEST(JobVariableArgument, ANumberBehindAFaultIsNotJudged) {
  Call call({"x", "y", "5"});
  call.argument.getNumber(1);
  EXPECT_EQ(call.argument.getNumber(2), 0);
  EXPECT_EQ(call.argument.getNumber(3), 0);
  EXPECT_EQ(call.bed.dialogs.reports.size(), 1U);
}

TEST(JobVariableArgument, AsksForAVariableAsACallOfItsOwn) {
  MarkingExpander expander;
  JobVariableArgument argument(expander, "$(File:x)"_text);
  EXPECT_EQ(argument.ask("Missing"_text), "answer"_text);
  EXPECT_EQ(expander.asked, (Texts{"Missing", "$(Missing)", "0", "Missing"}));
}

TEST(JobVariableArgument, AnswersAFaultWithItsStateAndNothing) {
  Call call({});
  call.argument.get(1);
  EXPECT_EQ(call.argument.fault().state, VariableInvalid);
  EXPECT_TRUE(call.argument.fault().text.isEmpty());
}
