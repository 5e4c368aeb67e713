// The menus of scripts: Menu, MenuItem, Separator, PickupMenu.
#include "job/JobCommandMenu.h"

#include "JobMainDialog.h"
#include "job/JobIconSource.h"
#include "job/JobMenuList.h"

using namespace JobLayer;
using WinLayer::WinMenuHandle;

using Lines = std::vector<std::string>;

namespace {

// The user picks the entry with the title, wherever it stands.
std::function<uint32_t(const WinMenuHandle&)> picks(const std::string& title) {
  return [title](const WinMenuHandle&) -> uint32_t {
    uint32_t found = 0; // the newest node of that title
    for (const JobMenuUnit& unit : JobMenuList::instance().elements())
      if (bytesOf(unit.title) == title) found = static_cast<uint32_t>(unit.id);
    return found;
  };
}

class Icons : public JobIconSource {
 public:
  Lines requests;
  int32_t repaints = 0;
  Icons() { install(this); }
  ~Icons() override { install(nullptr); }
  int32_t request(const RawLayer::RawString& file, int32_t index) override {
    requests.push_back(bytesOf(file) + "," + std::to_string(index));
    return 7;
  }
  void repaintMenu() override { ++repaints; }
};

} // namespace

TEST(JobCommandMenu, RunsTheBlockOfTheChosenEntry) {
  JobMainDialog bed;
  bed.user.choose = picks("Two");
  EXPECT_TRUE(JobTestBed::run("Menu {\n MenuItem {\n  Title=One\n  Define {\n   x=1\n  }\n }\n"
                              " MenuItem {\n  Title=Two\n  Define {\n   x=2\n  }\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("x"), "2");
}

TEST(JobCommandMenu, AMenuClosedWithoutChoiceFailsInSilence) {
  JobMainDialog bed;
  EXPECT_FALSE(JobTestBed::run("Menu {\n MenuItem {\n  Title=One\n }\n}\nDefine {\n x=1\n}"));
  EXPECT_TRUE(bed.user.reports.empty());
  EXPECT_FALSE(JobTestBed::hasVariable("x"));
  bed.user.choose = [](const WinMenuHandle&) { return 4000000000U; };
  EXPECT_FALSE(JobTestBed::run("Menu {\n MenuItem {\n  Title=One\n }\n}"));
}

TEST(JobCommandMenu, IsBuiltOnceForEachList) {
  JobMainDialog bed;
  bed.user.choose = picks("frozen yes");
  const JobParamList script = JobTestBed::script(
      "Menu {\n Foreach {\n  Parameter=built\n }\n MenuItem {\n  Title=frozen $(t)\n }\n}");
  JobTestBed::setVariable("t", "yes");
  EXPECT_TRUE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(JobTestBed::variable("Each"), "built");
  JobTestBed::setVariable("Each", "");
  JobTestBed::setVariable("t", "no");
  EXPECT_TRUE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(JobTestBed::variable("Each"), ""); // the building script did not run again
  EXPECT_EQ(bed.user.menusShown, 2);
}

TEST(JobCommandMenu, AnInnerMenuHangsInTheOuterAndShowsNothingByItself) {
  JobMainDialog bed;
  bed.user.choose = picks("Deep");
  EXPECT_TRUE(JobTestBed::run("Menu {\n MenuItem {\n  Title=Top\n }\n Menu {\n  Title=Sub\n"
                              "  MenuItem {\n   Title=Deep\n   Define {\n    x=deep\n   }\n  }\n"
                              " }\n}"));
  EXPECT_EQ(bed.user.menusShown, 1);
  EXPECT_EQ(JobTestBed::variable("x"), "deep");
}

TEST(JobCommandMenu, CountsItsEntriesAndDropsIdleSeparators) {
  JobMainDialog bed;
  int32_t count = 0;
  bool open = false;
  bed.user.choose = [&](const WinMenuHandle& menu) {
    count = menu.count();
    open = menu.isOpen() && JobWindowContext::instance().menuOpen.isSet();
    return 0U;
  };
  EXPECT_FALSE(JobTestBed::run("Menu {\n Separator\n MenuItem\n Separator\n Separator\n MenuItem\n"
                               " Separator\n}"));
  EXPECT_EQ(count, 4); // item, separator, item, separator
  EXPECT_TRUE(open);
  EXPECT_FALSE(JobWindowContext::instance().menuOpen.isSet());
}

TEST(JobCommandMenu, AFailedBuildStaysHalfBuiltAndRestoresTheOuterMenu) {
  JobMainDialog bed;
  const JobParamList script =
      JobTestBed::script("Menu {\n MenuItem {\n  Title=a\n }\n Foo\n MenuItem {\n  Title=b\n }\n}");
  EXPECT_FALSE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(JobMenuList::instance().current, nullptr);
  EXPECT_EQ(bed.user.menusShown, 0);
  EXPECT_EQ(bed.user.reports.size(), 1U);
  int32_t count = 0;
  bed.user.choose = [&](const WinMenuHandle& menu) {
    count = menu.count();
    return 0U;
  };
  EXPECT_FALSE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(count, 1);
  EXPECT_EQ(bed.user.reports.size(), 1U);
}

TEST(JobCommandMenu, EntriesOutsideAMenuAreReported) {
  for (const char* keyword : {"MenuItem", "Separator"}) {
    const JobTestBed bed;
    EXPECT_FALSE(JobTestBed::run(keyword));
    EXPECT_EQ(bed.dialogs.reports,
              Lines{std::string("Out of menu scope !\r\n  [command] ") + keyword});
  }
}

TEST(JobCommandMenu, WithoutAMainDialogItIsBuiltButNotShown) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("Menu {\n Define {\n  x=built\n }\n MenuItem {\n  Title=a\n"
                               "  AbortExecution\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("x"), "built");
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandMenu, IdsComeFromOneCounter) {
  JobMainDialog bed;
  const int32_t before = JobMenuList::instance().counter;
  EXPECT_FALSE(JobTestBed::run("Menu {\n MenuItem\n Separator\n MenuItem\n}"));
  EXPECT_EQ(JobMenuList::instance().counter, before + 3);
}

TEST(JobCommandMenu, AsksForIconsByExpandedFileAndDecimalIndex) {
  JobMainDialog bed;
  Icons icons;
  EXPECT_FALSE(JobTestBed::run("Define {\n f=a.exe\n}\nMenu {\n MenuItem {\n  IconFile=$(f)\n"
                               "  IconIndex=3\n }\n MenuItem {\n  IconFile=b\n  IconIndex=x\n }\n"
                               " MenuItem {\n  IconFile=c\n  IconIndex=0x10\n }\n MenuItem\n}"));
  EXPECT_EQ(icons.requests, (Lines{"a.exe,3", "b,0", "c,0"}));
  EXPECT_EQ(icons.repaints, 1);
}

TEST(JobCommandMenu, ABreakInTheChosenEntryEndsTheLoopAround) {
  JobMainDialog bed;
  bed.user.choose = picks("leave");
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=1,2\n Menu {\n  MenuItem {\n   Title=leave\n"
                              "   Break\n  }\n }\n}"));
  EXPECT_EQ(JobTestBed::variable("Each"), "1");
}

TEST(JobCommandMenu, EachExpandedListIsANewMenu) {
  JobMainDialog bed;
  const JobParamList script = JobTestBed::script(
      "Expand {\n N=$(Each)\n Menu {\n  MenuItem {\n   Title=e-$(N)\n   Define {\n    x=$(N)\n"
      "   }\n  }\n }\n}");
  for (const char* each : {"one", "two"}) {
    JobTestBed::setVariable("Each", each);
    bed.user.choose = picks(std::string("e-") + each);
    EXPECT_TRUE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
    EXPECT_EQ(JobTestBed::variable("x"), each);
  }
}

// --- PickupMenu

TEST(JobCommandPickupMenu, TheChoiceSetsTheRawValue) {
  JobMainDialog bed;
  bed.user.choose = picks("key-two");
  JobTestBed::setVariable("v", "late");
  EXPECT_TRUE(JobTestBed::run("PickupMenu {\n key-one=1\n Separator\n key-two=$(v)\n"
                              " Other {\n  a=b\n }\n}\nForeach {\n Parameter=$(Pickup)\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "$(v)");
  EXPECT_EQ(JobTestBed::variable("Each"), "late");
}

TEST(JobCommandPickupMenu, ConvertsItsEntries) {
  const JobParamList list = JobMenuPopupMenu::converted(
      JobTestBed::script("Title=x\nSeparator=y\nSeparator\nOther {\n}\nk=$(v)"));
  RawLayer::RawString summary;
  list.summarizeAll(summary);
  EXPECT_EQ(bytesOf(summary), "[MenuItem][Separator][Separator][MenuItem]");
  const auto* item = static_cast<const JobParamCommand*>(list.element(list.last()));
  EXPECT_EQ(bytesOf(item->params.text(raw("Title"))), "k");
}

TEST(JobCommandPickupMenu, KeysAreExpandedWhenItIsBuilt) {
  JobMainDialog bed;
  JobTestBed::setVariable("t", "now");
  bed.user.choose = picks("title now");
  EXPECT_TRUE(JobTestBed::run("PickupMenu {\n title $(t)=1\n}"));
  EXPECT_EQ(JobTestBed::variable("Pickup"), "1");
}

TEST(JobCommandPickupMenu, IsFoundAgainByTheBlockAsWritten) {
  JobMainDialog bed;
  const JobParamList script = JobTestBed::script("PickupMenu {\n a-k=1\n}");
  EXPECT_FALSE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  const int32_t nodes = JobMenuList::instance().count();
  EXPECT_FALSE(JobTestBed::runner().Execute(script, JobExecutorPair::executor()));
  EXPECT_EQ(JobMenuList::instance().count(), nodes);
  EXPECT_EQ(bed.user.menusShown, 2);
}

TEST(JobCommandPickupMenu, InOneShotModeItFailsInSilence) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("PickupMenu {\n a=1\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}
