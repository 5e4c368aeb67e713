// RawShell: starts a program or opens a document, by the platform's shell. Belongs to its creator.
#pragma once

#include "raw/RawOwner.h"
#include "raw/RawString.h"

namespace RawLayer {

struct RawProcessCloser {
  using Handle = void*;
  static Handle none() { return nullptr; }
  static void close(Handle handle);
};
using RawProcessOwner = RawOwner<RawProcessCloser>;

class RawShell {
public:
  RawProcessOwner process; // of the last launch; none when there is no process to hold
  uint32_t processId = 0;
  RawString file;
  RawString arguments;
  RawString directory;
  uint8_t showMode = 1;

  explicit RawShell(const RawString& fileToRun) : file(fileToRun) {}
  virtual ~RawShell() = default;
  // An empty verb passes none; with an empty file the parameters take its place. False when the
  // platform could not start it; nothing is shown.
  virtual bool execute(const RawString& parameters, const RawString& verb);

  void closeProcess() { process.reset(); }
  // Both wait at most so many milliseconds (0xFFFFFFFF: for ever), not at all without a process.
  void waitForEnd(uint32_t milliseconds) const;
  void waitForIdle(uint32_t milliseconds) const;
  [[nodiscard]] uint32_t exitCode() const; // 0 without a process

private:
  RawShell(const RawShell&) = delete;
  RawShell& operator=(const RawShell&) = delete;
};

// Names and numbers of the show modes, in table order; ends with an empty name, whose number is
// the default.
struct RawShowMode {
  const char* name;
  uint8_t number;
};
const RawShowMode* rawShowModes();

} // namespace RawLayer
