// OpenFile: opens a file by its association.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandOpenFile final : public JobCommandUnitEx {
 public:
  JobCommandOpenFile() : JobCommandUnitEx("OpenFile"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandOpenFile();

} // namespace JobLayer
