// The process's own records are read where the platform has no call for them, or where that call
// does not count under Wine.
#include "launcher/LauncherProcess.h"

#include "program/ProgramRun.h"

#include <algorithm>
#include <vector>
#include <winternl.h>

namespace {

// Offsets in the records of a 64-bit process.
constexpr size_t ParametersInBlock = 0x20;
constexpr size_t DrawingTableInBlock = 0xF8;
constexpr size_t LineInParameters = 0x70;

struct DrawingEntry {
  uint64_t object;
  uint32_t owner;
  uint16_t unique;
  uint8_t type; // 0: the entry is free
  uint8_t flags;
  uint64_t user;
};
static_assert(sizeof(DrawingEntry) == 24);
constexpr size_t DrawingEntries = 0x10000;

const char* blockOf(HANDLE process) {
  PROCESS_BASIC_INFORMATION information{};
  const NTSTATUS status = NtQueryInformationProcess(process, ProcessBasicInformation, &information,
                                                    sizeof information, nullptr);
  return status == 0 ? reinterpret_cast<const char*>(information.PebBaseAddress) : nullptr;
}

template <class T>
bool readAt(HANDLE process, const char* address, T* values, size_t count = 1) {
  return address && ReadProcessMemory(process, address, values, count * sizeof(T), nullptr);
}

} // namespace

std::string commandLineOf(HANDLE process) {
  const char* block = blockOf(process);
  const char* parameters = nullptr;
  UNICODE_STRING line{};
  if (!block || !readAt(process, block + ParametersInBlock, &parameters) ||
      !readAt(process, parameters + LineInParameters, &line))
    return {};
  std::wstring text(line.Length / sizeof(wchar_t), L'\0');
  readAt(process, reinterpret_cast<const char*>(line.Buffer), text.data(), text.size());
  return utf8Of(text);
}

uint32_t handleCountOf(HANDLE process) {
  std::vector<char> buffer(0x100000);
  ULONG size = 0;
  if (NtQuerySystemInformation(SystemProcessInformation, buffer.data(),
                               static_cast<ULONG>(buffer.size()), &size) != 0)
    return 0;
  const DWORD id = GetProcessId(process);
  for (const char* at = buffer.data();;) {
    const auto* entry = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(at);
    if (static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(entry->UniqueProcessId)) == id)
      return entry->HandleCount;
    if (entry->NextEntryOffset == 0) return 0;
    at += entry->NextEntryOffset;
  }
}

uint32_t drawingObjectsOf(HANDLE process) {
  const char* block = blockOf(process);
  const char* table = nullptr;
  std::vector<DrawingEntry> entries(DrawingEntries);
  if (!block || !readAt(process, block + DrawingTableInBlock, &table) ||
      !readAt(process, table, entries.data(), entries.size()))
    return 0;
  return static_cast<uint32_t>(std::count_if(
      entries.begin(), entries.end(), [](const DrawingEntry& each) { return each.type != 0; }));
}
