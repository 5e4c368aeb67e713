// JobDataSaver: rewrites the sections of one kind in the configuration file, through a temporary
// file. Every other line stays byte for byte; all sections of the kind move to the place of the
// first. Main thread. A save that fails leaves the old file as it is.
#pragma once

#include "job/JobFacts.h"
#include "job/JobParam.h"
#include "raw/RawLineFile.h"

namespace JobLayer {

class JobDataSaver {
public:
  class Caller {
  public:
    virtual ~Caller() = default;
    // Writes the template, when it has a name, and all entries to the open file.
    virtual void writeAll(RawLayer::RawLineFile& file) = 0;
  };

  // True when the configuration file was replaced.
  static bool save(Caller& caller, const RawString& prefix);
  static bool save(const RawString& path, Caller& caller, const RawString& prefix);
  // "[prefix name]", the parameters, an empty line.
  static void writeEntry(RawLayer::RawLineFile& file, const RawString& prefix, const RawString& name,
                         const JobParamList& params);
};

} // namespace JobLayer
