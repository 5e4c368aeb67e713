// Define: sets variables to the texts of its block, unexpanded: references in them are resolved
// when the variable is read.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandDefine final : public JobCommandUnitEx {
 public:
  JobCommandDefine() : JobCommandUnitEx("Define"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandDefine();

} // namespace JobLayer
