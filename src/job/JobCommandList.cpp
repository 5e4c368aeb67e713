#include "job/JobCommandList.h"

#include "job/JobCommandTable.h"
#include "job/JobExecutionRecord.h"
#include "job/JobToolMessage.h"
#include "job/JobVariable.h"
#include "job/JobWindowContext.h"
#include "job/LauncherData.h"
#include "raw/RawSystem.h"

namespace JobLayer {

namespace {

constexpr int32_t SummaryCapacity = 1024;

struct KeyWord {
  int32_t virtualKey;
  const RawString& word;
};

// The key of the press, and the keys that are held with it.
RawString keyStateText(const RawString& key) {
  static const KeyWord words[] = {
      {0xA0, ",LShift"_text},   // VK_LSHIFT
      {0xA1, ",RShift"_text},   // VK_RSHIFT
      {0xA2, ",LControl"_text}, // VK_LCONTROL
      {0xA3, ",RControl"_text}, // VK_RCONTROL
  };
  RawString text = key;
  for (const KeyWord& row : words)
    if (RawLayer::isKeyDown(row.virtualKey)) text.append(row.word);
  return text;
}

// Counts the commands of the process, from 1.
int32_t nextCommandNumber() {
  static RawLayer::RawLock lock;
  static uint32_t counter = 0;
  const RawLayer::RawLockScope scope(lock);
  return static_cast<int32_t>(++counter);
}

RawString summaryOf(const RawString& keyword, const JobParamList& params) {
  RawString summary = RawString::withCapacity(SummaryCapacity);
  summary.append5("["_text, keyword, "]"_text);
  params.summarizeAll(summary);
  return summary;
}

JobRunBlock pressBlock(const JobParamList& params, const RawString& key,
                       const JobRectangle& rectangle) {
  JobRunBlock block(params);
  block.key = key;
  block.rectangle = rectangle;
  block.saveVariables = true;
  return block;
}

JobRunBlock dropBlock(const JobParamList& params, const RawString& drop, const RawString& dropList,
                      const JobRectangle& rectangle) {
  JobRunBlock block = pressBlock(params, "Drop"_text, rectangle);
  block.drop = drop;
  block.dropList = dropList;
  return block;
}

} // namespace

JobCommandList::JobCommandList() {
  for (const JobCommandRow command : jobCommandTable()) add(command());
}

JobCommandList& JobCommandList::instance() {
  static JobCommandList list;
  return list;
}

void JobCommandList::add(JobCommandUnit& command) {
  command.executor = this;
  append(&command);
}

bool JobCommandList::RunSelector(int32_t index, const RawString& key,
                                 const JobRectangle& rectangle) {
  const JobSelectorUnit* selector = LauncherData::instance().selectors.at(index);
  if (selector == nullptr) return false;
  JobRunBlock block = pressBlock(selector->params, key, rectangle);
  block.saveVariables = false; // what a selector defines sets the stage for the buttons
  return RunBlock(block, RawString::concat("(Selector)"_text, selector->name));
}

bool JobCommandList::RunButton(int32_t index, const RawString& key, const JobRectangle& rectangle) {
  const JobButtonUnit* button = LauncherData::instance().buttons.at(index);
  if (button == nullptr || (button->flags & JobButtonUnit::IsSeparator) != 0) return false;
  return RunBlock(pressBlock(button->params, key, rectangle),
                  RawString::concat("(Button)"_text, button->name));
}

bool JobCommandList::RunDrop(int32_t index, const RawString& drop, const RawString& dropList,
                             const JobRectangle& rectangle) {
  const JobButtonUnit* button = LauncherData::instance().buttons.at(index);
  if (button == nullptr || (button->flags & JobButtonUnit::CanDrop) == 0) return false;
  return RunBlock(dropBlock(button->params, drop, dropList, rectangle),
                  RawString::concat("(Drop)"_text, button->name));
}

bool JobCommandList::RunCommandLine(const JobCommandLineRun& run) {
  if (run.switchName.equals("a"_text)) return runAction(run.name);
  const bool isLeft = run.switchName.equals("l"_text);
  const bool isRight = run.switchName.equals("r"_text);
  if (!isLeft && !isRight && !run.switchName.equals("d"_text)) return false;

  const JobButtonUnit* button = LauncherData::instance().buttons.find(run.name);
  if (button == nullptr) return false;
  if (isLeft || isRight)
    return RunBlock(pressBlock(button->params, isLeft ? "LButton"_text : "RButton"_text, {}),
                    RawString::concat("(Comline-Button)"_text, button->name));
  return RunBlock(dropBlock(button->params, run.drop, run.dropList, {}),
                  RawString::concat("(Comline-Drop)"_text, button->name));
}

// An action is no press: it has no key state, and what it sets stays.
bool JobCommandList::runAction(const RawString& name) {
  const JobActionUnit* action = LauncherData::instance().actions.find(name);
  if (action == nullptr) return false;
  JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(),
                            RawString::concat("(Comline-Action)"_text, action->name));
  const JobParamList script = action->params;
  const bool result = Execute(script, JobExecutorPair::executor());
  SetResult(record, result);
  return result;
}

bool JobCommandList::RunBlock(const JobRunBlock& block, const RawString& title) {
  JobVariableStore& variables = JobVariableStore::instance();
  JobExecutionRecord record(JobExecutorPair::user(), JobExecutorPair::executor(), title);
  JobWindowContext::instance().rectangle = block.rectangle;
  // Before the save: a press leaves its key state behind.
  variables.set("KeyState"_text, keyStateText(block.key));
  if (block.saveVariables) {
    variables.saveAll();
    variables.set("Drop"_text, block.drop);
    variables.set("DropList"_text, block.dropList);
  }
  const bool result = Execute(block, JobExecutorPair::executor());
  if (block.saveVariables) variables.restoreAll();
  SetResult(record, result);
  JobWindowContext::instance().runEnded();
  return result;
}

bool JobCommandList::Execute(const JobParamList& list, const JobExecutorPair& executor) {
  for (const JobParamUnit& unit : list.elements()) {
    if (unit.type() != JobParamUnit::TypeCommand) continue;
    const auto& command = static_cast<const JobParamCommand&>(unit);
    if (!RunCommand(command.key, command.params, executor)) return false;
  }
  return true;
}

bool JobCommandList::RunCommand(const RawString& keyword, const JobParamList& params,
                                const JobExecutorPair& caller) {
  const JobExecutorPair pair = JobExecutorPair::command(nextCommandNumber());
  JobExecutionRecord record(caller, pair, keyword, summaryOf(keyword, params));
  JobCommandUnit* command = findCommand(keyword);
  if (command == nullptr)
    JobToolMessage::ReportCommandError("NoSuchCommand"_text, keyword, RawString::emptyStatic(),
                                       RawString::emptyStatic());
  const bool result = command != nullptr && command->Execute(params, pair);
  SetResult(record, result);
  return result;
}

void JobCommandList::SetResult(JobExecutionRecord& record, bool success) {
  record.setResult(success);
}

JobCommandUnit* JobCommandList::findCommand(const RawString& keyword) const {
  for (JobCommandUnit& command : elements())
    if (command.keyword.equals(keyword)) return &command;
  return nullptr;
}

} // namespace JobLayer
