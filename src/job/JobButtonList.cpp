#include "job/JobButtonList.h"

#include "job/JobExecutionRecord.h"
#include "job/JobIconSource.h"
#include "job/JobVariableExpander.h"
#include "raw/RawNumber.h"
#include "raw/RawPath.h"

#include <memory>

namespace JobLayer {

using RawLayer::RawLineFile;
using RawLayer::RawListNode;

namespace {

void setFlag(uint16_t& flags, uint16_t bit, bool value) {
  flags = static_cast<uint16_t>(value ? flags | bit : flags & ~bit);
}

} // namespace

RawString expandedSetupValue(const JobParamList& params, const RawString& key,
                             const JobExecutorPair& executor) {
  JobVariableExpander expander(executor);
  const RawString text = expander.expandAndStore(params.text(key));
  return JobVariableStore::instance().lastState == VariableSuccess ? text
                                                                   : RawString::emptyStatic();
}

// --- JobButtonUnit

void JobButtonUnit::rename(const RawString& newName) {
  name = newName;
  setFlag(flags, IsSeparator, newName.equals(separatorName()));
}

void JobButtonUnit::setup(const JobExecutorPair& executor) {
  const auto expanded = [&](const RawString& key) {
    return expandedSetupValue(params, key, executor);
  };
  const bool hasIcon = !params.text("IconFile"_text).isEmpty();
  setFlag(flags, HasIcon, hasIcon);
  const RawString shown = expanded("Title"_text);
  title = shown.isEmpty() ? name : shown;
  setFlag(flags, ShowTitle, !shown.isEmpty() || !hasIcon);
  if (hasIcon) {
    const RawString file = expanded("IconFile"_text);
    icon = JobIconSource::iconNumber(file, decimalIndexOf(expanded("IconIndex"_text)));
  }
  setFlag(flags, IsHidden, isTrueText(expanded("Hidden"_text)));
  setFlag(flags, CanDrop, isTrueText(expanded("DropRun"_text)));
  tip = expanded("TipText"_text);
  if (tip.isEmpty()) tip = title;
}

// --- JobButtonList

const RawString& JobButtonList::sectionPrefix() {
  return "Button:"_text;
}

JobButtonUnit* JobButtonList::find(const RawString& name) const {
  for (JobButtonUnit& unit : elements())
    if (unit.name.equals(name)) return &unit;
  return nullptr;
}

JobButtonUnit* JobButtonList::at(int32_t index) const {
  return element(nodeAt(index));
}

JobButtonUnit* JobButtonList::add(const RawString& name) {
  auto* unit = new JobButtonUnit;
  unit->rename(name);
  append(unit);
  return unit;
}

void JobButtonList::setup(const JobExecutorPair& executor) {
  const JobExecutionRecord record(JobExecutorPair::system(), executor, "SetupButtons"_text);
  for (JobButtonUnit& unit : elements()) unit.setup(executor);
}

int32_t JobButtonList::previousUsable(int32_t index) const {
  for (const RawListNode* node = nodeAt(index); !isEnd(node); node = previous(node), --index)
    if (element(node)->isUsable()) return index;
  return -1;
}

int32_t JobButtonList::nextUsable(int32_t index) const {
  for (const RawListNode* node = nodeAt(index); !isEnd(node); node = next(node), ++index)
    if (element(node)->isUsable()) return index;
  return -1;
}

JobButtonUnit* JobButtonList::insertFromPath(int32_t index, const RawString& path,
                                             const JobExecutorPair& executor) {
  const RawString text = path.shareAs(RawLayer::EncodingUtf8);
  auto unit = std::make_unique<JobButtonUnit>();
  unit->rename(RawLayer::nameOf(text));
  if (templateUnit.name.isEmpty()) {
    JobParamList shell;
    shell.addText("Command"_text, text);
    unit->params.addText("IconFile"_text, text);
    unit->params.addBlock("Shell"_text, shell);
  } else {
    unit->params = paramsFromTemplate(templateUnit.params, text);
  }
  unit->setup(executor);
  // Looked up behind the set-up, which may have shown a dialog.
  return element(insertBefore(nodeAt(index), unit.release()));
}

void JobButtonList::writeAll(RawLineFile& file) {
  if (!templateUnit.name.isEmpty())
    JobDataSaver::writeEntry(file, sectionPrefix(), templateUnit.name, templateUnit.params);
  for (const JobButtonUnit& unit : elements())
    JobDataSaver::writeEntry(file, sectionPrefix(), unit.name, unit.params);
}

} // namespace JobLayer
