// The reader of the configuration file: one text file into selectors, buttons and actions.
#pragma once

#include "job/LauncherData.h"

namespace JobLayer {

class JobConfigFile {
 public:
  // Reads the file that JobFacts names, and defines the two initial variables. A file that cannot
  // be read leaves the lists empty, with no message. Each unbalanced section is reported once.
  static void load(JobSelectorList& selectors, JobButtonList& buttons, JobActionList& actions);
  static void load(const RawString& path, JobSelectorList& selectors, JobButtonList& buttons,
                   JobActionList& actions);
};

} // namespace JobLayer
