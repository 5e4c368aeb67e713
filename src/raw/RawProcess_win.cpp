#include "raw/RawProcess.h"

#include "raw/RawOwner.h"
#include "raw/RawShell.h"

#include <windows.h>

#include <tlhelp32.h>

namespace RawLayer {

namespace {

struct SnapshotCloser {
  using Handle = HANDLE;
  static Handle none() { return INVALID_HANDLE_VALUE; }
  static void close(Handle handle) { CloseHandle(handle); }
};
using SnapshotOwner = RawOwner<SnapshotCloser>;

} // namespace

void listProcesses(RawProcessInfoList& list) {
  const SnapshotOwner snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  if (!snapshot) return;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL found = Process32FirstW(snapshot.get(), &entry); found;
       found = Process32NextW(snapshot.get(), &entry)) {
    auto* unit = new RawProcessInfoUnit;
    unit->name = RawString::fromWide(reinterpret_cast<const char16_t*>(entry.szExeFile))
                     .shareAs(EncodingUtf8);
    unit->processId = entry.th32ProcessID;
    unit->parentId = entry.th32ParentProcessID;
    list.append(unit);
  }
}

uint32_t currentProcessId() {
  return GetCurrentProcessId();
}

void terminateProcess(uint32_t processId, uint32_t waitMilliseconds) {
  const RawProcessOwner process(OpenProcess(PROCESS_TERMINATE, FALSE, processId));
  if (!process) return;
  TerminateProcess(process.get(), 0);
  WaitForSingleObject(process.get(), waitMilliseconds);
}

} // namespace RawLayer
