// Expand: rewrites the blocks inside it before it runs them: each "key=value" replaces the first
// $(key) in every value of the blocks below it. It leaves no variable behind.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandExpand final : public JobCommandUnitEx {
 public:
  JobCommandExpand() : JobCommandUnitEx("Expand"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;

 private:
  bool rewrite(JobParamList& list, const JobParamList& substitutions,
               const JobExecutorPair& caller) const;
};

JobCommandUnit& jobCommandExpand();

} // namespace JobLayer
