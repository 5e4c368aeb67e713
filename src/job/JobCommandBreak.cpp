#include "job/JobCommandBreak.h"

#include "job/JobCommandList.h"

namespace JobLayer {

bool JobCommandBreak::Execute(const JobParamList&, const JobExecutorPair&) {
  executor->setFlag(JobCommandList::BreakTravels, true);
  return false;
}

JobCommandUnit& jobCommandBreak() {
  static JobCommandBreak command;
  return command;
}

} // namespace JobLayer
