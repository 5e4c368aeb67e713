// HostClipboard: the clipboard on the host, which a test reads and fills.
//
//   HostClipboard::Scope clipboard; // empty
//   clipboard.put(RawString::fromWide(u"text"));
//
// For one thread at a time.
#pragma once

#include "raw/RawString.h"

#include <string>

namespace HostClipboard {

using RawLayer::RawString;

struct State {
  uint32_t format = 0; // 1 narrow, 13 wide, 0 for nothing
  std::string bytes;   // with the terminator
  int32_t changes = 0;
  bool isHeld = false; // by another program: it cannot be opened
};
State& state();

class Scope {
 public:
  Scope() { state() = State(); }
  ~Scope() { state() = State(); }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

  void put(const RawString& wide) {
    state().format = 13;
    state().bytes.assign(reinterpret_cast<const char*>(wide.wide()),
                         static_cast<std::size_t>(wide.length()) * 2);
    state().bytes.append(2, 0);
  }
  void hold(bool held) { state().isHeld = held; }
  [[nodiscard]] uint32_t format() const { return state().format; }
  [[nodiscard]] const std::string& bytes() const { return state().bytes; }
  [[nodiscard]] int32_t changes() const { return state().changes; }
};

} // namespace HostClipboard
