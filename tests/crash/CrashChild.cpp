// Dies on purpose, for RawThreadWin_test: CrashChild MODE FOLDER. The dump goes to FOLDER\Dump.
// Ends with code 1 when it was called wrongly and with 2 when it did not die.
#include "raw/RawPath.h"
#include "raw/RawThread.h"

#include <windows.h>

#include <cstring>

using namespace RawLayer;

namespace {

void writeToNull() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

int overflowStack(int depth) {
  volatile char block[4096];
  block[0] = static_cast<char>(depth);
  return depth == INT_MAX ? 0 : overflowStack(depth + 1) + block[0];
}

class Victim : public RawThreadUnit {
 public:
  void (*action)() = nullptr;

 protected:
  void run() override { action(); }
};

// A handler that faults itself must not be called again for its own fault.
class FaultyHandler : public RawThreadHook::Handler {
 public:
  void onException(void*) override { writeToNull(); }
};

bool onWorker(void (*action)()) {
  Victim victim;
  victim.action = action;
  if (!victim.start()) return false;
  victim.waitForEnd();
  return true;
}

void overflow() {
  overflowStack(0);
}

DWORD WINAPI foreignThread(void*) {
  writeToNull();
  return 0;
}

bool onForeignThread() {
  const RawThreadOwner thread(CreateThread(nullptr, 0, foreignThread, nullptr, 0, nullptr));
  WaitForSingleObject(thread.get(), INFINITE);
  return true;
}

RawThreadDump dump;
FaultyHandler faulty;

struct Mode {
  const char* name;
  RawThreadHook::Handler* handler;
  bool filter; // whether the process's last filter is installed
  bool (*die)();
};

const Mode modes[] = {
    {"main", &dump, true, [] { return writeToNull(), true; }},
    {"worker", &dump, true, [] { return onWorker(writeToNull); }},
    {"worker-frame", &dump, false, [] { return onWorker(writeToNull); }},
    {"worker-bare", nullptr, false, [] { return onWorker(writeToNull); }},
    {"worker-faulty", &faulty, true, [] { return onWorker(writeToNull); }},
    {"worker-overflow", &dump, true, [] { return onWorker(overflow); }},
    {"main-overflow", &dump, true, [] { return overflow(), true; }},
    {"main-bare", nullptr, true, [] { return writeToNull(), true; }},
    {"foreign", &dump, true, onForeignThread},
};

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 1;
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); // no debugger, no box
  dump.folder = joinPath(RawString::fromChars(argv[2]), "Dump"_text);
  dump.name = "Tarvellon"_text;
  for (const Mode& mode : modes) {
    if (std::strcmp(mode.name, argv[1]) != 0) continue;
    RawThreadHook::install(mode.handler);
    if (mode.filter) RawThreadHook::installProcessFilter();
    return mode.die() ? 2 : 1;
  }
  return 1;
}
