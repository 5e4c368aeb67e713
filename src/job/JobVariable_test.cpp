#include "job/JobVariable.h"

#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"

#include "TestText.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace JobLayer;

namespace {

// A table of its own for each test, without built-ins unless asked for.
std::vector<std::string> namesOf(const JobVariableList& table) {
  std::vector<std::string> names;
  for (const JobVariableUnit& unit : table.elements()) names.push_back(bytesOf(unit.name));
  return names;
}

} // namespace

TEST(JobVariable, StatesHaveNumbersAndWords) {
  EXPECT_EQ(variableStateWord(0), "Success"_text);
  EXPECT_EQ(variableStateWord(1), "Overflow"_text);
  EXPECT_EQ(variableStateWord(2), "Invalid"_text);
  EXPECT_EQ(variableStateWord(3), "Unknown"_text);
  EXPECT_EQ(variableStateWord(4), "Expanded"_text);
  EXPECT_TRUE(variableStateWord(5).isEmpty());
}

TEST(JobVariable, OnlyNothingAndFalseInAnyCaseAreFalse) {
  for (const char* text : {"", "False", "false", "FALSE", "fAlSe"})
    EXPECT_FALSE(isTrueText(raw(text)));
  for (const char* text : {"True", "0", " ", "False ", "no", "x"})
    EXPECT_TRUE(isTrueText(raw(text)));
}

TEST(JobVariableList, SetAppendsANewVariableAndMarksIt) {
  JobVariableList table;
  table.set("a"_text, "1"_text);
  table.set("b"_text, "2"_text);
  ASSERT_EQ(namesOf(table), (std::vector<std::string>{"a", "b"}));
  JobVariableUnit* a = table.find("a"_text);
  ASSERT_NE(a, nullptr);
  EXPECT_EQ(a->flags, JobVariableUnit::UserVariable | JobVariableUnit::SetSinceRestore);
  EXPECT_EQ(a->value, "1"_text);
  EXPECT_TRUE(a->savedValue.isEmpty());
}

TEST(JobVariableList, SetChangesAVariableInItsPlace) {
  JobVariableList table;
  table.set("a"_text, "1"_text);
  table.set("b"_text, "2"_text);
  table.find("a"_text)->flags = JobVariableUnit::UserVariable;
  table.set("a"_text, "3"_text);
  EXPECT_EQ(table.count(), 2);
  EXPECT_EQ(table.valueOf("a"_text), "3"_text);
  EXPECT_EQ(table.find("a"_text)->flags, 3);
}

TEST(JobVariableList, NamesCompareInExactCase) {
  JobVariableList table;
  table.set("Name"_text, "1"_text);
  EXPECT_EQ(table.find("name"_text), nullptr);
  EXPECT_EQ(table.find("Nam"_text), nullptr);
  EXPECT_EQ(table.find("Names"_text), nullptr);
  EXPECT_TRUE(table.valueOf("NAME"_text).isEmpty());
  table.set("name"_text, "2"_text);
  EXPECT_EQ(table.count(), 2);
}

TEST(JobVariableList, TheFirstEntryOfAnyTwoIsFound) {
  JobVariableList table;
  auto* first = new JobVariableUnit("x"_text);
  table.append(first);
  table.append(new JobVariableUnit("x"_text));
  EXPECT_EQ(table.find("x"_text), first);
}

TEST(JobVariableList, FindSeesEveryChangeOfTheList) {
  JobVariableList table;
  table.set("a"_text, "1"_text);
  table.set("b"_text, "2"_text);
  EXPECT_NE(table.find("a"_text), nullptr);
  table.erase(table.first());
  EXPECT_EQ(table.find("a"_text), nullptr);
  table.set("c"_text, "3"_text);
  EXPECT_EQ(table.valueOf("c"_text), "3"_text);
  EXPECT_EQ(table.valueOf("b"_text), "2"_text);
}

TEST(JobVariableList, AViewIsStoredAsACopy) {
  JobVariableList table;
  std::string bytes = "value";
  table.set("x"_text, RawString::viewOf(RawLayer::EncodingUtf8, bytes.data(), 5));
  bytes = "-----";
  EXPECT_EQ(table.valueOf("x"_text), "value"_text);
}

TEST(JobVariableList, ARunPutsValuesBackAndMarksAllAsSet) {
  JobVariableList table;
  table.append(new JobVariableUnit("BuiltIn"_text));
  table.set("old"_text, "before"_text);
  table.find("old"_text)->flags = JobVariableUnit::UserVariable;
  table.saveAll();
  EXPECT_EQ(table.find("old"_text)->savedValue, "before"_text);
  EXPECT_EQ(table.find("old"_text)->flags, JobVariableUnit::UserVariable);

  table.set("old"_text, "during"_text);
  table.set("born"_text, "value"_text);
  table.restoreAll();
  EXPECT_EQ(table.valueOf("old"_text), "before"_text);
  ASSERT_NE(table.find("born"_text), nullptr);
  EXPECT_TRUE(table.valueOf("born"_text).isEmpty());
  for (const JobVariableUnit& unit : table.elements())
    EXPECT_NE(unit.flags & JobVariableUnit::SetSinceRestore, 0) << bytesOf(unit.name);
  EXPECT_EQ(table.find("BuiltIn"_text)->flags, JobVariableUnit::SetSinceRestore);
}

TEST(JobVariableList, SavingAgainKeepsWhatStandsThen) {
  JobVariableList table;
  table.set("x"_text, "1"_text);
  table.saveAll();
  table.set("x"_text, "2"_text);
  table.saveAll();
  table.set("x"_text, "3"_text);
  table.restoreAll();
  EXPECT_EQ(table.valueOf("x"_text), "2"_text);
  table.restoreAll();
  EXPECT_EQ(table.valueOf("x"_text), "2"_text);
}

TEST(JobVariableList, AVariableGivesItsValueAsItStands) {
  JobVariableUnit unit("x"_text);
  unit.value = "$(Not:a)"_text;
  JobVariableList table;
  JobVariableExpander expander(JobExecutorPair::executor(), table);
  JobVariableArgument argument(expander, "$(x)"_text);
  const JobVariableResult result = unit.evaluate(argument);
  EXPECT_EQ(result.state, VariableSuccess);
  EXPECT_EQ(result.text, "$(Not:a)"_text);
}

TEST(JobVariableFunctions, StandInTheOrderOfLookups) {
  JobVariableList table;
  appendBuiltInVariables(table);
  EXPECT_EQ(namesOf(table), (std::vector<std::string>{
                                "Not",       "Equal",      "EqualNoCase", "<",        ">",
                                "<=",        ">=",         "==",          "!=",       "&&",
                                "||",        "Calc",       "Length",      "Body",     "BodyEx",
                                "Base",      "Extension",  "Before",      "After",    "Code",
                                "IsMissing", "Path",       "IsFile",      "IsFolder", "IsProcess",
                                "IsWindow",  "File",       "FileCount",   "Folder",   "FolderCount",
                                "Process",   "Window",     "IsDefined",   "Cond",     "CondDef",
                                "IsKey",     "StripQuote", "Replace",     "Clipboard"}));
  for (const JobVariableUnit& unit : table.elements()) EXPECT_EQ(unit.flags, 0);
}

TEST(JobVariableStore, StartsWithTheBuiltInsInFront) {
  JobVariableStore store;
  JobVariableList builtIns;
  appendBuiltInVariables(builtIns);
  EXPECT_EQ(namesOf(store), namesOf(builtIns));
  EXPECT_EQ(store.lastState, VariableSuccess);
}

TEST(JobVariableStore, DefinesTwoVariablesOfItsOwn) {
  JobVariableStore store;
  const int32_t builtIns = store.count();
  store.defineInitialVariables();
  EXPECT_EQ(store.count(), builtIns + 2);
  EXPECT_EQ(store.valueOf("ExitCode"_text), "0"_text);
  ASSERT_NE(store.find("Missing"_text), nullptr);
  EXPECT_TRUE(store.valueOf("Missing"_text).isEmpty());
}

TEST(JobVariableStore, ABuiltInHidesAVariableOfItsName) {
  JobVariableStore store;
  const int32_t builtIns = store.count();
  store.set("Not"_text, "mine"_text);
  EXPECT_EQ(store.count(), builtIns);
  JobVariableExpander expander(JobExecutorPair::executor(), store);
  EXPECT_EQ(expander.expand("$(Not:False)"_text).text, "True"_text);
}

TEST(JobVariableStore, IsOneForTheProcess) {
  EXPECT_EQ(&JobVariableStore::instance(), &JobVariableStore::instance());
  EXPECT_NE(JobVariableStore::instance().find("Cond"_text), nullptr);
}

TEST(JobVariableStore, ThreadsMaySetFindAndReadAtOnce) {
  JobVariableStore store;
  store.set("shared"_text, "0"_text);
  JobFacts::instance().logCategories = RawString();
  std::vector<std::thread> threads;
  for (int32_t t = 0; t < 4; ++t)
    threads.emplace_back([&store, t] {
      const RawString own = RawString::fromInt64(t);
      for (int32_t i = 0; i < 200; ++i) {
        store.set("shared"_text, RawString::concat("value "_text, own));
        store.set(own, RawString::fromInt64(i));
        JobVariableExpander expander(JobExecutorPair::executor(), store);
        const RawString text = expander.expand("$(Before:$(shared):6)"_text).text;
        EXPECT_EQ(text, "value "_text);
        EXPECT_EQ(store.valueOf(own), RawString::fromInt64(i));
      }
    });
  for (std::thread& thread : threads) thread.join();
  JobFacts::instance().logCategories = "UCPV"_text;
  EXPECT_NE(store.find("3"_text), nullptr);
}
