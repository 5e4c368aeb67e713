#include "app/GuiButtonEdits.h"

#include "JobTestBed.h"
#include "job/JobConfigFile.h"

#include <gtest/gtest.h>

using namespace AppLayer;
using JobLayer::JobButtonList;
using JobLayer::JobButtonUnit;
using JobLayer::JobFacts;
using JobLayer::LauncherData;

namespace {

const char Config[] = "// my launcher\r\n"
                      "[Button:a]\r\nTitle=A\r\n\r\n"
                      "[Button:b]\r\n\r\n"
                      "[Selector:s]\r\n  Title=S\r\n"
                      "[Button:c]\r\n"
                      "[Option]\r\nViewTip=True\r\n";
const char SelectorsWritten[] = "// my launcher\r\n"
                                "[Button:a]\r\nTitle=A\r\n\r\n"
                                "[Button:b]\r\n\r\n"
                                "[Selector:s]\r\nTitle=S\r\n\r\n"
                                "[Button:c]\r\n"
                                "[Option]\r\nViewTip=True\r\n";

class GuiButtonEditsTest : public testing::Test {
 protected:
  GuiButtonEditsTest() {
    JobFacts::instance().configFile = folder.write("c.ini", Config);
    LauncherData& data = LauncherData::instance();
    JobLayer::JobConfigFile::load(JobFacts::instance().configFile, data.selectors, data.buttons,
                                  data.actions);
  }
  ~GuiButtonEditsTest() override { JobFacts::instance().configFile = {}; }

  JobTestBed bed;
  TestFolder folder;
  JobButtonList& buttons = LauncherData::instance().buttons;
  GuiButtonEdits edits{LauncherData::instance().buttons};

  [[nodiscard]] std::string names() const {
    std::string text;
    for (const JobButtonUnit& unit : buttons.elements()) text += bytesOf(unit.name) + ",";
    return text;
  }
  [[nodiscard]] std::string file() const { return folder.read("c.ini"); }
  void hide(int32_t index) { buttons.at(index)->flags |= JobButtonUnit::IsHidden; }
  static RawLayer::RawStringList paths(std::initializer_list<const char*> texts) {
    RawLayer::RawStringList list;
    for (const char* text : texts) list.add(raw(text));
    return list;
  }
};

} // namespace

// --- Separators

TEST_F(GuiButtonEditsTest, ASeparatorComesInFrontOfTheEntry) {
  EXPECT_TRUE(edits.insertSeparator(1));
  EXPECT_EQ(names(), "a,-,b,c,");
  EXPECT_EQ(buttons.at(1)->flags, JobButtonUnit::IsSeparator);
}

TEST_F(GuiButtonEditsTest, NoSeparatorComesOutsideTheList) {
  EXPECT_FALSE(edits.insertSeparator(-1));
  EXPECT_FALSE(edits.insertSeparator(3));
  EXPECT_EQ(names(), "a,b,c,");
}

TEST_F(GuiButtonEditsTest, SavingBringsAllButtonsToThePlaceOfTheFirst) {
  edits.insertSeparator(1);
  edits.save();
  EXPECT_EQ(file(), "// my launcher\r\n"
                    "[Button:a]\r\nTitle=A\r\n\r\n[Button:-]\r\n\r\n[Button:b]\r\n\r\n"
                    "[Button:c]\r\n\r\n"
                    "[Selector:s]\r\n  Title=S\r\n"
                    "[Option]\r\nViewTip=True\r\n");
}

// --- Deleting

TEST_F(GuiButtonEditsTest, TheCursorStaysWhereSomethingFollowed) {
  int32_t cursor = 1;
  EXPECT_TRUE(edits.remove(cursor));
  EXPECT_EQ(names(), "a,c,");
  EXPECT_EQ(cursor, 1);
}

TEST_F(GuiButtonEditsTest, PastTheEndTheCursorGoesToTheLastUsableEntry) {
  int32_t cursor = 2;
  EXPECT_TRUE(edits.remove(cursor));
  EXPECT_EQ(cursor, 1);
  hide(0);
  EXPECT_TRUE(edits.remove(cursor));
  EXPECT_EQ(cursor, -1);
}

TEST_F(GuiButtonEditsTest, TheLastOneLeavesNoCursor) {
  int32_t cursor = 0;
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(edits.remove(cursor));
  EXPECT_EQ(names(), "");
  EXPECT_EQ(cursor, -1);
  EXPECT_FALSE(edits.remove(cursor));
}

TEST_F(GuiButtonEditsTest, ASeparatorCanBeDeleted) {
  edits.insertSeparator(0);
  int32_t cursor = 0;
  EXPECT_TRUE(edits.remove(cursor));
  EXPECT_EQ(names(), "a,b,c,");
}

TEST_F(GuiButtonEditsTest, NothingIsDeletedOutsideTheList) {
  for (int32_t cursor : {-1, 3}) {
    const int32_t before = cursor;
    EXPECT_FALSE(edits.remove(cursor));
    EXPECT_EQ(cursor, before);
  }
  EXPECT_EQ(names(), "a,b,c,");
}

// --- Moving

TEST_F(GuiButtonEditsTest, AnEntryMovesByOneWithTheCursor) {
  const JobButtonUnit* unit = buttons.at(1);
  int32_t cursor = 1;
  EXPECT_TRUE(edits.move(cursor, 1));
  EXPECT_EQ(names(), "a,c,b,");
  EXPECT_EQ(cursor, 2);
  EXPECT_TRUE(edits.move(cursor, -1));
  EXPECT_TRUE(edits.move(cursor, -1));
  EXPECT_EQ(names(), "b,a,c,");
  EXPECT_EQ(cursor, 0);
  EXPECT_EQ(buttons.at(0), unit);
}

TEST_F(GuiButtonEditsTest, AtTheEndsAnEntryStays) {
  int32_t cursor = 2;
  EXPECT_FALSE(edits.move(cursor, 1));
  EXPECT_EQ(cursor, 2);
  cursor = 0;
  EXPECT_FALSE(edits.move(cursor, -1));
  EXPECT_EQ(cursor, 0);
  cursor = -1;
  EXPECT_FALSE(edits.move(cursor, 1));
  EXPECT_EQ(names(), "a,b,c,");
}

TEST_F(GuiButtonEditsTest, AMoveSavesTheSelectorsAndTheOldOrderOfTheButtonsStays) {
  int32_t cursor = 0;
  EXPECT_TRUE(edits.move(cursor, 1));
  GuiButtonEdits::saveSelectors();
  EXPECT_EQ(file(), SelectorsWritten);
  // The next edit that saves brings the new order.
  edits.save();
  EXPECT_LT(file().find("[Button:b]"), file().find("[Button:a]"));
}

// --- Dropped paths

TEST_F(GuiButtonEditsTest, PathsOnAButtonComeOutInReverseOrder) {
  edits.insertPaths(1, paths({"C:\\x.txt", "C:\\y.txt", "C:\\z.txt"}));
  EXPECT_EQ(names(), "a,z.txt,y.txt,x.txt,b,c,");
}

TEST_F(GuiButtonEditsTest, PathsOnAFreePlaceComeAtTheEndInTheirOrder) {
  edits.insertPaths(-1, paths({"C:\\x.txt", "C:\\y.txt"}));
  EXPECT_EQ(names(), "a,b,c,x.txt,y.txt,");
}

TEST_F(GuiButtonEditsTest, InsertedPathsAreSavedAndRecorded) {
  edits.insertPaths(-1, paths({"C:\\x.txt"}));
  EXPECT_NE(file().find("[Button:x.txt]\r\nIconFile=C:\\x.txt\r\n"
                        "Shell {\r\n  Command=C:\\x.txt\r\n}\r\n\r\n[Selector:s]"),
            std::string::npos)
      << file();
  const std::vector<std::string> diary = bed.diary();
  ASSERT_GE(diary.size(), 4U);
  const std::vector<std::string> expected = {"#Begin:Executor", "@User>Executor|$ (Drop-Insert)",
                                             "@Executor>User|$ Success", "#End:Executor"};
  EXPECT_EQ(std::vector<std::string>(diary.begin(), diary.begin() + 4), expected);
}

TEST_F(GuiButtonEditsTest, PathsAreQuotedWithABlankBetween) {
  EXPECT_EQ(GuiButtonEdits::quotedPaths(paths({})), raw(""));
  EXPECT_EQ(GuiButtonEdits::quotedPaths(paths({"C:\\a b"})), raw("\"C:\\a b\""));
  EXPECT_EQ(GuiButtonEdits::quotedPaths(paths({"C:\\a b", "D:"})), raw("\"C:\\a b\" \"D:\""));
}
