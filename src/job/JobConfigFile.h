// The reader of the configuration file: one text file into selectors, buttons and actions.
#pragma once

#include "job/LauncherData.h"
#include "raw/RawLineFile.h"

namespace JobLayer {

class JobConfigFile {
 public:
  // Reads the file that JobFacts names, and defines the two initial variables. A file that cannot
  // be read leaves the lists empty, with no message. Each unbalanced section is reported once.
  static void load(JobSelectorList& selectors, JobButtonList& buttons, JobActionList& actions);
  // The same from any file, read through a buffer of so many bytes, as RawLineFile has it.
  static void load(const RawString& path, JobSelectorList& selectors, JobButtonList& buttons,
                   JobActionList& actions,
                   int32_t bufferSize = RawLayer::RawLineFile::DefaultBufferSize);
};

} // namespace JobLayer
