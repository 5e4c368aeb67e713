#include "app/GuiSelectorEdits.h"

#include <memory>

namespace AppLayer {

using JobLayer::JobMarkedRange;
using JobLayer::JobSelectorList;
using JobLayer::JobSelectorUnit;
using RawLayer::RawListNode;

namespace {

// The nearest node from `node` on, itself included, towards the front, with or without a mark; the
// sentinel when there is none.
RawListNode* backTo(RawListNode* node, bool isMarked) {
  while (!JobSelectorList::isEnd(node) && JobSelectorList::element(node)->isMarked() != isMarked)
    node = JobSelectorList::previous(node);
  return node;
}

} // namespace

bool GuiSelectorEdits::insertSeparators() {
  bool isDone = false;
  for (RawListNode* node = selectors_.first(); !selectors_.isEnd(node);
       node = selectors_.next(node)) {
    if (!selectors_.element(node)->isMarked()) continue;
    auto unit = std::make_unique<JobSelectorUnit>();
    unit->rename(JobLayer::separatorName());
    selectors_.insertBefore(node, unit.release());
    isDone = true;
  }
  return isDone;
}

bool GuiSelectorEdits::deleteMarked(int32_t cursor) {
  JobSelectorUnit* survivor = JobSelectorList::element(selectors_.iteratorAt(cursor));
  bool isDone = false;
  for (RawListNode* node = selectors_.first(); !selectors_.isEnd(node);) {
    RawListNode* const following = selectors_.next(node);
    if (selectors_.element(node)->isMarked()) {
      selectors_.erase(node);
      isDone = true;
    }
    node = following;
  }
  if (isDone && survivor) survivor->flags |= JobSelectorUnit::IsMarked;
  return isDone;
}

bool GuiSelectorEdits::moveUp() {
  const JobMarkedRange range = selectors_.markedRange();
  if (range.first < 0) return false;
  if (range.contiguous)
    selectors_.moveMarkedUp();
  else
    selectors_.gatherMarked();
  return true;
}

bool GuiSelectorEdits::moveDown() {
  const JobMarkedRange range = selectors_.markedRange();
  if (range.first < 0) return false;
  if (range.contiguous)
    moveRunDown();
  else
    gatherDown();
  return true;
}

void GuiSelectorEdits::moveRunDown() {
  RawListNode* const last = backTo(selectors_.last(), true);
  RawListNode* const behind = selectors_.next(last);
  if (selectors_.isEnd(behind)) return;
  RawListNode* const ahead = backTo(last, false);
  selectors_.insertBefore(selectors_.next(ahead), selectors_.unlink(behind));
}

// The walk goes to the front and each entry is put just ahead of the last run, so the first of the
// list ends up nearest to it.
void GuiSelectorEdits::gatherDown() {
  RawListNode* node = backTo(backTo(selectors_.last(), true), false);
  RawListNode* const place = selectors_.next(node);
  while (!selectors_.isEnd(node)) {
    RawListNode* const following = selectors_.previous(node);
    if (selectors_.element(node)->isMarked())
      selectors_.insertBefore(place, selectors_.unlink(node));
    node = following;
  }
}

bool GuiSelectorEdits::sort(bool descending) {
  const JobMarkedRange range = selectors_.markedRange();
  if (!range.contiguous) return false;
  JobLayer::JobSelectorListSort sorter(selectors_);
  sorter.sort(selectors_.nodeAt(range.first), selectors_.nodeAt(range.last + 1), descending);
  return true;
}

void GuiSelectorEdits::save() {
  JobLayer::JobDataSaver::save(selectors_, JobSelectorList::sectionPrefix());
}

} // namespace AppLayer
