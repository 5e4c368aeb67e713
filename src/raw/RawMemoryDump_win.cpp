#include "raw/RawMemoryDump.h"

#include <windows.h>

#include <dbghelp.h>

namespace RawLayer {

namespace {

// The library is loaded when it is needed, so that a start without a crash does not pay for it;
// and from the system's folder alone, so that no file beside the program takes its place. It is
// never freed: the process is about to end.
auto loadDumpWriter() {
  const HMODULE library = LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  void* const writer =
      library ? reinterpret_cast<void*>(GetProcAddress(library, "MiniDumpWriteDump")) : nullptr;
  return reinterpret_cast<decltype(&MiniDumpWriteDump)>(writer);
}

} // namespace

bool writeMemoryDump(const RawFileOwner& file, void* exceptionPointers) {
  const auto write = loadDumpWriter();
  if (!write) return false;
  MINIDUMP_EXCEPTION_INFORMATION information{};
  information.ThreadId = GetCurrentThreadId();
  information.ExceptionPointers = static_cast<EXCEPTION_POINTERS*>(exceptionPointers);
  information.ClientPointers = TRUE;
  return write(GetCurrentProcess(), GetCurrentProcessId(), file.get(), MiniDumpWithFullMemory,
               exceptionPointers ? &information : nullptr, nullptr, nullptr) != FALSE;
}

} // namespace RawLayer
