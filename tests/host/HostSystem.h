// HostSystem: what the host's stand-in says of the system, for tests to set and to read.
//
//   HostSystem::Scope system;            // puts everything back at its end
//   system.fixClock({2024, 9, 7, 12, 0, 0, 5}, 540);
//   system.setKey(0xA0, true);
//
// The facts are for one thread at a time; keys, clock and message boxes may be used from several.
#pragma once

#include "raw/RawSystem.h"

#include <array>
#include <atomic>
#include <mutex>
#include <optional>
#include <vector>

namespace HostSystem {

using RawLayer::RawMoment;
using RawLayer::RawString;

struct Message {
  RawString caption;
  RawString text;
};

struct Facts {
  Facts(); // from this machine
  RawString moduleName;
  RawString computerName;
  RawString userName;
  RawString tempFolder;
  RawString userFolder;
  RawString desktop;
  RawString commandLine;
  uint16_t language = 0x409;
};

struct State {
  Facts facts;
  std::array<std::atomic<bool>, 256> keys{};
  std::mutex lock; // for what follows
  std::vector<Message> messages;
  std::optional<RawMoment> utc;
  int32_t offsetMinutes = 0; // of the local time, while the clock is fixed
};
State& state();

class Scope {
 public:
  Scope() : facts_(state().facts) {}
  ~Scope() {
    state().facts = facts_;
    for (auto& key : state().keys) key = false;
    const std::lock_guard lock(state().lock);
    state().messages.clear();
    state().utc.reset();
  }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  Facts& facts() { return state().facts; }
  void setKey(int32_t virtualKey, bool down) {
    state().keys.at(static_cast<std::size_t>(virtualKey)) = down;
  }
  // Both clocks stand still; the local one is so many minutes ahead of UTC.
  void fixClock(const RawMoment& utc, int32_t offsetMinutes) {
    const std::lock_guard lock(state().lock);
    state().utc = utc;
    state().offsetMinutes = offsetMinutes;
  }
  // The boxes shown since the last call.
  std::vector<Message> takeMessages() {
    const std::lock_guard lock(state().lock);
    return std::exchange(state().messages, {});
  }

 private:
  Facts facts_;
};

} // namespace HostSystem
