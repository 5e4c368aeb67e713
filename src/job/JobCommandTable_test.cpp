#include "job/JobCommandTable.h"

#include "job/JobCommandList.h"

#include "TestText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

using namespace JobLayer;

namespace {

const std::vector<std::string> Order = {
    "Define",      "Expand",      "Action",       "Menu",           "MenuItem",
    "Separator",   "PickupMenu",  "Shell",        "OpenFolder",     "OpenFile",
    "Pickup",      "AskMessage",  "PutMessage",   "InputText",      "If",
    "Else",        "While",       "For",          "Foreach",        "Break",
    "ToClipboard", "PopupWindow", "QuitLauncher", "AbortExecution", "RebootLauncher"};

std::vector<std::string> tableWords() {
  std::vector<std::string> words;
  for (const JobCommandRow row : jobCommandTable()) words.push_back(bytesOf(row().keyword));
  return words;
}

} // namespace

TEST(JobCommandTable, KeywordsStandInTheirOrder) {
  std::size_t place = 0;
  for (const std::string& word : tableWords()) {
    while (place < Order.size() && Order[place] != word) ++place;
    EXPECT_LT(place, Order.size()) << word << " is unknown, double or out of its order";
  }
}

TEST(JobCommandTable, HasTheCommandsOfTheFlow) {
  const std::vector<std::string> words = tableWords();
  for (const char* word : {"If", "Else", "While", "For", "Foreach", "Break", "AbortExecution"})
    EXPECT_EQ(std::count(words.begin(), words.end(), word), 1) << word;
}

TEST(JobCommandTable, GivesTheSameObjectsAtEachCall) {
  for (const JobCommandRow row : jobCommandTable()) EXPECT_EQ(&row(), &row());
}

TEST(JobCommandTable, TheRunnerHoldsTheTable) {
  const JobCommandList& runner = JobCommandList::instance();
  std::vector<std::string> words;
  for (const JobCommandUnit& command : runner.elements()) {
    words.push_back(bytesOf(command.keyword));
    EXPECT_EQ(command.executor, &runner);
  }
  EXPECT_EQ(words, tableWords());
}

TEST(JobCommandTable, CommandsAreFoundByTheirExactWord) {
  const JobCommandList& runner = JobCommandList::instance();
  for (const JobCommandRow row : jobCommandTable())
    EXPECT_EQ(runner.findCommand(row().keyword), &row());
  EXPECT_EQ(runner.findCommand("if"_text), nullptr);
  EXPECT_EQ(runner.findCommand("If "_text), nullptr);
  EXPECT_EQ(runner.findCommand(""_text), nullptr);
}
