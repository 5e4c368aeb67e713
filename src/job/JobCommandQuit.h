// QuitLauncher: asks the main dialog to close. The script goes on until a message loop runs.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandQuit final : public JobCommandUnitEx {
 public:
  JobCommandQuit() : JobCommandUnitEx("QuitLauncher"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandQuit();

} // namespace JobLayer
