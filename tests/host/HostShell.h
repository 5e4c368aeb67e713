// HostShell: launches on the host, which start nothing: each is written down, and the test says
// what comes of it.
//
//   HostShell::Scope shell; // launches succeed; those of before are forgotten
//   shell.answer().exitCode = 3;
//
// For one thread at a time.
#pragma once

#include "raw/RawString.h"

#include <utility>
#include <vector>

namespace HostShell {

using RawLayer::RawString;

struct Launch {
  RawString verb;
  RawString file;
  RawString parameters;
  RawString directory;
  uint8_t showMode = 0;
};

struct Wait {
  bool forIdle = false;
  uint32_t milliseconds = 0;
};

// What the next launches give.
struct Answer {
  bool started = true;
  bool hasProcess = true;
  uint32_t processId = 4711;
  uint32_t exitCode = 0;
};

struct State {
  Answer answer;
  std::vector<Launch> launches;
  std::vector<Wait> waits;
  int32_t openProcesses = 0; // handles given and not yet closed
};
State& state();

class Scope {
 public:
  Scope() { clear(); }
  ~Scope() { clear(); }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  Answer& answer() { return state().answer; }
  std::vector<Launch> takeLaunches() { return std::exchange(state().launches, {}); }
  std::vector<Wait> takeWaits() { return std::exchange(state().waits, {}); }
  [[nodiscard]] int32_t openProcesses() const { return state().openProcesses; }

 private:
  static void clear() {
    state().answer = Answer();
    state().launches.clear();
    state().waits.clear();
  }
};

} // namespace HostShell
