#include "job/JobCommandDefine.h"

#include "job/JobVariable.h"

namespace JobLayer {

bool JobCommandDefine::Execute(const JobParamList& params, const JobExecutorPair&) {
  setVariables(params, RawString::emptyStatic());
  return true;
}

JobCommandUnit& jobCommandDefine() {
  static JobCommandDefine command;
  return command;
}

} // namespace JobLayer
