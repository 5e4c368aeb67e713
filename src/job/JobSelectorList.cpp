#include "job/JobSelectorList.h"

#include "job/JobButtonList.h"
#include "raw/RawPath.h"

#include <memory>

namespace JobLayer {

using RawLayer::RawLineFile;
using RawLayer::RawListNode;

namespace {

bool isUnmarkedOrEnd(const RawListNode* node) {
  const JobSelectorUnit* unit = JobSelectorList::element(node);
  return unit == nullptr || !unit->isMarked();
}

bool isMarkedOrEnd(const RawListNode* node) {
  const JobSelectorUnit* unit = JobSelectorList::element(node);
  return unit == nullptr || unit->isMarked();
}

} // namespace

// --- JobSelectorUnit

void JobSelectorUnit::rename(const RawString& newName) {
  name = newName;
  flags = static_cast<uint16_t>(newName.equals(separatorName()) ? flags | IsSeparator
                                                                : flags & ~IsSeparator);
}

void JobSelectorUnit::setup(const JobExecutorPair& executor) {
  title = expandedSetupValue(params, "Title"_text, executor);
  if (title.isEmpty()) title = name;
}

// --- JobSelectorList

const RawString& JobSelectorList::sectionPrefix() {
  return "Selector:"_text;
}

JobSelectorUnit* JobSelectorList::find(const RawString& name) const {
  for (JobSelectorUnit& unit : elements())
    if (unit.name.equals(name)) return &unit;
  return nullptr;
}

JobSelectorUnit* JobSelectorList::at(int32_t index) const {
  return element(nodeAt(index));
}

JobSelectorUnit* JobSelectorList::add(const RawString& name) {
  auto* unit = new JobSelectorUnit;
  unit->rename(name);
  append(unit);
  return unit;
}

void JobSelectorList::setup(const JobExecutorPair& executor) {
  for (JobSelectorUnit& unit : elements()) unit.setup(executor);
}

RawListNode* JobSelectorList::insertFromName(int32_t index, const RawString& name,
                                             const JobExecutorPair& executor) {
  const RawString text = name.shareAs(RawLayer::EncodingUtf8);
  auto unit = std::make_unique<JobSelectorUnit>();
  unit->rename(RawLayer::nameOf(text));
  if (templateUnit.name.isEmpty()) {
    JobParamList define;
    define.addText("Selector"_text, text);
    unit->params.addBlock("Define"_text, define);
  } else {
    unit->params = paramsFromTemplate(templateUnit.params, text);
  }
  unit->setup(executor);
  // Looked up behind the set-up, which may have shown a dialog.
  return insertBefore(nodeAt(index), unit.release());
}

RawListNode* JobSelectorList::iteratorAt(int32_t index) const {
  RawListNode* node = nodeAt(index);
  if (isEnd(node)) return node;
  while (!isUnmarkedOrEnd(node)) node = next(node);
  if (!isEnd(node)) return node;
  node = last();
  while (!isUnmarkedOrEnd(node)) node = previous(node);
  return node;
}

JobMarkedRange JobSelectorList::markedRange() const {
  JobMarkedRange range;
  int32_t index = 0;
  int32_t marked = 0;
  for (const JobSelectorUnit& unit : elements()) {
    if (unit.isMarked()) {
      if (++marked == 1) range.first = index;
      range.last = index;
    }
    ++index;
  }
  range.contiguous = marked > 0 && range.last - range.first == marked - 1;
  return range;
}

void JobSelectorList::gatherMarked() {
  RawListNode* place = first();
  while (!isMarkedOrEnd(place)) place = next(place);
  while (!isUnmarkedOrEnd(place)) place = next(place);
  for (RawListNode* node = place; !isEnd(node);) {
    RawListNode* const following = next(node);
    if (element(node)->isMarked()) insertBefore(place, unlink(node));
    node = following;
  }
}

void JobSelectorList::moveMarkedUp() {
  RawListNode* node = first();
  while (!isMarkedOrEnd(node)) node = next(node);
  RawListNode* const ahead = previous(node);
  if (isEnd(node) || isEnd(ahead)) return;
  while (!isUnmarkedOrEnd(node)) node = next(node);
  insertBefore(node, unlink(ahead));
}

void JobSelectorList::writeAll(RawLineFile& file) {
  if (!templateUnit.name.isEmpty())
    JobDataSaver::writeEntry(file, sectionPrefix(), templateUnit.name, templateUnit.params);
  for (const JobSelectorUnit& unit : elements())
    JobDataSaver::writeEntry(file, sectionPrefix(), unit.name, unit.params);
}

// --- JobSelectorListSort

int32_t JobSelectorListSort::compare(const JobSelectorUnit* a, const JobSelectorUnit* b) {
  return a->name.compareNoCase(b->name);
}

} // namespace JobLayer
