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

// The platform's launch of a program or document, without any message of its own. `process` gets
// the new process, or none where a running program took the document over. Empty texts are not
// passed. False when nothing was started.
bool shellExecute(const RawString& verb, const RawString& file, const RawString& parameters,
                  const RawString& directory, uint8_t showMode, RawProcessOwner& process);
uint32_t processIdOf(const RawProcessOwner& process); // 0 for none

class RawShell {
 public:
  RawProcessOwner process; // of the last launch; none when there is no process to hold
  uint32_t processId = 0;
  RawString file;
  RawString arguments;
  RawString directory;
  uint8_t showMode = 1; // the platform's number

  explicit RawShell(const RawString& fileToRun) : file(fileToRun) {}
  virtual ~RawShell() = default;
  // Starts the file with the parameters (not with `arguments`, which is the caller's to use) and
  // keeps the process. An empty verb passes none; with an empty file the parameters take its
  // place. False when the platform could not start it; nothing is shown.
  virtual bool execute(const RawString& parameters, const RawString& verb);

  void closeProcess() { process.reset(); }
  // Each waits at most so many milliseconds (0xFFFFFFFF: for ever), not at all without a process.
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
