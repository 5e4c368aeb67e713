// PutMessage: tells the user something, in the form of a report that does not fail.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandPutMessage final : public JobCommandUnitEx {
 public:
  JobCommandPutMessage() : JobCommandUnitEx("PutMessage"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandPutMessage();

} // namespace JobLayer
