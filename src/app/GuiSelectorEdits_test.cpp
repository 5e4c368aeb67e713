#include "app/GuiSelectorEdits.h"

#include "JobTestBed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

using namespace AppLayer;
using namespace JobLayer;

namespace {

class GuiSelectorEditsTest : public testing::Test {
 protected:
  JobSelectorList list;
  GuiSelectorEdits edits{list};

  // One selector for each letter; the capitals are marked.
  void fill(const std::string& letters) {
    list.clear();
    for (const char letter : letters) {
      JobSelectorUnit* unit = list.add(raw(std::string(1, letter)));
      if (letter >= 'A' && letter <= 'Z') unit->flags |= JobSelectorUnit::IsMarked;
    }
  }
  // The names, marked ones in brackets.
  std::string shown() {
    std::string text;
    for (const JobSelectorUnit& unit : list.elements())
      text += unit.isMarked() ? "[" + bytesOf(unit.name) + "]" : bytesOf(unit.name);
    return text;
  }
  std::string names() {
    std::string text;
    for (const JobSelectorUnit& unit : list.elements()) text += bytesOf(unit.name);
    return text;
  }
  std::string movedUp(const std::string& letters) {
    fill(letters);
    EXPECT_TRUE(edits.moveUp());
    return names();
  }
  std::string movedDown(const std::string& letters) {
    fill(letters);
    EXPECT_TRUE(edits.moveDown());
    return names();
  }
  std::string deleted(const std::string& letters, int32_t cursor) {
    fill(letters);
    EXPECT_TRUE(edits.deleteMarked(cursor));
    return shown();
  }
};

} // namespace

TEST_F(GuiSelectorEditsTest, WithoutAMarkNothingIsDone) {
  for (const char* letters : {"", "abc"}) {
    fill(letters);
    EXPECT_FALSE(edits.insertSeparators());
    EXPECT_FALSE(edits.deleteMarked(0));
    EXPECT_FALSE(edits.moveUp());
    EXPECT_FALSE(edits.moveDown());
    EXPECT_FALSE(edits.sort(false));
    EXPECT_FALSE(edits.sort(true));
    EXPECT_EQ(names(), letters);
  }
}

TEST_F(GuiSelectorEditsTest, EachMarkedEntryGetsASeparatorAheadOfIt) {
  fill("aBCd");
  EXPECT_TRUE(edits.insertSeparators());
  EXPECT_EQ(shown(), "a-[B]-[C]d");
  EXPECT_EQ(list.at(1)->flags, JobSelectorUnit::IsSeparator);
  EXPECT_TRUE(list.at(1)->params.count() == 0);
}

TEST_F(GuiSelectorEditsTest, AMarkedSeparatorGetsAnotherOne) {
  fill("-b");
  list.at(0)->flags |= JobSelectorUnit::IsMarked;
  EXPECT_TRUE(edits.insertSeparators());
  EXPECT_EQ(shown(), "-[-]b");
}

TEST_F(GuiSelectorEditsTest, TheEntryInTheCursorsPlaceSurvivesADeletion) {
  EXPECT_EQ(deleted("aBcd", 1), "a[c]d");
  EXPECT_EQ(deleted("aBcD", 1), "a[c]");
  EXPECT_EQ(deleted("abCD", 2), "a[b]");
  EXPECT_EQ(deleted("aBcD", 0), "[a]c"); // the cursor stands on one that stays
  EXPECT_EQ(deleted("ABc", 0), "[c]");
}

TEST_F(GuiSelectorEditsTest, ADeletionWithACursorOutsideMarksNothing) {
  EXPECT_EQ(deleted("aBc", -1), "ac");
  EXPECT_EQ(deleted("aBc", 3), "ac");
}

TEST_F(GuiSelectorEditsTest, AllCanBeDeleted) {
  EXPECT_EQ(deleted("ABC", 1), "");
  EXPECT_EQ(list.count(), 0);
}

TEST_F(GuiSelectorEditsTest, OneRunMovesByOnePlace) {
  EXPECT_EQ(movedUp("xABy"), "ABxy");
  EXPECT_EQ(movedUp("ABxy"), "ABxy");
  EXPECT_EQ(movedUp("xyA"), "xAy");
  EXPECT_EQ(movedDown("xABy"), "xyAB");
  EXPECT_EQ(movedDown("xyAB"), "xyAB");
  EXPECT_EQ(movedDown("Axy"), "xAy");
  EXPECT_EQ(movedDown("ABCx"), "xABC");
  EXPECT_EQ(movedUp("ABC"), "ABC");
  EXPECT_EQ(movedDown("ABC"), "ABC");
}

TEST_F(GuiSelectorEditsTest, ScatteredEntriesGatherBehindTheFirstInTheirOrder) {
  EXPECT_EQ(movedUp("AxByC"), "ABCxy");
  EXPECT_EQ(movedUp("xABycDzE"), "xABDEycz");
}

TEST_F(GuiSelectorEditsTest, ScatteredEntriesGatherAheadOfTheLastInReverseOrder) {
  EXPECT_EQ(movedDown("AxCyB"), "xyCAB");
  EXPECT_EQ(movedDown("AxByCDz"), "xyBACDz");
  EXPECT_EQ(movedDown("ABxC"), "xBAC");
}

TEST_F(GuiSelectorEditsTest, MovedEntriesKeepTheirMarks) {
  fill("AxCyB");
  edits.moveDown();
  EXPECT_EQ(shown(), "xy[C][A][B]");
}

TEST_F(GuiSelectorEditsTest, SortsTheRunByNameInEitherDirection) {
  fill("zCABa");
  EXPECT_TRUE(edits.sort(false));
  EXPECT_EQ(names(), "zABCa");
  EXPECT_TRUE(edits.sort(true));
  EXPECT_EQ(names(), "zCBAa");
  EXPECT_TRUE(edits.sort(true)); // a sort, not a reversal
  EXPECT_EQ(names(), "zCBAa");
}

TEST_F(GuiSelectorEditsTest, SortingFoldsAsciiLettersOnlyAndShorterNamesComeFirst) {
  for (const char* name : {"b", "AB", "a", "\xC3\xA4", "B2", "\xC3\x84"})
    list.add(raw(name))->flags |= JobSelectorUnit::IsMarked;
  EXPECT_TRUE(edits.sort(false));
  EXPECT_EQ(names(), "aABbB2\xC3\x84\xC3\xA4");
}

TEST_F(GuiSelectorEditsTest, ScatteredEntriesAreNotSorted) {
  fill("CaB");
  EXPECT_FALSE(edits.sort(false));
  EXPECT_FALSE(edits.sort(true));
  EXPECT_EQ(names(), "CaB");
}

TEST_F(GuiSelectorEditsTest, SavesTheSectionsOfTheSelectorsAlone) {
  TestFolder folder;
  JobFacts& facts = JobFacts::instance();
  const RawString before = facts.configFile;
  facts.configFile =
      folder.write("c.ini", "; kept\r\n[Selector:old]\r\nx=1\r\n[Button:b]\r\ny=2\r\n");
  fill("ab");
  edits.save();
  facts.configFile = before;
  EXPECT_EQ(folder.read("c.ini"),
            "; kept\r\n[Selector:a]\r\n\r\n[Selector:b]\r\n\r\n[Button:b]\r\ny=2\r\n");
}

// Each edit is a walk or two; one walk for each of so many entries would take many minutes.
TEST_F(GuiSelectorEditsTest, ManyEntriesAreEditedInWalks) {
  std::string letters;
  for (int i = 0; i < 100000; ++i) letters += i % 2 ? 'x' : 'A';
  const auto start = std::chrono::steady_clock::now();
  fill(letters);
  edits.insertSeparators();
  edits.moveDown();
  edits.moveUp();
  edits.deleteMarked(3);
  const auto taken = std::chrono::steady_clock::now() - start;
  EXPECT_EQ(list.count(), 100000);
  EXPECT_LT(taken, std::chrono::seconds(20));
}
