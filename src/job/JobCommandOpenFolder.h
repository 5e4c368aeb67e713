// OpenFolder: opens a folder, or the nearest one above it that exists.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandOpenFolder final : public JobCommandUnitEx {
 public:
  JobCommandOpenFolder() : JobCommandUnitEx("OpenFolder"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandOpenFolder();

} // namespace JobLayer
