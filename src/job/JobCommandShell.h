// Shell: starts a program or opens a document, and goes on at once: the process is let go before
// the wait stage, so nothing waits and ExitCode is "0".
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandShell final : public JobCommandUnitEx {
 public:
  JobCommandShell() : JobCommandUnitEx("Shell"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandShell();

} // namespace JobLayer
