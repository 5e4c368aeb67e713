// RawThreadUnit: base of every worker thread. RawThreadHook and RawThreadDump: what happens when a
// thread dies of an unhandled exception. RawAbortChecker: may a long operation go on?
//
// A thread object may be started again after its end. Its owner waits for the end (`waitForEnd`)
// before destroying it.
#pragma once

#include "raw/RawLock.h"
#include "raw/RawOwner.h"
#include "raw/RawString.h"

namespace RawLayer {

struct RawThreadCloser {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static void close(Handle handle);
};
using RawThreadOwner = RawOwner<RawThreadCloser>;

class RawThreadUnit {
public:
  RawThreadUnit() = default;
  virtual ~RawThreadUnit() = default;
  RawThreadUnit(const RawThreadUnit&) = delete;
  RawThreadUnit& operator=(const RawThreadUnit&) = delete;

  bool start(); // false when it runs already or could not be created
  void requestStop();
  [[nodiscard]] bool isStopRequested();
  [[nodiscard]] bool isRunning();
  [[nodiscard]] bool isDone();
  void setPriority(int32_t value); // platform priority, for the next start; 0 leaves it
  void waitForEnd();               // at once when it never ran
  void body();                     // what the platform's thread entry calls; nobody else

protected:
  // Slot order (before the destructor's): run, finished, reserved.
  virtual void run() = 0;
  virtual void finished() {}
  virtual void reserved() {}

private:
  RawLock stateLock_;
  RawLock runLock_; // held for as long as the thread runs
  RawThreadOwner thread_;
  uint32_t threadId_ = 0;
  int32_t priority_ = 0;
  bool starting_ = false;
  bool stopRequested_ = false;
  bool running_ = false;
  bool done_ = false;
};

class RawThreadHook {
public:
  class Handler {
  public:
    virtual ~Handler() = default;
    virtual void onException(void* exceptionPointers) = 0;
  };
  static void install(Handler* handler); // one for the process; null removes it
  static Handler* installed();
  // Calls the installed handler; nothing without one.
  static void raise(void* exceptionPointers);
  // Sends unhandled exceptions of the main thread and of foreign threads to `raise`.
  static void installProcessFilter();
};

// Writes a full memory dump; a dump that fails is ignored, the process is dying anyway.
class RawThreadDump : public RawThreadHook::Handler {
public:
  RawString folder;
  RawString name;
  void onException(void* exceptionPointers) override;
  [[nodiscard]] virtual RawString dumpPath() const; // for this moment, in UTC; empty: no dump
};

class RawAbortChecker {
public:
  virtual ~RawAbortChecker() = default;
  virtual bool shouldAbort() = 0;
};
class RawDummyAbortChecker : public RawAbortChecker {
public:
  bool shouldAbort() override { return false; }
};

} // namespace RawLayer
