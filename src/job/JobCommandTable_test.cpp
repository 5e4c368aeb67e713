#include "job/JobCommandTable.h"

#include "job/JobCommandList.h"

#include "TestText.h"

#include <cctype>
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

TEST(JobCommandTable, HasEveryCommandInItsOrder) {
  EXPECT_EQ(tableWords(), Order);
  EXPECT_EQ(Order.size(), 25U);
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
  for (const std::string& word : Order) {
    std::string other = word;
    for (char& unit : other)
      unit = static_cast<char>(std::tolower(static_cast<unsigned char>(unit)));
    EXPECT_EQ(runner.findCommand(raw(other)), nullptr) << other;
  }
  EXPECT_EQ(runner.findCommand("if"_text), nullptr);
  EXPECT_EQ(runner.findCommand("If "_text), nullptr);
  EXPECT_EQ(runner.findCommand(""_text), nullptr);
}
