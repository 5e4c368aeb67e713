// If: runs its body when its condition is true, and leaves behind whether an Else may run.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandIf final : public JobCommandUnitEx {
 public:
  JobCommandIf() : JobCommandUnitEx("If"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandIf();

} // namespace JobLayer
