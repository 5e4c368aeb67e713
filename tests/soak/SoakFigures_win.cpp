#include "soak/SoakFigures.h"

#include <windows.h>

#include <psapi.h>

namespace {

int64_t bytesInUse(HANDLE heap) {
  int64_t bytes = 0;
  PROCESS_HEAP_ENTRY entry = {};
  if (!HeapLock(heap)) return 0;
  while (HeapWalk(heap, &entry))
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
  HeapUnlock(heap);
  return bytes;
}

// Not every Windows counts them for us; then those are tried that a process of this size can have.
int64_t handlesInUse() {
  constexpr uintptr_t Candidates = 1024;
  constexpr uintptr_t Step = 4;
  DWORD counted = 0;
  if (GetProcessHandleCount(GetCurrentProcess(), &counted) && counted != 0) return counted;
  int64_t count = 0;
  for (uintptr_t i = 1; i <= Candidates; ++i) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(i * Step), &flags)) ++count;
  }
  return count;
}

} // namespace

SoakFigures soakFigures() {
  SoakFigures figures;
  HANDLE heaps[64];
  const DWORD count = GetProcessHeaps(64, heaps);
  for (DWORD i = 0; i < count && i < 64; ++i) figures.allocated += bytesInUse(heaps[i]);
  PROCESS_MEMORY_COUNTERS memory = {};
  memory.cb = sizeof memory;
  if (GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory))
    figures.resident = static_cast<int64_t>(memory.WorkingSetSize);
  figures.handles = handlesInUse();
  figures.gui = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS) +
                GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  return figures;
}
