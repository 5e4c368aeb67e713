#include "job/JobParam.h"

#include "JobTrees.h"
#include "TestFolder.h"

#include <gtest/gtest.h>

using namespace JobLayer;
using RawLayer::RawLineFile;

namespace {

JobParamList listOf(const std::string& text) {
  JobParamList list;
  EXPECT_TRUE(list.Parse(JobTestLines(text).list)) << text;
  return list;
}

JobParamList& innerOf(JobParamUnit* unit) {
  return static_cast<JobParamCommand*>(unit)->params;
}

// What the list writes into a file.
std::string writtenBy(const JobParamList& list, int32_t indent = 0) {
  const TestFolder folder;
  RawLineFile file(folder.file("params"));
  EXPECT_TRUE(file.openWrite());
  list.writeAll(file, indent);
  file.close();
  EXPECT_EQ(file.state, RawLineFile::Closed);
  return folder.read("params");
}

} // namespace

TEST(JobParam, TypesAreNumbers) {
  EXPECT_EQ(JobParamText("k"_text, "v"_text).type(), 1);
  EXPECT_EQ(JobParamCommand("k"_text).type(), 2);
}

TEST(JobParam, TheFirstEntryWithAKeyIsFound) {
  const JobParamList list = listOf("a=1\nb=2\na=3");
  EXPECT_EQ(list.text("a"_text), "1"_text);
  EXPECT_EQ(list.find("b"_text)->key, "b"_text);
}

TEST(JobParam, KeysCompareWithExactCase) {
  const JobParamList list = listOf("Command=x");
  EXPECT_EQ(list.find("command"_text), nullptr);
  EXPECT_TRUE(list.text("command"_text).isEmpty());
}

TEST(JobParam, AMissingKeyGivesAnEmptyText) {
  EXPECT_TRUE(JobParamList().text("a"_text).isEmpty());
  EXPECT_EQ(JobParamList().find("a"_text), nullptr);
}

TEST(JobParam, ABlockAheadOfATextHidesTheValue) {
  const JobParamList list = listOf("Command {\n}\nCommand=x");
  EXPECT_TRUE(list.text("Command"_text).isEmpty());
  EXPECT_EQ(list.count(), 2);
}

TEST(JobParam, AKeyGivenTwiceIsWrittenTwice) {
  EXPECT_EQ(writtenBy(listOf("a=1\na=2")), "a=1\r\na=2\r\n");
}

TEST(JobParam, ACopySharesTheList) {
  const JobParamList list = listOf("a=1");
  const JobParamList copy(list);
  EXPECT_TRUE(copy.isSameList(list));
  EXPECT_EQ(list.references(), 1);
}

TEST(JobParam, AddingToASharedListLeavesTheOtherAlone) {
  const JobParamList list = listOf("a=1");
  JobParamList copy(list);
  copy.addText("b"_text, "2"_text);
  EXPECT_EQ(treeText(list), "(a=1)");
  EXPECT_EQ(treeText(copy), "(a=1)(b=2)");
  JobParamList second(list);
  second.addBlock("Shell"_text, copy);
  EXPECT_EQ(treeText(list), "(a=1)");
  EXPECT_EQ(treeText(second), "(a=1)(Shell{(a=1)(b=2)})");
}

TEST(JobParam, AddingToAListOfItsOwnCopiesNothing) {
  JobParamList list = listOf("a=1");
  const JobParamUnit* unit = list.find("a"_text);
  list.addText("b"_text, "2"_text);
  EXPECT_EQ(list.find("a"_text), unit);
}

TEST(JobParam, AnAddedBlockSharesItsList) {
  const JobParamList inner = listOf("x=1");
  JobParamList list;
  list.addBlock("Shell"_text, inner);
  EXPECT_TRUE(innerOf(list.find("Shell"_text)).isSameList(inner));
}

TEST(JobParam, ParsingIntoASharedListLeavesTheOtherAlone) {
  JobParamList list = listOf("a=1");
  const JobParamList kept(list);
  EXPECT_TRUE(list.Parse(JobTestLines("b=2").list));
  EXPECT_EQ(treeText(kept), "(a=1)");
  EXPECT_EQ(treeText(list), "(b=2)");
}

TEST(JobParam, DuplicateMakesThePrivateCopyThatSharesInnerLists) {
  const JobParamList list = listOf("a=1\nShell {\nCommand=x\n}");
  JobParamList copy(list);
  copy.duplicate();
  EXPECT_FALSE(copy.isSameList(list));
  EXPECT_EQ(list.references(), 0);
  EXPECT_EQ(treeText(copy), treeText(list));
  EXPECT_NE(copy.find("a"_text), list.find("a"_text));
  EXPECT_TRUE(innerOf(copy.find("Shell"_text)).isSameList(innerOf(list.find("Shell"_text))));
}

TEST(JobParam, DuplicateOfAListWithoutSharersDoesNothing) {
  JobParamList list = listOf("a=1");
  const JobParamUnit* unit = list.find("a"_text);
  list.duplicate();
  EXPECT_EQ(list.find("a"_text), unit);
}

TEST(JobParam, AClonedTextSharesItsStrings) {
  const JobParamText text("key"_text, raw("value"));
  const std::unique_ptr<JobParamUnit> copy(text.clone());
  EXPECT_EQ(copy->key, "key"_text);
  EXPECT_EQ(static_cast<JobParamText*>(copy.get())->value.text(), text.value.text());
}

TEST(JobParam, SubstituteReplacesTheFirstOccurrenceOnly) {
  JobParamText text("k"_text, raw("a $(X) b $(X)"));
  text.substitute("$(X)"_text, "longer than before"_text);
  EXPECT_EQ(text.value, "a longer than before b $(X)"_text);
}

TEST(JobParam, SubstituteLeavesKeysAndOtherTextsAlone) {
  JobParamList list = listOf("$(X)=$(Y)\n$(X) {\na=$(X)\n}");
  list.substituteAll("$(X)"_text, "1"_text);
  EXPECT_EQ(treeText(list), "($(X)=$(Y))($(X){(a=1)})");
  list.substituteAll(RawString::emptyStatic(), "2"_text);
  EXPECT_EQ(treeText(list), "($(X)=$(Y))($(X){(a=1)})");
}

TEST(JobParam, SubstituteMayShortenAndEmptyAValue) {
  JobParamList list = listOf("a=$(APPEND)\nb=x$(APPEND)");
  list.substituteAll("$(APPEND)"_text, RawString::emptyStatic());
  EXPECT_EQ(treeText(list), "(a=)(b=x)");
}

TEST(JobParam, SubstituteReachesEveryLevelOfTheCopyAndNoneOfTheSource) {
  const JobParamList list = listOf("a=$(X)\nIf {\nb=$(X)\nIf {\nc=$(X)\n}\n}");
  const JobParamList copy = list.substituted("$(X)"_text, "1"_text);
  EXPECT_EQ(treeText(copy), "(a=1)(If{(b=1)(If{(c=1)})})");
  EXPECT_EQ(treeText(list), "(a=$(X))(If{(b=$(X))(If{(c=$(X))})})");
}

TEST(JobParam, SubstituteDoesNotMatchInsideACharacter) {
  // The pattern is the second byte of a Shift-JIS character.
  JobParamText text("k"_text, RawString::fromBytes(RawLayer::EncodingShiftJis, "\x83\x5C\x5C", 3));
  text.substitute("\\"_text, "/"_text);
  EXPECT_EQ(bytesOf(text.value), "\x83\x5C/");
}

TEST(JobParam, SummaryOfAList) {
  const JobParamList list = listOf("a=1\nb=2\nShell {\nCommand=x\n}");
  RawString summary = "[Menu]"_text;
  list.summarizeAll(summary);
  EXPECT_EQ(summary, "[Menu][a=1][b=2][Shell]"_text);
}

TEST(JobParam, ATextIsWrittenWithItsIndent) {
  EXPECT_EQ(writtenBy(listOf("a= 1\n=x\nb=")), "a= 1\r\n=x\r\nb=\r\n");
  EXPECT_EQ(writtenBy(listOf("a=1"), 3), "   a=1\r\n");
}

TEST(JobParam, ABlockIsWrittenWithItsEntriesFurtherIn) {
  EXPECT_EQ(writtenBy(listOf("If {\nCondition=1\nShell {\nCommand=x\n}\n}")), "If {\r\n"
                                                                              "  Condition=1\r\n"
                                                                              "  Shell {\r\n"
                                                                              "    Command=x\r\n"
                                                                              "  }\r\n"
                                                                              "}\r\n");
}

TEST(JobParam, AnEmptyBlockIsWrittenAsItsBareName) {
  EXPECT_EQ(writtenBy(listOf("Break {\n}\nSeparator")), "Break\r\nSeparator\r\n");
}

TEST(JobParam, WhatWasWrittenReadsBackTheSame) {
  const JobParamList list = listOf("Title= x {y} z=\nMenu {\nTitle=t\nSeparator\nMenuItem {\n"
                                   "Quit\n}\n}\n=\nA {\nB {\n}\n}");
  std::string written = writtenBy(list);
  std::erase(written, '\r');
  EXPECT_EQ(treeText(listOf(written)), treeText(list));
}

TEST(JobParam, ARunThatHoldsAListKeepsItWhileItIsEdited) {
  JobParamList button = listOf("a=1");
  const JobParamList run(button);
  button.substituteAll("1"_text, "2"_text);
  button = JobParamList();
  EXPECT_EQ(treeText(run), "(a=1)");
}
