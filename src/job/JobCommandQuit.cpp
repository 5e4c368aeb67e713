#include "job/JobCommandQuit.h"

#include "job/JobWindowContext.h"

namespace JobLayer {

bool JobCommandQuit::Execute(const JobParamList&, const JobExecutorPair&) {
  JobWindowContext::instance().postToMainDialog(JobDialogs::MessageClose, 0, 0);
  return true;
}

JobCommandUnit& jobCommandQuit() {
  static JobCommandQuit command;
  return command;
}

} // namespace JobLayer
