// JobDataSaver: rewrites the sections of one kind in the configuration file, through a temporary
// file. Every other line stays byte for byte; all sections of the kind move to the place of the
// first. Main thread. A save that fails leaves the old file as it is.
#pragma once

#include "job/JobFacts.h"
#include "job/JobParam.h"
#include "raw/RawLineFile.h"

namespace JobLayer {

// The names that mean something in button and selector sections: "-" and "*".
const RawString& separatorName();
const RawString& templateName();
// A private copy of a template's parameters with the text in the place of each "$(APPEND)".
JobParamList paramsFromTemplate(const JobParamList& templateParams, const RawString& text);

class JobDataSaver {
 public:
  class Caller {
   public:
    virtual ~Caller() = default;
    // Writes the template, when it has a name, and all entries to the open file.
    virtual void writeAll(RawLayer::RawLineFile& file) = 0;
  };

  // True when the configuration file was replaced. A missing file is made first, empty. False
  // leaves the file as it is; that is the outcome, too, for a file that cannot be read to its end,
  // or whose bytes do not show the headers that reading it gives. What the file's encoding cannot
  // hold is written as the platform converts it ("?" as a rule).
  static bool save(Caller& caller, const RawString& prefix);
  static bool save(const RawString& path, Caller& caller, const RawString& prefix);
  // "[prefix name]", the parameters, an empty line.
  static void writeEntry(RawLayer::RawLineFile& file, const RawString& prefix,
                         const RawString& name, const JobParamList& params);
};

} // namespace JobLayer
