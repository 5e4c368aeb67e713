// Separator: a line in the menu that is being built.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandSeparator final : public JobCommandUnitEx {
 public:
  JobCommandSeparator() : JobCommandUnitEx("Separator"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandSeparator();

} // namespace JobLayer
