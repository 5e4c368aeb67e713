// RawLock, RawLockScope, RawEvent, RawAutoFlag: the platform's locks and events.
//
// Locks are recursive and are held by scope objects, never while a script command runs or a file
// is written.
#pragma once

#include <cstdint>

namespace RawLayer {

class RawLock {
 public:
  RawLock();
  ~RawLock();
  RawLock(const RawLock&) = delete;
  RawLock& operator=(const RawLock&) = delete;
  void enter();
  void leave();

 private:
  alignas(8) unsigned char storage_[40]; // the platform's own lock, whose size the source checks
};

class RawLockScope {
 public:
  explicit RawLockScope(RawLock& lock) : lock_(lock) { lock_.enter(); }
  ~RawLockScope() { lock_.leave(); }
  RawLockScope(const RawLockScope&) = delete;
  RawLockScope& operator=(const RawLockScope&) = delete;

 private:
  RawLock& lock_;
};

// A manual-reset event, not signalled at first. An event that could not be made waits the full
// time.
class RawEvent {
 public:
  enum WaitResult : uint32_t { Signalled = 0, TimedOut = 258, Failed = 0xFFFFFFFF };

  RawEvent();
  ~RawEvent();
  RawEvent(const RawEvent&) = delete;
  RawEvent& operator=(const RawEvent&) = delete;
  void signal();
  void reset();
  uint32_t wait(uint32_t milliseconds); // a WaitResult; 0xFFFFFFFF waits for ever

 private:
  void* event_;
};

// A flag that a scope raises and lowers, read from other threads.
class RawAutoFlag {
 public:
  class Unit {
   public:
    virtual ~Unit() = default;
    virtual void set(bool value) = 0;
  };
  class BooleanUnit : public Unit {
   public:
    void set(bool value) override;
    [[nodiscard]] bool isSet() const;

   private:
    mutable RawLock lock_;
    bool value_ = false;
  };

  explicit RawAutoFlag(Unit& unit) : unit_(unit) { unit_.set(true); }
  ~RawAutoFlag() { unit_.set(false); }
  RawAutoFlag(const RawAutoFlag&) = delete;
  RawAutoFlag& operator=(const RawAutoFlag&) = delete;

 private:
  Unit& unit_;
};

// Gives the processor away for at least so many milliseconds; 0 only offers it.
void rawSleep(uint32_t milliseconds);

} // namespace RawLayer
