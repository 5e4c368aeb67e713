// RebootLauncher: asks the main dialog to start the program anew.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandReboot final : public JobCommandUnitEx {
 public:
  JobCommandReboot() : JobCommandUnitEx("RebootLauncher"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandReboot();

} // namespace JobLayer
