// The control's thread: one entry of the list after the other, then a sleep until there is more.
//
// The event is reset after the sleep and before the list is looked at. A request that comes in
// between has appended its entry before it signals, so no wake-up is lost.
#include "job/JobIconControl.h"

namespace JobLayer {

using RawLayer::RawLockScope;

namespace {

constexpr uint32_t PauseMilliseconds =
    1; // between two entries, so that a long queue starves nobody
constexpr uint32_t WaitMilliseconds = 1000;

} // namespace

void JobIconControl::open(WinLayer::WinDialog* mainDialog) {
  {
    const RawLockScope fields(cache.locks.state);
    mainDialog_ = mainDialog;
  }
  if (workPending()) start();
}

bool JobIconControl::start() {
  if (isRunning()) return false;
  queueMark(JobIconInfoUnit::FirstMark);
  setPriority(IdlePriority);
  return RawThreadUnit::start();
}

void JobIconControl::stop() {
  {
    const RawLockScope fields(cache.locks.state);
    mainDialog_ = nullptr;
  }
  requestStop();
  wakeEvent_.signal();
  waitForEnd();
}

WinLayer::WinDialog* JobIconControl::mainDialog() {
  const RawLockScope fields(cache.locks.state);
  return mainDialog_;
}

// The thread may never have run: at start-up there was nothing to do for it.
void JobIconControl::wake() {
  wakeEvent_.signal();
  if (mainDialog()) start();
}

void JobIconControl::run() {
  platform_.enterThread();
  while (!isStopRequested()) {
    RawLayer::rawSleep(PauseMilliseconds);
    const Work work = nextWork();
    if (work.unit)
      serve(work);
    else
      waitForWork();
  }
  platform_.leaveThread();
}

JobIconControl::Work JobIconControl::nextWork() {
  const RawLockScope ring(cache.locks.list);
  const RawLockScope fields(cache.locks.state);
  Work work;
  work.unit = cache.list.at(cache.queuePosition);
  if (work.unit) {
    work.copy = *work.unit;
    ++cache.queuePosition;
  } else {
    cache.workPending = false;
  }
  return work;
}

// Icons that came behind the last mark show at the next paint, so the window is told of them.
void JobIconControl::waitForWork() {
  if (servedUnmarked_) post(CommandRepaint);
  servedUnmarked_ = false;
  wakeEvent_.wait(WaitMilliseconds);
  wakeEvent_.reset();
}

void JobIconControl::serve(const Work& work) {
  const JobIconInfoUnit& entry = work.copy;
  switch (entry.state) {
  case JobIconInfoUnit::Requested:
    return finish(work.unit, extract(entry.file, entry.iconIndex));
  case JobIconInfoUnit::Loaded:
    return finish(work.unit, refresh(entry.imageId, entry.file, entry.iconIndex));
  case JobIconInfoUnit::FirstMark:
    servedUnmarked_ = false;
    return post(CommandRepaint);
  case JobIconInfoUnit::SecondMark:
    return post(CommandRepaintMenu);
  default:
    return;
  }
}

void JobIconControl::finish(JobIconInfoUnit* unit, int32_t imageId) {
  const RawLockScope fields(cache.locks.state);
  unit->imageId = imageId;
  unit->state = JobIconInfoUnit::Ready;
  servedUnmarked_ = true;
}

void JobIconControl::post(Command command) {
  if (WinLayer::WinDialog* dialog = mainDialog()) platform_.postCommand(*dialog, command);
}

} // namespace JobLayer
