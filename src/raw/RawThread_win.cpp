// Where a thread's exceptions are seen on their way to the platform.
//
// A RawThreadUnit's body runs inside a structured exception frame. Its filter never handles an
// exception: it lets RawThreadHook see it and passes it on, so the process dies with the
// exception's own code. All other threads have the process's last filter instead. The last filter
// sees the exceptions of the units too, after their frame; that is why each thread raises only
// once, which also keeps a fault inside the handler from calling it again.
//
// MSVC makes such a frame by __try. GCC cannot, so it is made by hand: on x64 by naming the
// function's handler to the assembler, on x86 by a link in the thread's chain of handlers.
#include "raw/RawThread.h"

#include <windows.h>

namespace RawLayer {

namespace {

// What a stack overflow leaves for the handler, in bytes: writing a dump needs most of it.
constexpr ULONG StackForHandler = 0x10000;

// A slot of the platform, because the first use of a thread_local may allocate memory.
const DWORD raisedSlot = TlsAlloc();

LPTOP_LEVEL_EXCEPTION_FILTER previousFilter = nullptr;

void raiseOnce(EXCEPTION_POINTERS* pointers) {
  if (TlsGetValue(raisedSlot)) return;
  TlsSetValue(raisedSlot, pointers);
  RawThreadHook::raise(pointers);
}

LONG WINAPI processFilter(EXCEPTION_POINTERS* pointers) {
  raiseOnce(pointers);
  return previousFilter ? previousFilter(pointers) : EXCEPTION_CONTINUE_SEARCH;
}

void reserveStackForHandler() {
  ULONG size = StackForHandler;
  SetThreadStackGuarantee(&size);
}

} // namespace

#if defined(_MSC_VER)

static LONG bodyFilter(EXCEPTION_POINTERS* pointers) {
  raiseOnce(pointers);
  return EXCEPTION_CONTINUE_SEARCH;
}

static void runGuarded(RawThreadUnit* unit) {
  __try {
    unit->body();
  } __except (bodyFilter(GetExceptionInformation())) {
  }
}

#elif defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))

// The platform calls this for each exception that no frame further down has handled, and once more
// when it unwinds the stack.
extern "C" __attribute__((used)) EXCEPTION_DISPOSITION
rawThreadBodyHandler(EXCEPTION_RECORD* record, void*, CONTEXT* context, void*) {
  constexpr DWORD Unwinding = 0x66; // unwinding, exit, target and collided unwind
  if (!(record->ExceptionFlags & Unwinding)) {
    EXCEPTION_POINTERS pointers{record, context};
    raiseOnce(&pointers);
  }
  return ExceptionContinueSearch;
}

#if defined(__x86_64__)

__attribute__((noinline)) static void runGuarded(RawThreadUnit* unit) {
  __asm__ volatile(".seh_handler rawThreadBodyHandler, @except");
  unit->body();
  __asm__ volatile("nop"); // keeps the call from becoming a jump out of this frame
}

#else

static void runGuarded(RawThreadUnit* unit) {
  struct Registration {
    DWORD previous;
    decltype(&rawThreadBodyHandler) handler;
  };
  constexpr DWORD ChainOffset = 0; // of the newest registration in the thread's block
  const DWORD previous = __readfsdword(ChainOffset);
  const volatile Registration registration{previous, rawThreadBodyHandler};
  __writefsdword(ChainOffset, reinterpret_cast<DWORD>(&registration));
  unit->body();
  __writefsdword(ChainOffset, previous);
}

#endif

#else

// Without a frame: the process's last filter has to do.
static void runGuarded(RawThreadUnit* unit) {
  unit->body();
}

#endif

static DWORD WINAPI threadEntry(void* unit) {
  reserveStackForHandler();
  runGuarded(static_cast<RawThreadUnit*>(unit));
  return 0;
}

void RawThreadCloser::close(Handle handle) {
  CloseHandle(handle);
}

bool RawThreadUnit::createThread() {
  DWORD id = 0;
  thread_.reset(CreateThread(nullptr, 0, threadEntry, this, 0, &id));
  threadId_ = id;
  return thread_.isValid();
}

void RawThreadUnit::applyPriority() {
  SetThreadPriority(thread_.get(), priority_);
}

void RawThreadHook::installProcessFilter() {
  reserveStackForHandler();
  const auto previous = SetUnhandledExceptionFilter(processFilter);
  if (previous != processFilter) previousFilter = previous;
}

} // namespace RawLayer
