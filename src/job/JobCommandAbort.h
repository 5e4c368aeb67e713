// AbortExecution: ends the run without a message.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandAbort final : public JobCommandUnitEx {
 public:
  JobCommandAbort() : JobCommandUnitEx("AbortExecution"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandAbort();

} // namespace JobLayer
