// Break: ends the nearest loop around it, or the run when there is none.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandBreak final : public JobCommandUnitEx {
 public:
  JobCommandBreak() : JobCommandUnitEx("Break"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandBreak();

} // namespace JobLayer
