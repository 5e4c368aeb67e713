// Menu: a popup menu that the block builds at its first run; the block of the entry chosen is run.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandMenu final : public JobCommandUnitEx {
 public:
  JobCommandMenu() : JobCommandUnitEx("Menu"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandMenu();

} // namespace JobLayer
