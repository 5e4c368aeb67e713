// Pickup: looks a text up among the keys of its block and sets the variable Pickup to the value.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandPickup final : public JobCommandUnitEx {
 public:
  JobCommandPickup() : JobCommandUnitEx("Pickup"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandPickup();

} // namespace JobLayer
