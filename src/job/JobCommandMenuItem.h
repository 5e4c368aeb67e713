// MenuItem: an entry of the menu that is being built; its blocks run when it is chosen.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandMenuItem final : public JobCommandUnitEx {
 public:
  JobCommandMenuItem() : JobCommandUnitEx("MenuItem"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandMenuItem();

} // namespace JobLayer
