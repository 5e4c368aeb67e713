// Else: runs its body when the last If found its condition false. It does not clear that mark, so
// two in a row both run.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandElse final : public JobCommandUnitEx {
 public:
  JobCommandElse() : JobCommandUnitEx("Else"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandElse();

} // namespace JobLayer
