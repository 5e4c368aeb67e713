#include "job/JobCommandAbort.h"

namespace JobLayer {

bool JobCommandAbort::Execute(const JobParamList&, const JobExecutorPair&) {
  return false;
}

JobCommandUnit& jobCommandAbort() {
  static JobCommandAbort command;
  return command;
}

} // namespace JobLayer
