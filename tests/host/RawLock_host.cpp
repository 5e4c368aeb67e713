// The host's locks and events, from POSIX threads.
#include "raw/RawLock.h"

#include "HostFaults.h"

#include <pthread.h>
#include <sched.h>
#include <time.h>

#include <cerrno>
#include <new>

namespace RawLayer {

static_assert(sizeof(pthread_mutex_t) <= 40 && alignof(pthread_mutex_t) <= 8);

namespace {

constexpr uint32_t Forever = 0xFFFFFFFF;

pthread_mutex_t* mutexIn(unsigned char* storage) {
  return std::launder(reinterpret_cast<pthread_mutex_t*>(storage));
}

timespec timeAfter(clockid_t clock, uint32_t milliseconds) {
  timespec time;
  clock_gettime(clock, &time);
  time.tv_sec += milliseconds / 1000;
  time.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000;
  if (time.tv_nsec >= 1000000000) {
    time.tv_nsec -= 1000000000;
    ++time.tv_sec;
  }
  return time;
}

struct HostEvent {
  HostEvent() {
    pthread_condattr_t attributes;
    pthread_condattr_init(&attributes);
    pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
    pthread_cond_init(&changed, &attributes);
    pthread_condattr_destroy(&attributes);
  }
  ~HostEvent() {
    pthread_cond_destroy(&changed);
    pthread_mutex_destroy(&mutex);
  }
  HostEvent(const HostEvent&) = delete;
  HostEvent& operator=(const HostEvent&) = delete;

  void set(bool value) {
    pthread_mutex_lock(&mutex);
    signalled = value;
    if (value) pthread_cond_broadcast(&changed);
    pthread_mutex_unlock(&mutex);
  }
  bool waitFor(uint32_t milliseconds) {
    pthread_mutex_lock(&mutex);
    const timespec end = timeAfter(CLOCK_MONOTONIC, milliseconds);
    int result = 0;
    while (!signalled && result != ETIMEDOUT)
      result = milliseconds == Forever ? pthread_cond_wait(&changed, &mutex)
                                       : pthread_cond_timedwait(&changed, &mutex, &end);
    const bool seen = signalled;
    pthread_mutex_unlock(&mutex);
    return seen;
  }

  pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
  pthread_cond_t changed;
  bool signalled = false;
};

HostEvent* hostEvent(void* event) {
  return static_cast<HostEvent*>(event);
}

} // namespace

RawLock::RawLock() {
  pthread_mutexattr_t attributes;
  pthread_mutexattr_init(&attributes);
  pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
  pthread_mutex_init(new (storage_) pthread_mutex_t, &attributes);
  pthread_mutexattr_destroy(&attributes);
}
RawLock::~RawLock() {
  pthread_mutex_destroy(mutexIn(storage_));
}
void RawLock::enter() {
  pthread_mutex_lock(mutexIn(storage_));
}
void RawLock::leave() {
  pthread_mutex_unlock(mutexIn(storage_));
}

RawEvent::RawEvent() : event_(HostFaults::fails(HostFaults::Thread) ? nullptr : new HostEvent) {}
RawEvent::~RawEvent() {
  delete hostEvent(event_);
}

void RawEvent::signal() {
  if (event_) hostEvent(event_)->set(true);
}
void RawEvent::reset() {
  if (event_) hostEvent(event_)->set(false);
}

uint32_t RawEvent::wait(uint32_t milliseconds) {
  if (event_) return hostEvent(event_)->waitFor(milliseconds) ? Signalled : TimedOut;
  rawSleep(milliseconds);
  return TimedOut;
}

void rawSleep(uint32_t milliseconds) {
  if (milliseconds == 0) {
    sched_yield();
    return;
  }
  const timespec end = timeAfter(CLOCK_MONOTONIC, milliseconds);
  while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr) == EINTR) {
  }
}

} // namespace RawLayer
