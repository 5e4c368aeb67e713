// AskMessage: asks the user a question with buttons; the variable Result gets the label pressed.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandAskMessage final : public JobCommandUnitEx {
 public:
  JobCommandAskMessage() : JobCommandUnitEx("AskMessage"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandAskMessage();

} // namespace JobLayer
