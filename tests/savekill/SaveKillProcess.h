// A child process that can be killed at any moment.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace SaveKill {

class Process {
 public:
  // A program that stands beside this one; `name` without suffix. No argument ends in a backslash.
  Process(const std::string& name, const std::vector<std::string>& arguments);
  ~Process(); // kills it
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  [[nodiscard]] bool isRunning();
  void kill();          // and waits until it is gone
  int32_t waitForEnd(); // its exit code; -1 when it was killed or never ran
  [[nodiscard]] bool hasStarted() const { return started_; }

 private:
  bool started_ = false;
  bool ended_ = false;
  intptr_t handle_ = 0;
  int32_t exitCode_ = -1;
};

} // namespace SaveKill
