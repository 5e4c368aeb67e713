// Launcher: the straight line from the command line to the end of the process. Main thread; one
// call for the life of the process.
#pragma once

#include "app/LauncherOptions.h"

#include <cstdint>

namespace AppLayer {

class Launcher {
 public:
  // The first thing in the process: from here on a crash leaves a dump.
  static void installCrashHandler();
  // `commandLine` is the platform's, with the program's name. Gives the exit code: 0, or 1 when a
  // one-shot run failed or found nothing to run.
  int32_t run(const RawString& commandLine);

 private:
  bool startUp(const RawParameterList& arguments, bool& accepted);
  static void registerTexts();
  static void endPredecessor(int32_t processId);
  static void initialize();
  static bool runOneShot(const LauncherOptions& options);
  static void runWindow();
};

} // namespace AppLayer
