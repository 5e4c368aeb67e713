// Action: runs an action by its name. What looks like its arguments are global variables, set
// unexpanded, that stay set.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandAction final : public JobCommandUnitEx {
 public:
  JobCommandAction() : JobCommandUnitEx("Action"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandAction();

} // namespace JobLayer
