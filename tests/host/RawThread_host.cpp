// The host's threads, from POSIX threads. Exceptions end the process as the host does it.
#include "raw/RawThread.h"

#include "HostFaults.h"

#include <pthread.h>

namespace RawLayer {

namespace {

struct HostThread {
  pthread_t thread;
};

void* threadEntry(void* unit) {
  static_cast<RawThreadUnit*>(unit)->body();
  return nullptr;
}

} // namespace

void RawThreadCloser::close(Handle handle) {
  auto* host = static_cast<HostThread*>(handle);
  pthread_detach(host->thread);
  delete host;
}

bool RawThreadUnit::createThread() {
  if (HostFaults::fails(HostFaults::Thread)) return false;
  auto* host = new HostThread;
  if (pthread_create(&host->thread, nullptr, threadEntry, this) != 0) {
    delete host;
    return false;
  }
  thread_.reset(host);
  ++threadId_; // the host has no number of its own for it
  return true;
}

void RawThreadUnit::applyPriority() {}

void RawThreadHook::installProcessFilter() {}

} // namespace RawLayer
