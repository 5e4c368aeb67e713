#include "job/JobLog.h"

#include "raw/RawPath.h"

#include <memory>

namespace JobLayer {

using RawLayer::RawLockScope;
using RawLayer::RawMoment;

namespace {

constexpr uint32_t LongestWait = 100;    // milliseconds: how late a lost wake-up is made good
constexpr int32_t NewPathAttempts = 100; // of about a millisecond each

void writeUnits(const RawLayer::RawFileOwner& file, const RawString& line) {
  // A write that fails is not noticed: the log must never disturb what it tells of.
  if (line.encoding() == RawLayer::EncodingWide)
    RawLayer::writeFile(file, line.wide(), line.length() * 2);
  else
    RawLayer::writeFile(file, line.text(), line.length());
}

} // namespace

JobLogStorer::~JobLogStorer() {
  closeFile();
}

bool JobLogStorer::open() {
  if (isRunning()) stop();
  const bool isOpen = openFileOfNow();
  if (isOpen && separater != nullptr) separater->onNewFile();
  {
    const RawLockScope scope(queueLock_);
    accepting_ = isOpen;
  }
  if (isOpen && start()) return true;
  closeFile();
  const RawLockScope scope(queueLock_);
  accepting_ = false;
  queue_.clear();
  return false;
}

void JobLogStorer::post(const RawString& line) {
  bool wake = false;
  {
    const RawLockScope scope(queueLock_);
    if (!accepting_) return;
    queue_.add(line);
    wake = asleep_;
    asleep_ = false;
  }
  // A thread that is at work comes back for the line; a wake-up costs more than the line itself.
  if (wake) wakeUp_.signal();
}

void JobLogStorer::writeDirect(const RawString& line) {
  writeUnits(file_, line);
}

void JobLogStorer::stop() {
  {
    const RawLockScope scope(queueLock_);
    accepting_ = false;
  }
  requestStop();
  wakeUp_.signal();
  waitForEnd();
  byteLimit = 0;
  lineLimit = 0;
}

RawString JobLogStorer::path() {
  const RawLockScope scope(queueLock_);
  return path_;
}

bool JobLogStorer::isAccepting() {
  const RawLockScope scope(queueLock_);
  return accepting_;
}

void JobLogStorer::run() {
  RawString line;
  while (!isStopRequested()) {
    if (!takeFirst(line)) {
      lastWait_ = wakeUp_.wait(LongestWait);
      wakeUp_.reset();
      continue;
    }
    if (isLimitReached()) changeFile();
    writeLine(line);
    RawLayer::rawSleep(0);
  }
  while (takeFirst(line)) writeLine(line);
  closeFile();
}

// The oldest line; false, and the thread counts as asleep, when there is none. The mark is made
// under the lock of the queue: a line that comes later finds it and signals the event.
bool JobLogStorer::takeFirst(RawString& line) {
  std::unique_ptr<RawString> first;
  {
    const RawLockScope scope(queueLock_);
    first.reset(queue_.unlink(queue_.first()));
    asleep_ = first == nullptr;
  }
  if (first == nullptr) return false;
  line = std::move(*first);
  return true;
}

void JobLogStorer::writeLine(const RawString& line) {
  writeUnits(file_, line);
  bytesWritten_ += static_cast<uint32_t>(line.length());
  ++linesWritten_;
}

bool JobLogStorer::isLimitReached() const {
  return (byteLimit != 0 && bytesWritten_ >= byteLimit) ||
         (lineLimit != 0 && linesWritten_ >= lineLimit);
}

void JobLogStorer::changeFile() {
  closeFile();
  if (openFileOfNow() && separater != nullptr) separater->onNewFile();
}

RawString JobLogStorer::pathOf(const RawMoment& moment) const {
  RawString name = RawString::concat(stem, "_"_text);
  const auto appendNumber = [&name](int32_t value, int32_t width) {
    name.appendDigits(static_cast<uint64_t>(value), 10, width);
  };
  appendNumber(moment.year, 4);
  appendNumber(moment.month, 2);
  appendNumber(moment.day, 2);
  name.appendChar('_');
  appendNumber(moment.hour, 2);
  appendNumber(moment.minute, 2);
  appendNumber(moment.second, 2);
  name.appendChar('_');
  appendNumber(moment.milliseconds, 3);
  name.append5("."_text, extension);
  return RawLayer::joinPath(folder, name);
}

bool JobLogStorer::openFileOfNow() {
  RawString newPath = pathOf(RawLayer::localTime());
  // The file that was just left would be emptied if the next one got its name.
  for (int32_t i = 0; i < NewPathAttempts && newPath.equals(path_); ++i) {
    RawLayer::rawSleep(1);
    newPath = pathOf(RawLayer::localTime());
  }
  {
    const RawLockScope scope(queueLock_);
    path_ = newPath;
  }
  closeFile();
  bytesWritten_ = 0;
  linesWritten_ = 0;
  file_ = RawLayer::openFile(newPath, RawLayer::RawAccessWrite, RawLayer::RawShareRead,
                             RawLayer::RawCreateAlways);
  return file_.isValid();
}

void JobLogStorer::closeFile() {
  if (!file_) return;
  RawLayer::flushFile(file_);
  file_.reset();
}

} // namespace JobLayer
