#include "job/JobButtonList.h"

#include "job/JobIconSource.h"

#include "JobTestBed.h"
#include "JobTrees.h"

#include <gtest/gtest.h>

using namespace JobLayer;

namespace {

class IconRequests : public JobIconSource {
 public:
  std::vector<std::string> requests;

  IconRequests() { install(this); }
  ~IconRequests() override { install(nullptr); }
  int32_t request(const RawString& file, int32_t index) override {
    requests.push_back(bytesOf(file) + "," + std::to_string(index));
    return static_cast<int32_t>(requests.size());
  }
};

class JobButtonListTest : public testing::Test {
 protected:
  JobTestBed bed;
  JobButtonList list;

  JobButtonUnit& add(const std::string& name, const std::string& text = "") {
    JobButtonUnit* unit = list.add(raw(name));
    unit->params = JobTestBed::script(text);
    return *unit;
  }
  // One button with these lines, set up.
  JobButtonUnit& setUp(const std::string& text) {
    JobButtonUnit& unit = add("Name", text);
    unit.setup(JobExecutorPair::executor());
    return unit;
  }
  JobButtonUnit& insert(int32_t index, const std::string& path) {
    return *list.insertFromPath(index, raw(path), JobExecutorPair::executor());
  }
  std::string names() {
    std::string text;
    for (const JobButtonUnit& unit : list.elements()) text += bytesOf(unit.name) + ";";
    return text;
  }
};

} // namespace

TEST_F(JobButtonListTest, FindsTheFirstWithTheExactName) {
  JobButtonUnit& first = add("a");
  add("a");
  EXPECT_EQ(list.find("a"_text), &first);
  EXPECT_EQ(list.find("A"_text), nullptr);
}

TEST_F(JobButtonListTest, EntriesStandAtTheirIndex) {
  add("a");
  JobButtonUnit& second = add("b");
  EXPECT_EQ(list.at(1), &second);
  EXPECT_EQ(list.at(2), nullptr);
  EXPECT_EQ(list.at(-1), nullptr);
}

TEST_F(JobButtonListTest, EveryEntryNamedMinusIsASeparator) {
  EXPECT_TRUE(add("-").flags & JobButtonUnit::IsSeparator);
  EXPECT_TRUE(add("-").flags & JobButtonUnit::IsSeparator);
  EXPECT_FALSE(add("--").flags & JobButtonUnit::IsSeparator);
  EXPECT_EQ(names(), "-;-;--;");
}

TEST_F(JobButtonListTest, FlagBitsAreTheirNumbers) {
  EXPECT_EQ(JobButtonUnit::IsSeparator, 0x01);
  EXPECT_EQ(JobButtonUnit::IsHidden, 0x02);
  EXPECT_EQ(JobButtonUnit::HasIcon, 0x04);
  EXPECT_EQ(JobButtonUnit::ShowTitle, 0x08);
  EXPECT_EQ(JobButtonUnit::CanDrop, 0x10);
}

TEST_F(JobButtonListTest, AButtonWithoutKeysShowsItsName) {
  const JobButtonUnit& unit = setUp("");
  EXPECT_EQ(unit.title, "Name"_text);
  EXPECT_EQ(unit.tip, "Name"_text);
  EXPECT_EQ(unit.icon, -1);
  EXPECT_EQ(unit.flags, JobButtonUnit::ShowTitle);
}

TEST_F(JobButtonListTest, AnIconAndNoTitleShowOnlyTheIcon) {
  IconRequests icons;
  const JobButtonUnit& unit = setUp("IconFile=a.exe\nTitle=$(NoSuchName)");
  EXPECT_EQ(unit.flags, JobButtonUnit::HasIcon);
  EXPECT_EQ(unit.title, "Name"_text);
  EXPECT_EQ(unit.tip, "Name"_text);
  EXPECT_EQ(unit.icon, 1);
}

TEST_F(JobButtonListTest, AnIconAndATitleShowBoth) {
  const JobButtonUnit& unit = setUp("IconFile=a.exe\nTitle=Text");
  EXPECT_EQ(unit.flags, JobButtonUnit::HasIcon | JobButtonUnit::ShowTitle);
  EXPECT_EQ(unit.title, "Text"_text);
  EXPECT_EQ(unit.tip, "Text"_text);
}

TEST_F(JobButtonListTest, TheIconIsAskedForWithItsExpandedFileAndIndex) {
  IconRequests icons;
  JobTestBed::setVariable("dir", "C:\\x");
  setUp("IconFile=$(dir)\\a.exe\nIconIndex=$(n)7");
  setUp("IconFile=a\nIconIndex=-101");
  setUp("IconFile=a\nIconIndex=+3");
  EXPECT_EQ(icons.requests, (std::vector<std::string>{"C:\\x\\a.exe,7", "a,-101", "a,3"}));
}

TEST_F(JobButtonListTest, AnIndexThatIsNoDecimalNumberIsZero) {
  IconRequests icons;
  for (const char* index : {"", "x", "12a", "0x10", "-", " 1"})
    setUp(std::string("IconFile=a\nIconIndex=") + index);
  EXPECT_EQ(icons.requests, std::vector<std::string>(6, "a,0"));
}

TEST_F(JobButtonListTest, TheUnexpandedIconFileDecidesWhetherThereIsOne) {
  IconRequests icons;
  const JobButtonUnit& unit = setUp("IconFile=$(NoSuchName)");
  EXPECT_EQ(unit.flags, JobButtonUnit::HasIcon);
  EXPECT_EQ(icons.requests, std::vector<std::string>{",0"});
}

TEST_F(JobButtonListTest, WithoutAnIconFileNoIconIsAskedFor) {
  IconRequests icons;
  EXPECT_EQ(setUp("IconIndex=3").icon, -1);
  EXPECT_EQ(setUp("IconFile=").flags, JobButtonUnit::ShowTitle);
  EXPECT_TRUE(icons.requests.empty());
}

TEST_F(JobButtonListTest, ABlockAheadOfAKeyHidesIt) {
  const JobButtonUnit& unit = setUp("Title {\n}\nTitle=Text\nIconFile {\n}\nIconFile=a.exe");
  EXPECT_EQ(unit.title, "Name"_text);
  EXPECT_EQ(unit.flags, JobButtonUnit::ShowTitle);
}

TEST_F(JobButtonListTest, BooleansAreTrueUnlessEmptyOrFalse) {
  EXPECT_FALSE(setUp("Hidden=").flags & JobButtonUnit::IsHidden);
  EXPECT_FALSE(setUp("Hidden=fALSE").flags & JobButtonUnit::IsHidden);
  EXPECT_FALSE(setUp("Hidden=$(NoSuchName)").flags & JobButtonUnit::IsHidden);
  EXPECT_TRUE(setUp("Hidden=True").flags & JobButtonUnit::IsHidden);
  EXPECT_TRUE(setUp("Hidden=0").flags & JobButtonUnit::IsHidden);
  EXPECT_TRUE(setUp("DropRun=x").flags & JobButtonUnit::CanDrop);
  EXPECT_FALSE(setUp("DropRun=False").flags & JobButtonUnit::CanDrop);
}

TEST_F(JobButtonListTest, TheTipIsExpandedAndFallsBackToTheTitle) {
  JobTestBed::setVariable("x", "tip");
  EXPECT_EQ(setUp("Title=t\nTipText=a $(x)").tip, "a tip"_text);
  EXPECT_EQ(setUp("Title=t\nTipText=$(none)").tip, "t"_text);
}

TEST_F(JobButtonListTest, AnExpansionThatFailsCountsAsEmpty) {
  const JobButtonUnit& unit = setUp("Title=a $(open\nIconFile=b\nTipText=c $()\nHidden=$(");
  EXPECT_EQ(unit.title, "Name"_text);
  EXPECT_EQ(unit.tip, "Name"_text);
  EXPECT_EQ(unit.flags, JobButtonUnit::HasIcon);
  EXPECT_EQ(bed.dialogs.reports.size(), 3u);
}

TEST_F(JobButtonListTest, TheStateOfTheLastExpansionIsStored) {
  setUp("TipText=$(");
  EXPECT_EQ(JobVariableStore::instance().lastState, VariableInvalid);
  setUp("Title=$(");
  EXPECT_EQ(JobVariableStore::instance().lastState, VariableSuccess);
}

TEST_F(JobButtonListTest, KeysAreReadInTheirOrder) {
  IconRequests icons;
  setUp("TipText=$(6\nDropRun=$(5\nHidden=$(4\nIconIndex=$(3\nTitle=$(1\nIconFile=$(2");
  ASSERT_EQ(bed.dialogs.reports.size(), 6u);
  for (std::size_t i = 0; i < 6; ++i)
    EXPECT_NE(bed.dialogs.reports[i].find("$(" + std::to_string(i + 1)), std::string::npos);
}

TEST_F(JobButtonListTest, SetUpMayBeRepeated) {
  JobTestBed::setVariable("x", "one");
  JobButtonUnit& unit = setUp("Title=$(x)\nHidden=$(x)\nDropRun=$(x)");
  EXPECT_EQ(unit.title, "one"_text);
  JobTestBed::setVariable("x", "False");
  unit.setup(JobExecutorPair::executor());
  EXPECT_EQ(unit.title, "False"_text);
  EXPECT_EQ(unit.flags, JobButtonUnit::ShowTitle);
}

TEST_F(JobButtonListTest, TheListIsSetUpInOneRecord) {
  add("a", "Title=$(x)");
  add("-");
  list.setup(JobExecutorPair::executor());
  EXPECT_EQ(list.at(0)->title, "a"_text);
  EXPECT_EQ(list.at(1)->title, "-"_text);
  EXPECT_EQ(list.at(1)->flags, JobButtonUnit::IsSeparator | JobButtonUnit::ShowTitle);
  const std::vector<std::string> expected{
      "#Begin:Executor",
      "@System>Executor|$ SetupButtons",
      "#Begin:Variable#1",
      "@Executor>Variable#1|$ $(x)",
      "@Variable#1>Executor|$ Unknown ()",
      "#End:Variable#1",
      "@Executor>System|$ Success",
      "#End:Executor",
  };
  EXPECT_EQ(bed.diary(), expected);
}

TEST_F(JobButtonListTest, UsableEntriesAreNeitherSeparatorsNorHidden) {
  for (const char* name : {"-", "a", "h", "-", "b", "h"})
    add(name).flags |= *name == 'h' ? JobButtonUnit::IsHidden : 0;
  EXPECT_EQ(list.nextUsable(0), 1);
  EXPECT_EQ(list.nextUsable(1), 1);
  EXPECT_EQ(list.nextUsable(2), 4);
  EXPECT_EQ(list.nextUsable(5), -1);
  EXPECT_EQ(list.previousUsable(5), 4);
  EXPECT_EQ(list.previousUsable(4), 4);
  EXPECT_EQ(list.previousUsable(3), 1);
}

TEST_F(JobButtonListTest, WhereAllAheadAreHiddenThereIsNoPreviousOne) {
  for (int i = 0; i < 3; ++i) add("h").flags |= JobButtonUnit::IsHidden;
  add("a");
  EXPECT_EQ(list.previousUsable(2), -1);
  EXPECT_EQ(list.previousUsable(3), 3);
}

TEST_F(JobButtonListTest, AnIndexOutsideTheListFindsNothing) {
  EXPECT_EQ(list.nextUsable(0), -1);
  add("a");
  EXPECT_EQ(list.nextUsable(-1), -1);
  EXPECT_EQ(list.previousUsable(1), -1);
  EXPECT_EQ(list.previousUsable(-1), -1);
}

TEST_F(JobButtonListTest, ADroppedPathMakesAButtonThatStartsIt) {
  IconRequests icons;
  const JobButtonUnit& unit = insert(-1, "C:\\dir/tool.exe");
  EXPECT_EQ(unit.name, "tool.exe"_text);
  EXPECT_EQ(treeText(unit.params),
            "(IconFile=C:\\dir/tool.exe)(Shell{(Command=C:\\dir/tool.exe)})");
  EXPECT_EQ(unit.title, "tool.exe"_text);
  EXPECT_EQ(unit.flags, JobButtonUnit::HasIcon);
  EXPECT_EQ(unit.icon, 1);
}

TEST_F(JobButtonListTest, APathWithoutSeparatorIsTheNameAsAWhole) {
  EXPECT_EQ(insert(0, "tool.exe").name, "tool.exe"_text);
  EXPECT_TRUE(insert(0, "C:\\").name.isEmpty());
}

TEST_F(JobButtonListTest, ADroppedPathIsHeldInTheEncodingOfTheFile) {
  const JobButtonUnit* unit =
      list.insertFromPath(0, RawString::fromWide(u"C:\\\u3042.exe"), JobExecutorPair::executor());
  EXPECT_EQ(unit->name.encoding(), RawLayer::EncodingUtf8);
  EXPECT_EQ(bytesOf(unit->name), "\xE3\x81\x82.exe");
  EXPECT_EQ(bytesOf(unit->params.text("IconFile"_text)), "C:\\\xE3\x81\x82.exe");
}

TEST_F(JobButtonListTest, NewButtonsStandBeforeTheIndexOrAtTheEnd) {
  add("a");
  add("b");
  insert(1, "x");
  insert(0, "y");
  insert(-1, "z");
  insert(99, "-");
  EXPECT_EQ(names(), "y;a;x;b;z;-;");
  EXPECT_TRUE(list.at(5)->flags & JobButtonUnit::IsSeparator);
}

TEST_F(JobButtonListTest, ATemplateGivesTheParameters) {
  list.templateUnit.rename("*"_text);
  list.templateUnit.params = JobTestBed::script("Title=$(APPEND) and $(APPEND)\nIf {\n"
                                                "Condition=1\nShell {\nCommand=<$(APPEND)>\n}\n}");
  const JobButtonUnit& unit = insert(-1, "C:\\a.txt");
  EXPECT_EQ(treeText(unit.params), "(Title=C:\\a.txt and $(APPEND))(If{(Condition=1)(Shell{("
                                   "Command=<C:\\a.txt>)})})");
  EXPECT_EQ(treeText(list.templateUnit.params), "(Title=$(APPEND) and $(APPEND))(If{(Condition=1)"
                                                "(Shell{(Command=<$(APPEND)>)})})");
  EXPECT_EQ(names(), "a.txt;");
}

TEST_F(JobButtonListTest, ATemplateWithoutTheMarkerGivesEveryButtonTheSame) {
  list.templateUnit.rename("*"_text);
  list.templateUnit.params = JobTestBed::script("Title=t\nShell {\nCommand=c\n}");
  EXPECT_EQ(treeText(insert(-1, "a").params), treeText(insert(-1, "b").params));
}

TEST_F(JobButtonListTest, ChangingANewButtonLeavesTheTemplateAlone) {
  list.templateUnit.rename("*"_text);
  list.templateUnit.params = JobTestBed::script("Shell {\nCommand=$(APPEND)\n}");
  insert(-1, "a").params.substituteAll("a"_text, "b"_text);
  EXPECT_EQ(treeText(insert(-1, "c").params), "(Shell{(Command=c)})");
}

TEST_F(JobButtonListTest, TheIndexIsLookedUpAfterTheSetUpShowedItsDialog) {
  add("a");
  add("b");
  list.templateUnit.rename("*"_text);
  list.templateUnit.params = JobTestBed::script("Title=$(");
  bed.dialogs.onReport = [this] { list.erase(list.first()); };
  insert(1, "x");
  EXPECT_EQ(names(), "b;x;");
}

TEST_F(JobButtonListTest, WritesTheTemplateAndTheEntriesInOrder) {
  const TestFolder folder;
  add("a", "Title=1\nShell {\nCommand=x\n}");
  add("-");
  const auto written = [&] {
    RawLayer::RawLineFile file(folder.file("f"));
    EXPECT_TRUE(file.openWrite());
    list.writeAll(file);
    file.close();
    return folder.read("f");
  };
  const std::string entries = "[Button:a]\r\nTitle=1\r\nShell {\r\n  Command=x\r\n}\r\n\r\n"
                              "[Button:-]\r\n\r\n";
  EXPECT_EQ(written(), entries);
  list.templateUnit.rename("*"_text);
  list.templateUnit.params = JobTestBed::script("Title=$(APPEND)");
  EXPECT_EQ(written(), "[Button:*]\r\nTitle=$(APPEND)\r\n\r\n" + entries);
}
