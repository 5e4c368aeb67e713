#include "job/JobCommandList.h"

#include "job/JobExecutionRecord.h"

#include "JobTestBed.h"
#include "TestKeys.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

namespace {

constexpr JobRectangle Place{10, 20, 110, 40};

bool press(const char* name, const char* key = "LButton") {
  const JobButtonList& buttons = LauncherData::instance().buttons;
  int32_t index = 0;
  for (const JobButtonUnit& button : buttons.elements()) {
    if (button.name.equals(raw(name)))
      return JobTestBed::runner().RunButton(index, raw(key), Place);
    ++index;
  }
  ADD_FAILURE() << "no button " << name;
  return false;
}

bool runLine(const char* switchName, const char* name) {
  JobCommandLineRun run;
  run.switchName = raw(switchName);
  run.name = raw(name);
  run.drop = "C:\\a b"_text;
  run.dropList = "\"C:\\a b\" \"C:\\c\""_text;
  return JobTestBed::runner().RunCommandLine(run);
}

// A script without Define can still set a variable: a loop over one element.
const char* const SetEach = "Foreach {\n Parameter=set\n}";
// What a run saw in a variable stands in its records.
std::string seen(const std::string& variable) {
  return "If {\n Condition=$(" + variable + ")\n}\n";
}

// The results of variable calls in the log, as "title = result".
Lines calls(const JobTestBed& bed) {
  Lines found;
  std::string title;
  for (const std::string& line : bed.diary()) {
    const std::size_t bar = line.find("|$ ");
    if (bar == std::string::npos || line.find("Variable#") == std::string::npos) continue;
    if (line.compare(0, 9, "@Variable") == 0)
      found.push_back(title + " = " + line.substr(bar + 3));
    else
      title = line.substr(bar + 3);
  }
  return found;
}

} // namespace

TEST(JobCommandList, AListOfValuesRunsToTrueWithoutACommand) {
  const JobTestBed bed;
  JobTestBed::addButton("Values", "Title=x\nTipText=y");
  EXPECT_TRUE(press("Values"));
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Executor", "@User>Executor|$ (Button)Values",
                                "@Executor>User|$ Success", "#End:Executor"}));
}

TEST(JobCommandList, AnEmptyListIsTrue) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run(""));
  EXPECT_EQ(bed.diary(), Lines{});
}

TEST(JobCommandList, EachCommandHasARecordWithItsSummary) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Title=x\nIf {\n Condition=True\n Foreach {\n  Parameter=a\n }\n}"));
  EXPECT_EQ(bed.diary(),
            (Lines{"#Begin:Command#1", "@Executor>Command#1|[If][Condition=True][Foreach]",
                   "#Begin:Command#2", "@Command#1>Command#2|[Foreach][Parameter=a]",
                   "@Command#2>Command#1|$ Success", "#End:Command#2",
                   "@Command#1>Executor|$ Success", "#End:Command#1"}));
}

TEST(JobCommandList, TheFirstFailureStopsTheEnclosingLists) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("If {\n Condition=True\n AbortExecution\n Break\n}\nBreak"));
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Command#1",
                                "@Executor>Command#1|[If][Condition=True][AbortExecution][Break]",
                                "#Begin:Command#2", "@Command#1>Command#2|[AbortExecution]",
                                "@Command#2>Command#1|$ Failed", "#End:Command#2",
                                "@Command#1>Executor|$ Failed", "#End:Command#1"}));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandList, AnUnknownWordIsReportedInsideItsRecord) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("if {\n Condition=True\n}\nBreak"));
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Command#1", "@Executor>Command#1|[if][Condition=True]",
                                "#Error|$ NoSuchCommand [command] if",
                                "@Command#1>Executor|$ Failed", "#End:Command#1"}));
  EXPECT_EQ(bed.dialogs.reports, Lines{"No such command !\r\n  [command] if"});
  EXPECT_EQ(bed.dialogs.captions, Lines{"Tarvellon"});
}

TEST(JobCommandList, AnErrorShowsItsDialogWithoutAMainDialog) {
  JobTestBed bed;
  bed.dialogs.onReport = [] { EXPECT_EQ(JobWindowContext::instance().dialog, nullptr); };
  EXPECT_FALSE(JobTestBed::run("Nothing"));
  EXPECT_EQ(bed.dialogs.reports.size(), 1U);
}

TEST(JobCommandList, CommandNumbersCountOverAllRuns) {
  const JobTestBed bed;
  const auto lastNumber = [&bed] {
    const std::string log = bed.log();
    return std::stoi(log.substr(log.rfind("Command#") + 8));
  };
  JobTestBed::run("Else");
  const int first = lastNumber();
  JobTestBed::run("Else\nElse");
  EXPECT_EQ(lastNumber(), first + 2);
  JobTestBed::run("Unknown"); // takes its number before it is looked for
  EXPECT_EQ(lastNumber(), first + 3);
}

TEST(JobCommandList, EachRoundOfALoopTakesNewNumbers) {
  const JobTestBed bed;
  EXPECT_TRUE(JobTestBed::run("Foreach {\n Parameter=a,b\n Else\n}"));
  const Lines diary = bed.diary();
  ASSERT_EQ(diary.size(), 12U);
  EXPECT_EQ(diary[2], "#Begin:Command#2");
  EXPECT_EQ(diary[6], "#Begin:Command#3");
}

TEST(JobCommandList, TheFirstNumberOfAProcessIsOne) {
  // The counter is never reset, so only its order can be seen here: it has no number below 1.
  const JobTestBed bed;
  JobTestBed::run("Else");
  EXPECT_EQ(bed.log().find("Command#0"), std::string::npos);
  EXPECT_EQ(bed.log().find("Command#-"), std::string::npos);
}

TEST(JobCommandList, TitlesHaveNoBlankBehindTheParenthesis) {
  const JobTestBed bed;
  JobTestBed::addButton("Notepad", "").flags |= JobButtonUnit::CanDrop;
  JobTestBed::addSelector("Tools", "");
  JobTestBed::addAction("Hello", "");
  JobCommandList& runner = JobTestBed::runner();
  EXPECT_TRUE(runner.RunButton(0, "LButton"_text, {}));
  EXPECT_TRUE(runner.RunDrop(0, "a"_text, "\"a\""_text, {}));
  EXPECT_TRUE(runner.RunSelector(0, "LButton"_text, {}));
  EXPECT_TRUE(runLine("a", "Hello"));
  EXPECT_TRUE(runLine("l", "Notepad"));
  EXPECT_TRUE(runLine("r", "Notepad"));
  EXPECT_TRUE(runLine("d", "Notepad"));
  Lines titles;
  for (const std::string& line : bed.diary())
    if (line.compare(0, 15, "@User>Executor|") == 0) titles.push_back(line.substr(15));
  EXPECT_EQ(titles, (Lines{"$ (Button)Notepad", "$ (Drop)Notepad", "$ (Selector)Tools",
                           "$ (Comline-Action)Hello", "$ (Comline-Button)Notepad",
                           "$ (Comline-Button)Notepad", "$ (Comline-Drop)Notepad"}));
}

TEST(JobCommandList, AnIndexThatDoesNotFitRunsNothing) {
  const JobTestBed bed;
  JobTestBed::addButton("a", "").flags |= JobButtonUnit::CanDrop;
  JobTestBed::addSelector("b", "");
  JobCommandList& runner = JobTestBed::runner();
  for (const int32_t index : {-1, 1, 1000}) {
    EXPECT_FALSE(runner.RunButton(index, "LButton"_text, Place));
    EXPECT_FALSE(runner.RunDrop(index, "x"_text, "\"x\""_text, Place));
    EXPECT_FALSE(runner.RunSelector(index, "LButton"_text, Place));
  }
  EXPECT_EQ(bed.diary(), Lines{});
  EXPECT_FALSE(JobTestBed::hasVariable("KeyState"));
  EXPECT_EQ(JobWindowContext::instance().rectangle, JobRectangle{});
}

TEST(JobCommandList, ASeparatorCannotBePressed) {
  const JobTestBed bed;
  JobTestBed::addButton("x", "").rename("-"_text);
  EXPECT_FALSE(JobTestBed::runner().RunButton(0, "LButton"_text, Place));
  EXPECT_EQ(bed.diary(), Lines{});
}

TEST(JobCommandList, ADropNeedsAButtonThatTakesDrops) {
  const JobTestBed bed;
  JobButtonUnit& button = JobTestBed::addButton("x", "");
  EXPECT_FALSE(JobTestBed::runner().RunDrop(0, "a"_text, "\"a\""_text, Place));
  EXPECT_EQ(bed.diary(), Lines{});
  button.flags |= JobButtonUnit::CanDrop;
  EXPECT_TRUE(JobTestBed::runner().RunDrop(0, "a"_text, "\"a\""_text, Place));
}

TEST(JobCommandList, KeyStateOfAPlainPressIsItsKey) {
  const JobTestBed bed;
  JobTestBed::addButton("x", seen("KeyState"));
  JobTestBed::addSelector("s", seen("KeyState"));
  EXPECT_TRUE(press("x", "LButton"));
  EXPECT_TRUE(press("x", "RButton"));
  EXPECT_TRUE(JobTestBed::runner().RunSelector(0, "DClick"_text, {}));
  EXPECT_EQ(calls(bed), (Lines{"$(KeyState) = Success (LButton)", "$(KeyState) = Success (RButton)",
                               "$(KeyState) = Success (DClick)"}));
}

TEST(JobCommandList, KeyStateNamesTheKeysThatAreHeldInTheirOrder) {
  const JobTestBed bed;
  JobTestBed::addButton("x", seen("KeyState"));
  {
    TestKeys keys;
    keys.press(0xA1); // right Shift
    keys.press(0xA0); // left Shift
    EXPECT_TRUE(press("x"));
    keys.press(0xA3); // right Control
    keys.press(0xA2); // left Control
    EXPECT_TRUE(press("x", "RButton"));
  }
  EXPECT_TRUE(press("x"));
  EXPECT_EQ(calls(bed), (Lines{"$(KeyState) = Success (LButton,LShift,RShift)",
                               "$(KeyState) = Success (RButton,LShift,RShift,LControl,RControl)",
                               "$(KeyState) = Success (LButton)"}));
}

TEST(JobCommandList, ThePressLeavesItsKeyStateBehind) {
  const JobTestBed bed;
  JobTestBed::addButton("x", "");
  JobTestBed::setVariable("KeyState", "before");
  EXPECT_TRUE(press("x", "RButton"));
  EXPECT_EQ(JobTestBed::variable("KeyState"), "RButton");
}

TEST(JobCommandList, AButtonFindsAndLeavesNoTraceInVariables) {
  const JobTestBed bed;
  JobTestBed::addButton("x", std::string(SetEach) + "\n" + seen("Each"));
  JobTestBed::setVariable("Each", "old");
  EXPECT_TRUE(press("x"));
  EXPECT_EQ(calls(bed), Lines{"$(Each) = Success (set)"});
  EXPECT_EQ(JobTestBed::variable("Each"), "old");
}

TEST(JobCommandList, AVariableBornInAButtonRunStaysAndIsEmpty) {
  const JobTestBed bed;
  JobTestBed::addButton("x", SetEach);
  EXPECT_FALSE(JobTestBed::hasVariable("Each"));
  EXPECT_TRUE(press("x"));
  EXPECT_TRUE(JobTestBed::hasVariable("Each"));
  EXPECT_EQ(JobTestBed::variable("Each"), "");
  EXPECT_TRUE(JobTestBed::hasVariable("Drop"));
  EXPECT_EQ(JobTestBed::variable("Drop"), "");
}

TEST(JobCommandList, AFailedButtonRunRestoresAsWell) {
  const JobTestBed bed;
  JobTestBed::addButton("x", std::string(SetEach) + "\nAbortExecution");
  JobTestBed::setVariable("Each", "old");
  EXPECT_FALSE(press("x"));
  EXPECT_EQ(JobTestBed::variable("Each"), "old");
}

TEST(JobCommandList, RestoringMarksEveryVariable) {
  const JobTestBed bed;
  JobTestBed::setVariable("x", "1");
  JobVariableUnit* unit = JobVariableStore::instance().find("x"_text);
  unit->flags = JobVariableUnit::UserVariable;
  JobTestBed::addSelector("s", "");
  EXPECT_TRUE(JobTestBed::runner().RunSelector(0, "LButton"_text, {}));
  EXPECT_EQ(unit->flags, JobVariableUnit::UserVariable);
  JobTestBed::addButton("b", "");
  EXPECT_TRUE(press("b"));
  EXPECT_EQ(unit->flags, JobVariableUnit::UserVariable | JobVariableUnit::SetSinceRestore);
}

TEST(JobCommandList, ASelectorSetsTheStage) {
  const JobTestBed bed;
  JobTestBed::addSelector("s", SetEach);
  JobTestBed::addButton("b", seen("Each"));
  EXPECT_TRUE(JobTestBed::runner().RunSelector(0, "LButton"_text, {}));
  EXPECT_EQ(JobTestBed::variable("Each"), "set");
  EXPECT_EQ(JobTestBed::variable("KeyState"), "LButton");
  EXPECT_FALSE(JobTestBed::hasVariable("Drop"));
  EXPECT_TRUE(press("b"));
  EXPECT_EQ(calls(bed), Lines{"$(Each) = Success (set)"});
  EXPECT_EQ(JobTestBed::variable("Each"), "set");
}

TEST(JobCommandList, ADropHandsItsPathsToTheScript) {
  const JobTestBed bed;
  JobTestBed::addButton("x", seen("Drop") + seen("DropList") + seen("KeyState")).flags |=
      JobButtonUnit::CanDrop;
  JobTestBed::setVariable("Drop", "before");
  EXPECT_TRUE(JobTestBed::runner().RunDrop(0, "C:\\a b"_text, "\"C:\\a b\" \"C:\\c\""_text, {}));
  EXPECT_EQ(calls(bed),
            (Lines{"$(Drop) = Success (C:\\a b)", "$(DropList) = Success (\"C:\\a b\" \"C:\\c\")",
                   "$(KeyState) = Success (Drop)"}));
  EXPECT_EQ(JobTestBed::variable("Drop"), "before");
  EXPECT_EQ(JobTestBed::variable("DropList"), "");
}

TEST(JobCommandList, APressEmptiesTheDropVariables) {
  const JobTestBed bed;
  JobTestBed::addButton("x", seen("Drop"));
  JobTestBed::setVariable("Drop", "before");
  EXPECT_TRUE(press("x"));
  EXPECT_EQ(calls(bed), Lines{"$(Drop) = Success ()"});
  EXPECT_EQ(JobTestBed::variable("Drop"), "before");
}

TEST(JobCommandList, TheRectangleOfThePressIsKnown) {
  const JobTestBed bed;
  JobTestBed::addButton("x", "");
  JobTestBed::addAction("a", "");
  EXPECT_TRUE(press("x"));
  EXPECT_EQ(JobWindowContext::instance().rectangle, Place);
  EXPECT_TRUE(runLine("a", "a")); // an action has none to tell
  EXPECT_EQ(JobWindowContext::instance().rectangle, Place);
  EXPECT_TRUE(runLine("l", "x"));
  EXPECT_EQ(JobWindowContext::instance().rectangle, JobRectangle{});
}

TEST(JobCommandList, TheCommandLinePressesButtons) {
  const JobTestBed bed;
  JobTestBed::addButton("x", seen("KeyState") + seen("Drop") + SetEach);
  EXPECT_TRUE(runLine("l", "x"));
  EXPECT_TRUE(runLine("r", "x"));
  EXPECT_TRUE(runLine("d", "x")); // also without DropRun
  EXPECT_EQ(calls(bed), (Lines{"$(KeyState) = Success (LButton)", "$(Drop) = Success ()",
                               "$(KeyState) = Success (RButton)", "$(Drop) = Success ()",
                               "$(KeyState) = Success (Drop)", "$(Drop) = Success (C:\\a b)"}));
  EXPECT_EQ(JobTestBed::variable("Each"), "");
}

TEST(JobCommandList, AnActionOfTheCommandLineHasNoKeyStateAndSavesNothing) {
  const JobTestBed bed;
  JobTestBed::addAction("Hello", SetEach);
  JobTestBed::setVariable("Each", "old");
  EXPECT_TRUE(runLine("a", "Hello"));
  EXPECT_EQ(JobTestBed::variable("Each"), "set");
  EXPECT_FALSE(JobTestBed::hasVariable("KeyState"));
  EXPECT_FALSE(JobTestBed::hasVariable("Drop"));
}

TEST(JobCommandList, TheCommandLineTellsTheTruthOfTheRun) {
  const JobTestBed bed;
  JobTestBed::addAction("x", "AbortExecution");
  JobTestBed::addButton("x", "AbortExecution");
  for (const char* switchName : {"a", "l", "r", "d"}) EXPECT_FALSE(runLine(switchName, "x"));
  int failures = 0;
  for (const std::string& line : bed.diary())
    if (line == "@Executor>User|$ Failed") ++failures;
  EXPECT_EQ(failures, 4);
}

TEST(JobCommandList, AnUnknownNameOfTheCommandLineFailsInSilence) {
  const JobTestBed bed;
  JobTestBed::addAction("x", "");
  JobTestBed::addButton("x", "");
  for (const char* switchName : {"a", "l", "r", "d"}) {
    EXPECT_FALSE(runLine(switchName, "X"));
    EXPECT_FALSE(runLine(switchName, ""));
  }
  EXPECT_FALSE(runLine("", "x"));
  EXPECT_FALSE(runLine("h", "x"));
  EXPECT_FALSE(runLine("A", "x"));
  EXPECT_EQ(bed.diary(), Lines{});
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandList, SeveralReportsOfOneRunFollowEachOther) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("For {\n Begin=$(\n End=$(\n}"));
  ASSERT_EQ(bed.dialogs.reports.size(),
            3U); // two faults and a key that is missing
}

TEST(JobCommandList, AButtonMayGoWhileItRuns) {
  JobTestBed bed;
  bed.dialogs.onReport = [] { LauncherData::instance().buttons.clear(); };
  JobTestBed::addButton("x", "Unknown {\n a=b\n}\nElse");
  EXPECT_FALSE(press("x"));
  EXPECT_EQ(LauncherData::instance().buttons.count(), 0);
  const Lines diary = bed.diary();
  EXPECT_EQ(diary[1], "@User>Executor|$ (Button)x");
  EXPECT_EQ(diary.back(), "#End:Executor");
}

TEST(JobCommandList, TheFlagsWordOutlivesRuns) {
  const JobTestBed bed;
  JobTestBed::addButton("breaks", "Break");
  JobTestBed::addButton("else", "Else {\n AbortExecution\n}");
  JobTestBed::addButton("if", "If {\n Condition=False\n}");
  EXPECT_TRUE(press("else")); // no If has run yet
  EXPECT_FALSE(press("breaks"));
  EXPECT_TRUE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
  EXPECT_TRUE(press("if"));
  EXPECT_FALSE(press("else"));
  EXPECT_TRUE(JobTestBed::runner().hasFlag(JobCommandList::BreakTravels));
}

TEST(JobCommandList, FlagsAreBitsOfOneWord) {
  JobCommandList& runner = JobTestBed::runner();
  const JobTestBed bed;
  EXPECT_EQ(runner.flags, 0);
  runner.setFlag(JobCommandList::BreakTravels, true);
  EXPECT_EQ(runner.flags, 0x0001);
  runner.setFlag(JobCommandList::ElseRuns, true);
  EXPECT_EQ(runner.flags, 0x0003);
  runner.setFlag(JobCommandList::BreakTravels, false);
  EXPECT_EQ(runner.flags, 0x0002);
}

TEST(JobCommandList, RecordsKeepQuietWithoutTheirLetters) {
  const JobTestBed bed;
  JobFacts::instance().logCategories = "CPV"_text;
  JobTestBed::addButton("x", "Else");
  EXPECT_TRUE(press("x"));
  EXPECT_EQ(bed.diary(), (Lines{"#Begin:Command#1", "@Executor>Command#1|[Else]",
                                "@Command#1>Executor|$ Success", "#End:Command#1"}));
}

TEST(JobCommandList, ASummaryMayBeLongerThanItsReserve) {
  const JobTestBed bed;
  const std::string value(3000, 'x');
  EXPECT_TRUE(JobTestBed::run("Else {\n a=" + value + "\n}"));
  EXPECT_EQ(bed.diary()[1], "@Executor>Command#1|[Else][a=" + value + "]");
}

TEST(JobCommandList, SetResultWritesTheTwoWords) {
  const JobTestBed bed;
  for (const bool success : {true, false}) {
    JobExecutionRecord record(JobExecutorPair::executor(), JobExecutorPair::system(),
                              "Terminate"_text);
    JobCommandList::SetResult(record, success);
  }
  EXPECT_EQ(bed.diary(),
            (Lines{"#Begin:System", "@Executor>System|$ Terminate", "@System>Executor|$ Success",
                   "#End:System", "#Begin:System", "@Executor>System|$ Terminate",
                   "@System>Executor|$ Failed", "#End:System"}));
}
