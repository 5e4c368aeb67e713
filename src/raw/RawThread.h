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
  RawThreadUnit(const RawThreadUnit&) = delete;
  RawThreadUnit& operator=(const RawThreadUnit&) = delete;

  // False, with no effect, when it runs already; false when the thread could not be created, after
  // `finished` was called here.
  bool start();
  void requestStop(); // `run` is to ask isStopRequested in its loop
  [[nodiscard]] bool isStopRequested();
  [[nodiscard]] bool isRunning();  // from start to the end of `run`
  [[nodiscard]] bool isDone();     // from the end of `run` to the next start
  void setPriority(int32_t value); // platform priority, for the next start; 0 leaves it
  // Blocks until the thread has left `finished`; at once when none was started. A thread that is
  // only being started is polled for, every 100 milliseconds.
  void waitForEnd();
  void body(); // what the platform's thread entry calls; nobody else

 protected:
  // Slot order: run, finished, reserved, destructor. No lock is held but the one that waitForEnd
  // waits for.
  virtual void run() = 0;
  virtual void finished() {} // after run, or instead of it when no thread could be created
  virtual void reserved() {}

 public:
  virtual ~RawThreadUnit() = default;

 private:
  // The platform's part. Both are called under stateLock_.
  bool createThread(); // fills thread_ and threadId_
  void applyPriority();

  RawLock stateLock_; // guards all that follows
  RawLock runLock_;   // held for as long as the thread runs
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
    // In the dying thread, before the platform ends the process.
    virtual void onException(void* exceptionPointers) = 0;
  };
  static void install(Handler* handler); // one for the process; null removes it
  static Handler* installed();
  // Calls the installed handler; nothing without one.
  static void raise(void* exceptionPointers);
  // Sends unhandled exceptions of the main thread and of foreign threads to `raise`; those of a
  // RawThreadUnit get there by themselves. To be called once, on the main thread. Each exception
  // passes on to the platform afterwards.
  static void installProcessFilter();
};

// Writes a full memory dump to "folder\\name_Dump_YYYYMMDD_HHMMSS_mmm.dmp" and makes the folder
// first. A dump that fails is ignored, the process is dying anyway.
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
