// ToClipboard: puts a text on the clipboard.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandToClipboard final : public JobCommandUnitEx {
 public:
  JobCommandToClipboard() : JobCommandUnitEx("ToClipboard"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandToClipboard();

} // namespace JobLayer
