#include "raw/RawMemoryDump.h"

#include <windows.h>

#include <dbghelp.h>

namespace RawLayer {

namespace {

// Loaded when it is needed, so that a start without a crash does not pay for it; and from the
// system's folder alone, so that no file beside the program takes its place. Never freed: the
// process is about to end.
HMODULE loadHelpLibrary() {
  return LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
}

template <class Function>
Function* functionOf(HMODULE library, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

} // namespace

bool writeMemoryDump(const RawFileOwner& file, void* exceptionPointers) {
  const HMODULE library = loadHelpLibrary();
  if (!library) return false;
  // A dump needs no symbols, and where they are read all the same they double its time and size.
  const auto setOptions = functionOf<decltype(SymSetOptions)>(library, "SymSetOptions");
  if (setOptions) setOptions(SYMOPT_DEFERRED_LOADS);
  const auto write = functionOf<decltype(MiniDumpWriteDump)>(library, "MiniDumpWriteDump");
  if (!write) return false;
  MINIDUMP_EXCEPTION_INFORMATION information{};
  information.ThreadId = GetCurrentThreadId();
  information.ExceptionPointers = static_cast<EXCEPTION_POINTERS*>(exceptionPointers);
  information.ClientPointers = TRUE;
  return write(GetCurrentProcess(), GetCurrentProcessId(), file.get(), MiniDumpWithFullMemory,
               exceptionPointers ? &information : nullptr, nullptr, nullptr) != FALSE;
}

} // namespace RawLayer
