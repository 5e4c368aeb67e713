#include "job/JobSelectorList.h"

#include "JobTestBed.h"
#include "JobTrees.h"

#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

class JobSelectorListTest : public testing::Test {
 protected:
  JobTestBed bed;
  JobSelectorList list;

  // One selector for each letter; the capitals are marked.
  void fill(const std::string& letters) {
    list.clear();
    for (const char letter : letters) {
      JobSelectorUnit* unit = list.add(raw(std::string(1, letter)));
      if (letter >= 'A' && letter <= 'Z') unit->flags |= JobSelectorUnit::IsMarked;
    }
  }
  std::string letters() {
    std::string text;
    for (const JobSelectorUnit& unit : list.elements()) text += bytesOf(unit.name);
    return text;
  }
  int32_t near(int32_t index) { return list.indexOf(list.iteratorAt(index)); }
  std::string gathered(const std::string& text) {
    fill(text);
    list.gatherMarked();
    return letters();
  }
  std::string movedUp(const std::string& text) {
    fill(text);
    list.moveMarkedUp();
    return letters();
  }
};

} // namespace

TEST_F(JobSelectorListTest, FindsTheFirstWithTheExactName) {
  fill("aba");
  EXPECT_EQ(list.find("a"_text), list.at(0));
  EXPECT_EQ(list.find("B"_text), nullptr);
  EXPECT_EQ(list.at(3), nullptr);
}

TEST_F(JobSelectorListTest, TheEntryNamedMinusIsASeparator) {
  EXPECT_EQ(list.add("-"_text)->flags, 0x01);
  EXPECT_EQ(list.add("a"_text)->flags, 0);
  EXPECT_EQ(JobSelectorUnit::IsMarked, 0x02);
}

TEST_F(JobSelectorListTest, RenamingKeepsTheMark) {
  fill("A");
  list.at(0)->rename("-"_text);
  EXPECT_EQ(list.at(0)->flags, 0x03);
  list.at(0)->rename("a"_text);
  EXPECT_EQ(list.at(0)->flags, 0x02);
}

TEST_F(JobSelectorListTest, TheTitleIsExpandedAndFallsBackToTheName) {
  JobTestBed::setVariable("x", "1");
  fill("abc");
  list.at(0)->params = JobTestBed::script("Title=t$(x)");
  list.at(1)->params = JobTestBed::script("Title=$(none)");
  list.at(2)->params = JobTestBed::script("Title=t$(");
  list.setup(JobExecutorPair::executor());
  EXPECT_EQ(list.at(0)->title, "t1"_text);
  EXPECT_EQ(list.at(1)->title, "b"_text);
  EXPECT_EQ(list.at(2)->title, "c"_text);
}

TEST_F(JobSelectorListTest, SetUpHasNoRecordOfItsOwn) {
  fill("a");
  list.setup(JobExecutorPair::executor());
  EXPECT_TRUE(bed.diary().empty());
}

TEST_F(JobSelectorListTest, ANewSelectorDefinesItsVariable) {
  fill("ab");
  RawLayer::RawListNode* node =
      list.insertFromName(1, "C:\\dir\\c"_text, JobExecutorPair::executor());
  EXPECT_EQ(letters(), "acb");
  EXPECT_EQ(JobSelectorList::element(node), list.at(1));
  EXPECT_EQ(treeText(list.at(1)->params), "(Define{(Selector=C:\\dir\\c)})");
  EXPECT_EQ(list.at(1)->title, "c"_text);
}

TEST_F(JobSelectorListTest, AnIndexOutsideTheListAppends) {
  fill("ab");
  list.insertFromName(-1, "c"_text, JobExecutorPair::executor());
  list.insertFromName(9, "-"_text, JobExecutorPair::executor());
  EXPECT_EQ(letters(), "abc-");
  EXPECT_EQ(list.at(3)->flags, JobSelectorUnit::IsSeparator);
}

TEST_F(JobSelectorListTest, ANewSelectorTakesItsParametersFromTheTemplate) {
  list.templateUnit.rename("*"_text);
  list.templateUnit.params =
      JobTestBed::script("Title=($(APPEND))\nDefine {\nDir=$(APPEND)$(APPEND)\n}");
  list.insertFromName(0, RawString::fromWide(u"x/y"), JobExecutorPair::executor());
  EXPECT_EQ(treeText(list.at(0)->params), "(Title=(x/y))(Define{(Dir=x/y$(APPEND))})");
  EXPECT_EQ(list.at(0)->title, "(x/y)"_text);
  EXPECT_EQ(list.at(0)->name, "y"_text);
  EXPECT_EQ(treeText(list.templateUnit.params),
            "(Title=($(APPEND)))(Define{(Dir=$(APPEND)$(APPEND))})");
}

TEST_F(JobSelectorListTest, TheNearestUnmarkedEntryIsSoughtForwardFirst) {
  fill("aBCdE");
  EXPECT_EQ(near(0), 0);
  EXPECT_EQ(near(1), 3);
  EXPECT_EQ(near(3), 3);
  EXPECT_EQ(near(4), 3);
  fill("abCDE");
  EXPECT_EQ(near(2), 1);
}

TEST_F(JobSelectorListTest, WithoutAnUnmarkedEntryOrOutsideTheListTheEndIsGiven) {
  fill("ABC");
  EXPECT_TRUE(list.isEnd(list.iteratorAt(1)));
  fill("abc");
  EXPECT_TRUE(list.isEnd(list.iteratorAt(3)));
  EXPECT_TRUE(list.isEnd(list.iteratorAt(-1)));
}

TEST_F(JobSelectorListTest, TheMarkedRangeKnowsItsEndsAndGaps) {
  const auto check = [this](const std::string& text, int32_t first, int32_t last, bool whole) {
    fill(text);
    const JobMarkedRange range = list.markedRange();
    EXPECT_EQ(range.first, first) << text;
    EXPECT_EQ(range.last, last) << text;
    EXPECT_EQ(range.contiguous, whole) << text;
  };
  check("", -1, -1, false);
  check("abc", -1, -1, false);
  check("aBc", 1, 1, true);
  check("aBCD", 1, 3, true);
  check("AbC", 0, 2, false);
}

TEST_F(JobSelectorListTest, GatheringMovesMarkedEntriesBehindTheFirstRun) {
  EXPECT_EQ(gathered("AxByC"), "ABCxy");
  EXPECT_EQ(gathered("xABycDzE"), "xABDEycz");
  EXPECT_EQ(gathered("xAB"), "xAB");
  EXPECT_EQ(gathered("ABx"), "ABx");
  EXPECT_EQ(gathered("xyz"), "xyz");
  EXPECT_EQ(gathered(""), "");
}

TEST_F(JobSelectorListTest, MovingUpPutsTheEntryAheadBehindTheRun) {
  EXPECT_EQ(movedUp("abCDe"), "aCDbe");
  EXPECT_EQ(movedUp("aBC"), "BCa");
  EXPECT_EQ(movedUp("ABc"), "ABc");
  EXPECT_EQ(movedUp("abc"), "abc");
  EXPECT_EQ(movedUp(""), "");
}

TEST_F(JobSelectorListTest, SortsByNamesWithoutRegardToAsciiCase) {
  for (const char* name : {"b", "Ab", "C", "a", "_"}) list.add(raw(name))->title = "same"_text;
  JobSelectorListSort sort(list);
  sort.sortAll();
  EXPECT_EQ(letters(), "aAbbC_");
  sort.sortAll(true);
  EXPECT_EQ(letters(), "_CbAba");
  JobSelectorUnit one;
  JobSelectorUnit two;
  one.rename("ab"_text);
  two.rename("ABC"_text);
  EXPECT_EQ(sort.compare(&one, &two), -1);
  EXPECT_EQ(sort.compare(&two, &one), 1);
  two.rename("AB"_text);
  EXPECT_EQ(sort.compare(&one, &two), 0);
}

TEST_F(JobSelectorListTest, OnlyTheRunIsSortedWhenItsEndsAreGiven) {
  fill("zCBAa");
  const JobMarkedRange range = list.markedRange();
  JobSelectorListSort(list).sort(list.nodeAt(range.first), list.nodeAt(range.last + 1), false);
  EXPECT_EQ(letters(), "zABCa");
}

TEST_F(JobSelectorListTest, WritesTheTemplateAndTheEntriesInOrder) {
  const TestFolder folder;
  fill("b-");
  list.at(0)->params = JobTestBed::script("Define {\nx=1\n}");
  list.at(0)->title = "not written"_text;
  list.templateUnit.rename("*"_text);
  RawLayer::RawLineFile file(folder.file("f"));
  ASSERT_TRUE(file.openWrite());
  list.writeAll(file);
  file.close();
  EXPECT_EQ(folder.read("f"), "[Selector:*]\r\n\r\n"
                              "[Selector:b]\r\nDefine {\r\n  x=1\r\n}\r\n\r\n"
                              "[Selector:-]\r\n\r\n");
}
