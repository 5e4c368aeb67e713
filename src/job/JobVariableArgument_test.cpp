#include "job/JobVariableExpander.h"

#include "JobExpansion.h"

using namespace JobLayer;

namespace {

// Shows what was expanded, and tells of a fault that nobody may look at.
class MarkingExpander : public JobVariableArgument::Expander {
 public:
  JobVariableResult expand(RawString text) override {
    expanded.push_back(bytesOf(text));
    return {VariableInvalid, RawString::concat("<"_text, text, ">"_text)};
  }
  JobVariableResult evaluate(const RawString& name, JobVariableArgument& argument) override {
    asked = {bytesOf(name), bytesOf(argument.name), bytesOf(argument.callText()),
             std::to_string(argument.argumentCount())};
    return {VariableSuccess, "answer"_text};
  }
  bool isDefined(const RawString&) override { return false; }
  Texts expanded;
  Texts asked;
};

// A call in the middle of a text, ready to be read.
struct Call {
  JobTestBed bed;
  MarkingExpander expander;
  JobVariableArgument argument;

  explicit Call(const std::string& call) : argument(expander, raw("text " + call + " text")) {
    EXPECT_TRUE(argument.split(5));
    argument.name = argument.get(0);
  }
};

Texts tokensOf(JobVariableArgument& argument) {
  Texts tokens;
  for (int32_t i = 0; i < argument.tokenCount(); ++i)
    tokens.push_back(bytesOf(argument.get(i, JobVariableArgument::Unexpanded)));
  return tokens;
}

} // namespace

TEST(JobVariableArgument, SplitsACallIntoNameAndArguments) {
  Call call("$(Name:a:b c:)");
  EXPECT_EQ(tokensOf(call.argument), (Texts{"Name", "a", "b c", ""}));
  EXPECT_EQ(call.argument.argumentCount(), 3);
  EXPECT_EQ(call.argument.range, (RawRange{5, 19}));
  EXPECT_EQ(call.argument.callText(), "$(Name:a:b c:)"_text);
}

TEST(JobVariableArgument, InnerCallsKeepTheirMarks) {
  Call call("$($(a:b)c:$(d:$(e:f):g):$(h)) i)");
  EXPECT_EQ(tokensOf(call.argument), (Texts{"$(a:b)c", "$(d:$(e:f):g)", "$(h)"}));
  EXPECT_EQ(call.argument.callText(), "$($(a:b)c:$(d:$(e:f):g):$(h))"_text);
}

TEST(JobVariableArgument, ManyArgumentsAreAllThere) {
  std::string text = "$(Name";
  Texts expected{"Name"};
  for (int i = 0; i < 50; ++i) {
    expected.push_back(std::to_string(i));
    text += ":" + expected.back();
  }
  Call call(text + ")");
  EXPECT_EQ(tokensOf(call.argument), expected);
}

TEST(JobVariableArgument, ACallWithoutEndHasTheTokensInFrontOfIt) {
  MarkingExpander expander;
  JobVariableArgument one(expander, "$(a:b:c"_text);
  EXPECT_FALSE(one.split(0));
  EXPECT_EQ(tokensOf(one), (Texts{"a", "b"}));
  JobVariableArgument none(expander, "$(a"_text);
  EXPECT_FALSE(none.split(0));
  EXPECT_EQ(none.tokenCount(), 0);
}

TEST(JobVariableArgument, GivesItsTextsExpanded) {
  Call call("$($(n):$(a):b$(c)d:$)");
  EXPECT_EQ(call.argument.name, "<$(n)>"_text);
  EXPECT_EQ(call.argument.get(1), "<$(a)>"_text);
  EXPECT_EQ(call.argument.get(2), "<b$(c)d>"_text);
  EXPECT_EQ(call.argument.get(3), "$"_text) << "there is nothing to expand";
  EXPECT_EQ(call.expander.expanded, (Texts{"$(n)", "$(a)", "b$(c)d"}));
}

TEST(JobVariableArgument, ExpandsAnewAtEachReading) {
  Call call("$(Name:$(a))");
  EXPECT_TRUE(call.expander.expanded.empty());
  call.argument.get(1);
  call.argument.get(1);
  EXPECT_EQ(call.expander.expanded.size(), 2U);
}

TEST(JobVariableArgument, GivesATextAsWrittenWhenAsked) {
  Call call("$(Name:$(b))");
  EXPECT_EQ(call.argument.get(1, JobVariableArgument::Unexpanded), "$(b)"_text);
  EXPECT_TRUE(call.expander.expanded.empty());
}

TEST(JobVariableArgument, DoesNotLookAtTheStateOfAnInnerExpansion) {
  Call call("$(Name:$(b))");
  call.argument.get(1);
  EXPECT_EQ(call.argument.failure, 0);
}

TEST(JobVariableArgument, AMissingOneIsReportedWithTheCall) {
  Call call("$(Name:a)");
  EXPECT_TRUE(call.argument.get(2).isEmpty());
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Too few variable arguments !\r\n"
                                             "  [variable] Name\r\n"
                                             "  [value] $(Name:a)"}));
}

TEST(JobVariableArgument, AMissingOptionalOneIsEmpty) {
  Call call("$(Name:a)");
  EXPECT_TRUE(call.argument.get(2, JobVariableArgument::Optional).isEmpty());
  EXPECT_EQ(call.argument.failure, 0);
  EXPECT_TRUE(call.bed.dialogs.reports.empty());
}

TEST(JobVariableArgument, ANumberIsDecimalDigitsWithASign) {
  Call call("$(Name:0:12:-12:+12:007:-0:9223372036854775807:-9223372036854775808)");
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
  Call call("$(Name:9223372036854775808:18446744073709551616:18446744073709551615)");
  EXPECT_EQ(call.argument.getNumber(1), INT64_MIN);
  EXPECT_EQ(call.argument.getNumber(2), 0);
  EXPECT_EQ(call.argument.getNumber(3), -1);
  EXPECT_EQ(call.argument.failure, 0);
}

TEST(JobVariableArgument, NothingElseIsANumber) {
  for (const char* text : {"", "0x10", "0b1", "12a", "a", "-", "+", "--1", "+-1", "- 1", " 1", "1 ",
                           "1.0", "1e3", "\xEF\xBC\x91"}) {
    Call call(std::string("$(Name:") + text + ")");
    EXPECT_EQ(call.argument.getNumber(1), 0) << text;
    EXPECT_EQ(call.argument.failure, 2) << text;
    const std::string value = *text == 0 ? "" : std::string("\r\n  [value] ") + text;
    EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Incorrect number format !\r\n  [variable] Name" +
                                               value + "\r\n  [script] $(Name:" + text + ")"}));
  }
}

TEST(JobVariableArgument, ANegativeNumberCanBeAFault) {
  Call call("$(Name:-1)");
  EXPECT_EQ(call.argument.getNumber(1, JobVariableArgument::NotNegative), 0);
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Number is out of range !\r\n"
                                             "  [variable] Name\r\n"
                                             "  [value] -1\r\n"
                                             "  [script] $(Name:-1)"}));
}

TEST(JobVariableArgument, AMissingNumberIsOneReportOnly) {
  Call call("$(Name)");
  EXPECT_EQ(call.argument.getNumber(1), 0);
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports.size(), 1U);
}

TEST(JobVariableArgument, AMissingOptionalNumberIsNoNumber) {
  Call call("$(Name)");
  EXPECT_EQ(call.argument.getNumber(1, JobVariableArgument::Optional), 0);
  EXPECT_EQ(call.argument.failure, 2);
  EXPECT_EQ(call.bed.dialogs.reports, (Texts{"Incorrect number format !\r\n"
                                             "  [variable] Name\r\n"
                                             "  [script] $(Name)"}));
}

TEST(JobVariableArgument, ANumberBehindAFaultIsNotJudged) {
  Call call("$(Name:x:y:5)");
  call.argument.getNumber(1);
  EXPECT_EQ(call.argument.getNumber(2), 0);
  EXPECT_EQ(call.argument.getNumber(3), 0);
  EXPECT_EQ(call.bed.dialogs.reports.size(), 1U);
}

TEST(JobVariableArgument, AsksForAVariableAsACallOfItsOwn) {
  MarkingExpander expander;
  JobVariableArgument argument(expander, "$(File:x)"_text);
  EXPECT_EQ(argument.ask("Missing"_text), "answer"_text);
  EXPECT_EQ(expander.asked, (Texts{"Missing", "Missing", "$(Missing)", "0"}));
}

TEST(JobVariableArgument, AnswersAFaultWithItsStateAndNothing) {
  Call call("$(Name)");
  call.argument.get(1);
  EXPECT_EQ(call.argument.fault().state, VariableInvalid);
  EXPECT_TRUE(call.argument.fault().text.isEmpty());
}
