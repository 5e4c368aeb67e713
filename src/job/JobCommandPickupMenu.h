// PickupMenu: a popup menu of titles and values; the choice sets the variable Pickup.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandPickupMenu final : public JobCommandUnitEx {
 public:
  JobCommandPickupMenu() : JobCommandUnitEx("PickupMenu"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandPickupMenu();

} // namespace JobLayer
