// The sample configuration, as a user gets it: whole, without a fault, and with each option named.
#include "TestFolder.h"
#include "TourBed.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace JobLayer;

namespace {

using Words = std::vector<std::string>;

class Sample : public testing::Test {
 protected:
  Sample() : text(bytesOfSample()), bed(folder.write("Sample.ini", text), folder.file("Logs")) {
    bed.start();
  }
  static std::string bytesOfSample() {
    std::ifstream stream(TARVELLON_SAMPLE, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  [[nodiscard]] bool hasLine(const std::string& start) const {
    return text.find("\n" + start) != std::string::npos;
  }
  TestFolder folder;
  std::string text;
  TourBed bed;
};

// The keywords of a script and of all blocks inside that run as scripts.
void addKeywords(Words& words, const JobParamList& script) {
  for (const JobParamUnit& unit : script.elements()) {
    if (unit.type() != JobParamUnit::TypeCommand) continue;
    words.push_back(bytesOf(unit.key));
    addKeywords(words, static_cast<const JobParamCommand&>(unit).params);
  }
}

// How many entries are no separators.
template <class List>
int32_t countOfOthers(const List& list) {
  int32_t count = 0;
  for (const auto& unit : list.elements()) count += unit.name.equals(separatorName()) ? 0 : 1;
  return count;
}

} // namespace

TEST_F(Sample, LoadsWithoutAReport) {
  EXPECT_EQ(bed.dialogs.reports, 0);
}

TEST_F(Sample, HasSelectorsButtonsTemplatesAndActions) {
  const LauncherData& data = LauncherData::instance();
  EXPECT_GE(countOfOthers(data.selectors), 5);
  EXPECT_GE(countOfOthers(data.buttons), 25);
  EXPECT_EQ(data.selectors.templateUnit.name, raw("*"));
  EXPECT_EQ(data.buttons.templateUnit.name, raw("*"));
  for (const char* action : {"#Initialize", "Hello", "Tour"})
    EXPECT_NE(data.actions.find(raw(action)), nullptr) << action;
}

TEST_F(Sample, EveryOptionStandsInACommentWithItsDefault) {
  for (const char* option :
       {"LogFolder= ", "IconCacheFolder= ", "MaxLogFiles=200", "ViewSelector=False",
        "Horizontal=False", "ViewTip=False", "TopMost=False", "SysTray=False", "IconCache=True",
        "IconDelay=True", "ButtonAlign=Center", "IconExtension=ico,exe,dll", "IconUnusedCount=60"})
    EXPECT_TRUE(hasLine(std::string("// ") + option)) << option;
}

TEST_F(Sample, EveryKeywordIsACommand) {
  const LauncherData& data = LauncherData::instance();
  Words words;
  for (const JobSelectorUnit& unit : data.selectors.elements()) addKeywords(words, unit.params);
  for (const JobButtonUnit& unit : data.buttons.elements()) addKeywords(words, unit.params);
  for (const JobActionUnit& unit : data.actions.elements()) addKeywords(words, unit.params);
  addKeywords(words, data.selectors.templateUnit.params);
  addKeywords(words, data.buttons.templateUnit.params);
  EXPECT_GT(words.size(), 80U);
  for (const std::string& word : words)
    EXPECT_NE(TourBed::runner().findCommand(raw(word)), nullptr) << word;
}

TEST_F(Sample, WhatIsDroppedAppearsUnderItsOwnName) {
  LauncherData& data = LauncherData::instance();
  const JobButtonUnit* button =
      data.buttons.insertFromPath(0, raw("C:\\Programs\\tool.exe"), JobExecutorPair::executor());
  EXPECT_EQ(button->title, raw("tool.exe"));
  EXPECT_EQ(button->tip, raw("C:\\Programs\\tool.exe"));
  const JobSelectorUnit* selector = JobSelectorList::element(
      data.selectors.insertFromName(0, raw("C:\\Work\\Letters"), JobExecutorPair::executor()));
  EXPECT_EQ(selector->title, raw("Letters"));
  EXPECT_TRUE(TourBed::runner().RunSelector(0, raw("LButton"), {}));
  EXPECT_EQ(JobVariableStore::instance().valueOf(raw("Place")), raw("C:\\Work\\Letters"));
  EXPECT_EQ(bed.dialogs.reports, 0);
}
