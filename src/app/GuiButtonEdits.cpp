#include "app/GuiButtonEdits.h"

#include "job/JobExecutionRecord.h"
#include "job/LauncherData.h"

#include <memory>

namespace AppLayer {

using JobLayer::JobButtonList;
using JobLayer::JobButtonUnit;
using JobLayer::JobDataSaver;
using JobLayer::JobExecutorPair;
using JobLayer::JobSelectorList;
using RawLayer::RawListNode;
using namespace RawLayer::RawLiterals;

bool GuiButtonEdits::insertSeparator(int32_t index) {
  RawListNode* const place = buttons_.nodeAt(index);
  if (JobButtonList::isEnd(place)) return false;
  auto unit = std::make_unique<JobButtonUnit>();
  unit->rename(JobLayer::separatorName());
  buttons_.insertBefore(place, unit.release());
  return true;
}

bool GuiButtonEdits::remove(int32_t& cursor) {
  RawListNode* const place = buttons_.nodeAt(cursor);
  if (JobButtonList::isEnd(place)) return false;
  buttons_.erase(place);
  if (cursor >= buttons_.count()) cursor = buttons_.previousUsable(buttons_.count() - 1);
  return true;
}

bool GuiButtonEdits::move(int32_t& cursor, int32_t delta) {
  RawListNode* const place = buttons_.nodeAt(cursor);
  const int32_t target = cursor + delta;
  if (JobButtonList::isEnd(place) || target < 0 || target >= buttons_.count()) return false;
  RawListNode* const before = buttons_.nodeAt(delta > 0 ? target + 1 : target);
  buttons_.insertBefore(before, buttons_.unlink(place));
  cursor = target;
  return true;
}

void GuiButtonEdits::insertPaths(int32_t index, const RawLayer::RawStringList& paths) {
  const JobExecutorPair& executor = JobExecutorPair::executor();
  const JobLayer::JobExecutionRecord record(JobExecutorPair::user(), executor,
                                            "(Drop-Insert)"_text);
  for (const RawString& path : paths.elements()) buttons_.insertFromPath(index, path, executor);
  save();
}

void GuiButtonEdits::save() {
  JobDataSaver::save(buttons_, JobButtonList::sectionPrefix());
}

void GuiButtonEdits::saveSelectors() {
  JobDataSaver::save(JobLayer::LauncherData::instance().selectors,
                     JobSelectorList::sectionPrefix());
}

RawLayer::RawString GuiButtonEdits::quotedPaths(const RawLayer::RawStringList& paths) {
  RawString text;
  for (const RawString& path : paths.elements()) {
    if (!text.isEmpty()) text.appendChar(' ');
    text.append5("\""_text, path, "\""_text);
  }
  return text;
}

} // namespace AppLayer
