#include "job/JobCommandElse.h"

#include "job/JobCommandList.h"

namespace JobLayer {

bool JobCommandElse::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  return !executor->hasFlag(JobCommandList::ElseRuns) || executor->Execute(params, caller);
}

JobCommandUnit& jobCommandElse() {
  static JobCommandElse command;
  return command;
}

} // namespace JobLayer
