#include "raw/RawLock.h"

#include "raw/RawOwner.h"

#include <windows.h>

#include <new>

namespace RawLayer {

static_assert(sizeof(CRITICAL_SECTION) <= 40 && alignof(CRITICAL_SECTION) <= 8);
static_assert(RawEvent::Signalled == WAIT_OBJECT_0 && RawEvent::TimedOut == WAIT_TIMEOUT &&
              RawEvent::Failed == WAIT_FAILED);

namespace {

struct EventCloser {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { CloseHandle(handle); }
};
using EventOwner = RawOwner<EventCloser>;

// Rounds that an owner is waited for before the thread goes to sleep: locks here are held for a
// few instructions, and a sleep with its wake-up costs a hundred times as much.
constexpr DWORD SpinCount = 4000;

CRITICAL_SECTION* section(unsigned char* storage) {
  return std::launder(reinterpret_cast<CRITICAL_SECTION*>(storage));
}

} // namespace

RawLock::RawLock() {
  InitializeCriticalSectionAndSpinCount(new (storage_) CRITICAL_SECTION, SpinCount);
}
RawLock::~RawLock() {
  DeleteCriticalSection(section(storage_));
}
void RawLock::enter() {
  EnterCriticalSection(section(storage_));
}
void RawLock::leave() {
  LeaveCriticalSection(section(storage_));
}

RawEvent::RawEvent() : event_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
RawEvent::~RawEvent() {
  EventOwner owner(event_);
}

void RawEvent::signal() {
  if (event_) SetEvent(event_);
}
void RawEvent::reset() {
  if (event_) ResetEvent(event_);
}

uint32_t RawEvent::wait(uint32_t milliseconds) {
  if (event_) return WaitForSingleObject(event_, milliseconds);
  Sleep(milliseconds); // an immediate return would let a loop of waits spin
  return TimedOut;
}

void rawSleep(uint32_t milliseconds) {
  Sleep(milliseconds);
}

} // namespace RawLayer
