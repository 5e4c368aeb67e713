// HostProcesses: the processes and windows that the host's stand-in knows, for tests to set.
//
//   HostProcesses::Scope processes; // empty lists; those of before at its end
//   processes.add("notepad.exe", 17);
//   processes.addWindow(0x1234, "Notepad", "Untitled");
//
// For one thread at a time.
#pragma once

#include "raw/RawString.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace HostProcesses {

using RawLayer::RawString;

struct Process {
  RawString name;
  uint32_t processId = 0;
  uint32_t parentId = 0;
};

struct Window {
  uintptr_t handle = 0;
  RawString className;
  RawString text;
  bool minimised = false;
  int32_t raised = 0; // how often it was forced to the front
};

struct State {
  std::vector<Process> processes;
  std::vector<Window> windows; // top-level ones, in the order of the desktop
  std::vector<uint32_t> terminated;
};
State& state();

inline Window* findHandle(uintptr_t handle) {
  auto& windows = state().windows;
  const auto found = std::find_if(windows.begin(), windows.end(), [handle](const Window& window) {
    return window.handle == handle;
  });
  return found == windows.end() ? nullptr : &*found;
}

class Scope {
 public:
  Scope() : saved_(std::exchange(state(), State())) {}
  ~Scope() { state() = saved_; }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  void add(const char* name, uint32_t processId = 0, uint32_t parentId = 0) {
    state().processes.push_back({RawString::fromChars(name), processId, parentId});
  }
  void addWindow(uintptr_t handle, const char* className, const char* text) {
    state().windows.push_back(
        {handle, RawString::fromChars(className), RawString::fromChars(text)});
  }

 private:
  State saved_;
};

} // namespace HostProcesses
