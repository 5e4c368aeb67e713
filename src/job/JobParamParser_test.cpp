#include "job/JobParamParser.h"

#include "JobTrees.h"

#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

struct Parsed {
  bool balanced;
  std::string tree;
};

Parsed parse(const std::string& text) {
  JobParamList list;
  const bool balanced = list.Parse(JobTestLines(text).list);
  return {balanced, treeText(list)};
}

std::string treeOf(const std::string& text) {
  const Parsed parsed = parse(text);
  EXPECT_TRUE(parsed.balanced) << text;
  return parsed.tree;
}

std::string nested(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "a {\n";
  for (int i = 0; i < depth; ++i) text += "}\n";
  return text;
}

} // namespace

TEST(JobParamParser, NoLinesGiveAnEmptyList) {
  EXPECT_EQ(treeOf(""), "");
}

TEST(JobParamParser, AValueLineSplitsAtItsFirstEqualsSign) {
  EXPECT_EQ(treeOf("a=b=c"), "(a=b=c)");
  EXPECT_EQ(treeOf("a="), "(a=)");
  EXPECT_EQ(treeOf("=x"), "(=x)");
  EXPECT_EQ(treeOf("="), "(=)");
}

TEST(JobParamParser, TheKeyIsTrimmedAndTheValueIsNotTrimmedAtItsStart) {
  EXPECT_EQ(treeOf("Command = a"), "(Command= a)");
  EXPECT_EQ(treeOf("\t Title \t=\tx \t"), "(Title=\tx)");
  EXPECT_EQ(treeOf("  Title=x  "), "(Title=x)");
  EXPECT_EQ(treeOf("Title=   "), "(Title=)");
  EXPECT_EQ(treeOf("Title=   x"), "(Title=   x)");
}

TEST(JobParamParser, OnlyBlanksAndTabsAreTrimmed) {
  EXPECT_EQ(treeOf("\va\f=\xC2\xA0x\v"), "(\va\f=\xC2\xA0x\v)");
}

TEST(JobParamParser, AnEqualsSignMakesAnyLineAValueLine) {
  EXPECT_EQ(treeOf("Shell { Command=a"), "(Shell { Command=a)");
  EXPECT_EQ(treeOf("If { Condition=x }"), "(If { Condition=x })");
  EXPECT_EQ(treeOf("a={b}"), "(a={b})");
}

TEST(JobParamParser, ABraceOpensABlock) {
  EXPECT_EQ(treeOf("Shell {\nCommand=x\n}"), "(Shell{(Command=x)})");
  EXPECT_EQ(treeOf("Shell{\nCommand=x\n}"), "(Shell{(Command=x)})");
  EXPECT_EQ(treeOf("Shell \t{ and more {\nCommand=x\n} trailing"), "(Shell{(Command=x)})");
  EXPECT_EQ(treeOf("{\nCommand=x\n}"), "({(Command=x)})");
}

TEST(JobParamParser, AClosingBraceEndsTheInnermostBlock) {
  EXPECT_EQ(treeOf("a {\nb {\nc=1\n} d=2\ne=3\n}\nf=4"), "(a{(b{(c=1)})(e=3)})(f=4)");
}

TEST(JobParamParser, AnyOtherLineIsACommandWithoutParameters) {
  EXPECT_EQ(treeOf("Foo"), "(Foo)");
  EXPECT_EQ(treeOf("Two words"), "(Two words)");
  EXPECT_EQ(treeOf("Break\nBreak {\n}"), "(Break)(Break)");
}

TEST(JobParamParser, AKeyMayStandTwice) {
  EXPECT_EQ(treeOf("a=1\na {\n}\na=2"), "(a=1)(a)(a=2)");
}

TEST(JobParamParser, ASurplusClosingBraceEndsTheParseAndKeepsWhatStoodAbove) {
  const Parsed parsed = parse("a=1\nb {\nc=2\n}\n}\nd=3");
  EXPECT_FALSE(parsed.balanced);
  EXPECT_EQ(parsed.tree, "(a=1)(b{(c=2)})");
}

TEST(JobParamParser, AnUnclosedBlockIsLostWithAllThatIsInIt) {
  const Parsed parsed = parse("a=1\nb {\nc {\nd=2\n}");
  EXPECT_FALSE(parsed.balanced);
  EXPECT_EQ(parsed.tree, "(a=1)");
}

TEST(JobParamParser, AKeywordIsNotLookedAt) {
  EXPECT_EQ(treeOf("shell {\ncommand=x\n}"), "(shell{(command=x)})");
}

TEST(JobParamParser, TheTrailByteOfACharacterIsNoBrace) {
  JobTestLines lines("x");
  auto* line = RawLayer::RawRangedTextList::element(lines.list.first());
  line->text = RawString::fromBytes(RawLayer::EncodingShiftJis, "\x83\x7B", 2);
  line->range = line->text.all();
  JobParamList list;
  EXPECT_TRUE(list.Parse(lines.list));
  EXPECT_EQ(treeText(list), "(\x83\x7B)");
}

TEST(JobParamParser, ALeadByteSwallowsTheEqualsSignBehindIt) {
  JobParamList list;
  EXPECT_TRUE(list.Parse(JobTestLines("a\xC3=b\nc\xC3==d").list));
  EXPECT_EQ(JobParamList::element(list.first())->type(), JobParamUnit::TypeCommand);
  EXPECT_EQ(list.text("c\xC3="_text), "d"_text);
}

TEST(JobParamParser, ARangePastTheTextIsClamped) {
  JobTestLines lines("a=b\nc");
  RawLayer::RawRangedTextList::element(lines.list.first())->range = {-5, 99};
  RawLayer::RawRangedTextList::element(lines.list.last())->range = {7, 3};
  JobParamList list;
  EXPECT_TRUE(list.Parse(lines.list));
  EXPECT_EQ(treeText(list), "(a=b)()");
}

TEST(JobParamParser, WideLinesAreParsedInTheirOwnCode) {
  JobTestLines lines("x");
  auto* line = RawLayer::RawRangedTextList::element(lines.list.first());
  line->text = RawString::fromWide(u" k\u3042 \t=\u3042 ");
  line->range = line->text.trimRange(line->text.all(), RawString::whiteSpace());
  JobParamList list;
  ASSERT_TRUE(list.Parse(lines.list));
  const auto* text = static_cast<JobParamText*>(JobParamList::element(list.first()));
  EXPECT_EQ(text->key, RawString::fromWide(u"k\u3042"));
  EXPECT_EQ(text->value, RawString::fromWide(u"\u3042"));
  EXPECT_EQ(text->value.encoding(), RawLayer::EncodingWide);
}

TEST(JobParamParser, BlocksNestToTheLimitAndNoDeeper) {
  EXPECT_TRUE(parse(nested(JobParamList::MaxNesting)).balanced);
  const Parsed deeper = parse("x=1\n" + nested(JobParamList::MaxNesting + 1));
  EXPECT_FALSE(deeper.balanced);
  EXPECT_EQ(deeper.tree, "(x=1)");
}

TEST(JobParamParser, AMillionOpenedBlocksAreAFaultAndNoCrash) {
  std::string text;
  for (int i = 0; i < 1000000; ++i) text += "a{\n";
  EXPECT_FALSE(parse(text).balanced);
}
