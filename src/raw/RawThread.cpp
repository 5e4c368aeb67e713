#include "raw/RawThread.h"

#include <atomic>

namespace RawLayer {

namespace {

constexpr uint32_t StartPollMilliseconds = 100;

std::atomic<RawThreadHook::Handler*> installedHandler{nullptr};

} // namespace

bool RawThreadUnit::start() {
  {
    // Held over the creation: the new thread asks for it first, so it finds thread_ filled.
    const RawLockScope scope(stateLock_);
    if (running_) return false;
    running_ = starting_ = true;
    stopRequested_ = done_ = false;
    thread_.reset();
    if (createThread()) return true;
    running_ = starting_ = false;
  }
  finished();
  return false;
}

void RawThreadUnit::body() {
  const RawLockScope barrier(runLock_);
  {
    const RawLockScope scope(stateLock_);
    if (priority_ != 0) applyPriority();
    starting_ = false;
  }
  run();
  {
    const RawLockScope scope(stateLock_);
    running_ = starting_ = false;
    done_ = true;
  }
  finished();
}

void RawThreadUnit::waitForEnd() {
  for (;;) {
    {
      const RawLockScope scope(stateLock_);
      if (!starting_) break;
    }
    rawSleep(StartPollMilliseconds);
  }
  const RawLockScope barrier(runLock_);
}

void RawThreadUnit::requestStop() {
  const RawLockScope scope(stateLock_);
  stopRequested_ = true;
}

bool RawThreadUnit::isStopRequested() {
  const RawLockScope scope(stateLock_);
  return stopRequested_;
}

bool RawThreadUnit::isRunning() {
  const RawLockScope scope(stateLock_);
  return running_;
}

bool RawThreadUnit::isDone() {
  const RawLockScope scope(stateLock_);
  return done_;
}

void RawThreadUnit::setPriority(int32_t value) {
  const RawLockScope scope(stateLock_);
  priority_ = value;
}

void RawThreadHook::install(Handler* handler) {
  installedHandler = handler;
}

RawThreadHook::Handler* RawThreadHook::installed() {
  return installedHandler;
}

void RawThreadHook::raise(void* exceptionPointers) {
  if (Handler* handler = installed()) handler->onException(exceptionPointers);
}

} // namespace RawLayer
