// HostFaults: makes calls of the platform stand-ins fail on purpose.
//
// Each stand-in asks fails(kind) once before each platform call that it stands for and takes the
// call's failure road when the answer is true:
//
//   if (HostFaults::fails(HostFaults::Open)) return RawFileOwner();
//
// A test arms the faults through a HostFaults::Scope, which counts the calls from 0 again and
// disarms at its end. Any thread may call; tests that arm faults do so one at a time.
#pragma once

#include <atomic>
#include <cstdint>

namespace HostFaults {

enum Kind : uint32_t {
  Open = 0x0001,
  Read = 0x0002,
  Write = 0x0004,
  Seek = 0x0008,
  Flush = 0x0010,
  Replace = 0x0020,
  Move = 0x0040,
  Delete = 0x0080,
  CreateFolder = 0x0100,
  Attributes = 0x0200,
  Walk = 0x0400,       // folder walking, process and window lists
  Conversion = 0x0800, // code pages
  Thread = 0x1000,     // threads and events
  Process = 0x2000,    // starting and asking programs
  Clipboard = 0x4000,
  Query = 0x8000, // names, folders, the command line
  All = 0xFFFF,
};

struct State {
  std::atomic<uint32_t> kinds{0}; // which kinds are counted and may fail
  std::atomic<int32_t> first{0};  // number of the first call to fail, from 1; 0 for none
  std::atomic<int32_t> last{0};   // number of the last call to fail
  std::atomic<int32_t> calls{0};  // calls of those kinds so far
  std::atomic<int32_t> readLimit{0};
};
inline State state;

// To be asked once for each platform call; true when the call has to fail.
inline bool fails(Kind kind) {
  if ((state.kinds.load(std::memory_order_acquire) & kind) == 0) return false;
  const int32_t number = ++state.calls;
  return number >= state.first && number <= state.last;
}

// How many bytes one read may give: `wanted`, or less while a test has set a limit.
inline int32_t readSize(int32_t wanted) {
  const int32_t limit = state.readLimit;
  return limit > 0 && limit < wanted ? limit : wanted;
}

class Scope {
 public:
  Scope() { arm(All, 0, 0); }
  ~Scope() {
    arm(0, 0, 0);
    state.readLimit = 0;
  }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  // Each starts to count from 0 again.
  void failNth(int32_t number, uint32_t kinds = All) { arm(kinds, number, number); }
  void failFrom(int32_t number, uint32_t kinds = All) { arm(kinds, number, INT32_MAX); }
  void failAll(uint32_t kinds) { failFrom(1, kinds); }
  void failNone(uint32_t kinds = All) { arm(kinds, 0, 0); }
  // No read gives more bytes than that; 0 for no limit.
  void limitReads(int32_t bytes) { state.readLimit = bytes; }
  // Calls of the kinds named since then.
  [[nodiscard]] int32_t calls() const { return state.calls; }

 private:
  static void arm(uint32_t kinds, int32_t first, int32_t last) {
    state.kinds = 0;
    state.calls = 0;
    state.first = first;
    state.last = last;
    state.kinds.store(kinds, std::memory_order_release);
  }
};

} // namespace HostFaults
