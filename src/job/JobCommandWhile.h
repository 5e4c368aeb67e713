// While: runs its body again and again. Its condition is fixed when the loop starts: a break, a
// failure or the Escape key ends it.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandWhile final : public JobCommandUnitEx {
 public:
  JobCommandWhile() : JobCommandUnitEx("While"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandWhile();

} // namespace JobLayer
