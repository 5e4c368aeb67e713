#include "job/JobCommandInputText.h"

#include "JobMainDialog.h"

using namespace JobLayer;
using WinLayer::WinInputParameterList;
using WinLayer::WinInputParameterUnit;

using Lines = std::vector<std::string>;

namespace {

Lines keysOf(const RawLayer::RawParameterList& list) {
  Lines keys;
  for (const RawLayer::RawParameterUnit& unit : list.elements()) keys.push_back(bytesOf(unit.key));
  return keys;
}

// The fields that the user saw, one line each: label|initial|flags, and their hints.
struct Seen {
  std::string prompt;
  Lines fields;
  std::vector<Lines> hints;
};

// Runs the form; the user finishes it with these values, or cancels.
Seen show(JobMainDialog& bed, const std::string& script, const Lines& values, bool finish = true,
          bool result = true) {
  Seen seen;
  bed.user.fill = [&](WinInputParameterList& list) {
    seen.prompt = bytesOf(list.prompt);
    std::size_t index = 0;
    for (WinInputParameterUnit& field : list.elements()) {
      seen.fields.push_back(bytesOf(field.label) + "|" + bytesOf(field.initial) + "|" +
                            std::to_string(field.flags));
      seen.hints.push_back(keysOf(field.hints));
      if (index < values.size()) field.value = raw(values[index]);
      ++index;
    }
    return finish;
  };
  EXPECT_EQ(JobTestBed::run(script), result) << script;
  return seen;
}

} // namespace

TEST(JobCommandInputText, SetsEachVariableToItsField) {
  JobMainDialog bed;
  const Seen seen = show(bed,
                         "InputText {\n Parameter=New $(x)entry\n 0:Variable=Name\n 0:Label=Who\n"
                         " 0:Initial=Ada\n 1:Variable=Note\n}",
                         {"Bob", "hello"});
  EXPECT_EQ(seen.prompt, "New entry");
  EXPECT_EQ(seen.fields, (Lines{"Who|Ada|0", "||0"}));
  EXPECT_EQ(JobTestBed::variable("Name"), "Bob");
  EXPECT_EQ(JobTestBed::variable("Note"), "hello");
  EXPECT_EQ(JobTestBed::variable("Result"), "True");
}

TEST(JobCommandInputText, FieldsEndAtTheFirstGap) {
  JobMainDialog bed;
  EXPECT_EQ(show(bed, "InputText {\n 0:Variable=A\n 2:Variable=C\n}", {}).fields.size(), 1U);
  EXPECT_EQ(show(bed, "InputText {\n 1:Variable=B\n}", {}).fields.size(), 0U);
  EXPECT_EQ(show(bed, "InputText", {}).fields.size(), 0U);
  EXPECT_EQ(show(bed, "InputText {\n 0:Variable=$(None)\n 1:Variable=B\n}", {}).fields.size(), 0U);
}

TEST(JobCommandInputText, FlagsComeFromTheTruthOfTheirTexts) {
  JobMainDialog bed;
  const Seen seen = show(bed,
                         "InputText {\n 0:Variable=A\n 0:ReadOnly=False\n 1:Variable=B\n"
                         " 1:ReadOnly=x\n 2:Variable=C\n 2:NoHint=True\n 2:Hints=a,b\n}",
                         {});
  EXPECT_EQ(seen.fields, (Lines{"||0", "||1", "||2"}));
  EXPECT_EQ(seen.hints[2], Lines{});
}

TEST(JobCommandInputText, HintsAreCutAtEveryCommaAndTrimmed) {
  JobMainDialog bed;
  const Seen seen =
      show(bed, "InputText {\n 0:Variable=A\n 0:Hints= Alice ,\"Bob,Carol\",alice, \"D\"\n}", {});
  EXPECT_EQ(seen.hints[0], (Lines{"Alice", "Bob", "Carol", "D"}));
}

TEST(JobCommandInputText, ACancelEndsTheRunUnlessItMayNot) {
  JobMainDialog bed;
  show(bed, "InputText {\n 0:Variable=Name\n}", {"typed"}, false, false);
  EXPECT_EQ(JobTestBed::variable("Result"), "False");
  EXPECT_FALSE(JobTestBed::hasVariable("Name"));
  show(bed, "InputText {\n NotAbort=True\n 0:Variable=Name\n}", {"typed"}, false, true);
  EXPECT_FALSE(JobTestBed::hasVariable("Name"));
  show(bed, "InputText {\n NotAbort=False\n 0:Variable=Name\n}", {"typed"}, false, false);
}

TEST(JobCommandInputText, ACancelInAButtonRunLeavesNoResultBehind) {
  JobMainDialog bed;
  std::string seen;
  bed.user.fill = [](WinInputParameterList&) { return false; };
  bed.user.onReport = [&] { seen = JobTestBed::variable("Result"); };
  JobTestBed::setVariable("Result", "before");
  JobTestBed::addButton("stops", "InputText {\n 0:Variable=Name\n}\nPutMessage {\n Parameter=x\n}");
  EXPECT_FALSE(JobTestBed::runner().RunButton(0, raw("LButton"), {}));
  EXPECT_EQ(seen, ""); // nothing ran behind it
  JobTestBed::addButton("goes on", "InputText {\n NotAbort=True\n 0:Variable=Name\n}\n"
                                   "PutMessage {\n Parameter=x\n}");
  EXPECT_TRUE(JobTestBed::runner().RunButton(1, raw("LButton"), {}));
  EXPECT_EQ(seen, "False");
  EXPECT_EQ(JobTestBed::variable("Result"), "before");
}

TEST(JobCommandInputText, WithoutAMainDialogItCountsAsCancelled) {
  const JobTestBed bed;
  EXPECT_FALSE(JobTestBed::run("InputText {\n 0:Variable=Name\n}"));
  EXPECT_EQ(JobTestBed::variable("Result"), "False");
  EXPECT_TRUE(JobTestBed::run("InputText {\n NotAbort=yes\n 0:Variable=Name\n}"));
  EXPECT_TRUE(bed.dialogs.reports.empty());
}

TEST(JobCommandInputText, APositionRemembersItsValuesNewestFirst) {
  JobMainDialog bed;
  const std::string form = "InputText {\n 0:Variable=A\n 1:Variable=B\n}";
  // The histories live as long as the process: these values are this test's own.
  show(bed, form, {"h-one", "x-one"});
  show(bed, form, {"h-two", ""});
  show(bed, form, {"H-ONE", ""});
  const Seen seen = show(bed, form, {"", ""});
  ASSERT_GE(seen.hints[0].size(), 2U);
  EXPECT_EQ(Lines(seen.hints[0].begin(), seen.hints[0].begin() + 2), (Lines{"H-ONE", "h-two"}));
  EXPECT_EQ(std::count(seen.hints[0].begin(), seen.hints[0].end(), "h-one"), 0);
  EXPECT_EQ(seen.hints[1].front(), "x-one");
}

TEST(JobCommandInputText, AFieldWithHintsOrWithoutAButtonTakesNoHistory) {
  JobMainDialog bed;
  show(bed, "InputText {\n 0:Variable=A\n}", {"remembered"});
  const Seen seen = show(bed, "InputText {\n 0:Variable=A\n 0:Hints=own\n}", {"from hints"});
  EXPECT_EQ(seen.hints[0], Lines{"own"});
  EXPECT_EQ(show(bed, "InputText {\n 0:Variable=A\n 0:NoHint=1\n}", {}).hints[0], Lines{});
}

TEST(JobCommandInputText, FieldsBeyondTwentyTakeNoPartInHistories) {
  JobMainDialog bed;
  std::string form = "InputText {\n";
  Lines values;
  for (int i = 0; i < 22; ++i) {
    form += " " + std::to_string(i) + ":Variable=V" + std::to_string(i) + "\n";
    values.push_back("deep-" + std::to_string(i));
  }
  form += "}";
  show(bed, form, values);
  const Seen seen = show(bed, form, values);
  EXPECT_EQ(seen.fields.size(), 22U);
  EXPECT_EQ(seen.hints[19].front(), "deep-19");
  EXPECT_EQ(seen.hints[20], Lines{});
  EXPECT_EQ(JobTestBed::variable("V21"), "deep-21");
}

TEST(JobCommandInputText, AFaultInAnyKeyStopsItBeforeTheForm) {
  for (const char* key :
       {"NotAbort", "0:Variable", "0:Label", "0:Initial", "0:Hints", "0:NoHint", "0:ReadOnly"}) {
    JobMainDialog bed;
    bool shown = false;
    bed.user.fill = [&](WinInputParameterList&) { return shown = true; };
    std::string script = std::string("InputText {\n ") + key + "=$(\n";
    if (std::string(key) != "0:Variable") script += " 0:Variable=A\n";
    EXPECT_FALSE(JobTestBed::run(script + "}")) << key;
    EXPECT_FALSE(shown);
    EXPECT_EQ(bed.user.reports.size(), 1U) << key;
  }
}

TEST(JobCommandInputText, AFaultInThePromptIsShownAndTheFormOpens) {
  JobMainDialog bed;
  bool shown = false;
  bed.user.fill = [&](WinInputParameterList&) { return shown = true; };
  // Its outcome is overwritten by that of NotAbort, which is looked at.
  EXPECT_TRUE(JobTestBed::run("InputText {\n Parameter=$(\n 0:Variable=A\n}"));
  EXPECT_TRUE(shown);
  EXPECT_EQ(bed.user.reports.size(), 1U);
}

TEST(JobCommandInputText, TheFormStandsInTheLog) {
  JobMainDialog bed;
  show(bed, "InputText {\n Parameter=Name\n}", {}, false, false);
  const Lines diary = bed.diary();
  ASSERT_GE(diary.size(), 6U);
  EXPECT_EQ(Lines(diary.begin() + 2, diary.begin() + 6),
            (Lines{"#Begin:Command#1", "@User>Command#1|$ (Input)Name", "@Command#1>User|$ Failed",
                   "#End:Command#1"}));
}
