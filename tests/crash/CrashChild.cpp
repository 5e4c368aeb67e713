// Dies on purpose, for RawThreadWin_test: CrashChild MODE FOLDER. A dump goes to FOLDER\Dump, a
// note to FOLDER\Note.txt. Ends with code 1 when it was called wrongly and with 2 when it did not
// die.
#include "raw/RawFile.h"
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

class Victim : public RawThreadUnit {
 protected:
  void run() override { writeToNull(); }
};

// Leaves a word instead of a dump, which takes seconds under Wine.
class NotingHandler : public RawThreadHook::Handler {
 public:
  RawString path;
  void onException(void* exceptionPointers) override {
    const auto* pointers = static_cast<EXCEPTION_POINTERS*>(exceptionPointers);
    RawString note = RawString::fromUInt64(pointers->ExceptionRecord->ExceptionCode, 16);
    const RawFileOwner file = openFile(path, RawAccessWrite, RawShareNone, RawCreateNew);
    writeFile(file, note.text(), note.length());
  }
};

// A handler that faults itself must not be called again for its own fault.
class FaultyHandler : public RawThreadHook::Handler {
 public:
  void onException(void*) override { writeToNull(); }
};

bool onMain() {
  writeToNull();
  return true;
}

bool onWorker() {
  Victim victim;
  if (!victim.start()) return false;
  victim.waitForEnd();
  return true;
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

// Stands for the platform's last word, without its debugger and its box: the process ends with the
// exception's code.
LONG WINAPI endProcess(EXCEPTION_POINTERS*) {
  return EXCEPTION_EXECUTE_HANDLER;
}

RawThreadDump dump;
NotingHandler noting;
FaultyHandler faulty;

struct Mode {
  const char* name;
  RawThreadHook::Handler* handler;
  bool filter; // whether the process's last filter is installed
  bool (*die)();
};

const Mode modes[] = {
    {"main", &dump, true, onMain},
    {"worker", &dump, true, onWorker},
    {"worker-frame", &noting, false, onWorker},
    {"worker-bare", nullptr, false, onWorker},
    {"worker-faulty", &faulty, true, onWorker},
    {"main-bare", nullptr, true, onMain},
    {"foreign", &noting, true, onForeignThread},
};

} // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 1;
  SetUnhandledExceptionFilter(endProcess);
  dump.folder = joinPath(RawString::fromChars(argv[2]), "Dump"_text);
  dump.name = "Tarvellon"_text;
  noting.path = joinPath(RawString::fromChars(argv[2]), "Note.txt"_text);
  for (const Mode& mode : modes) {
    if (std::strcmp(mode.name, argv[1]) != 0) continue;
    RawThreadHook::install(mode.handler);
    if (mode.filter) RawThreadHook::installProcessFilter();
    return mode.die() ? 2 : 1;
  }
  return 1;
}
