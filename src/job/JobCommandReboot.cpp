#include "job/JobCommandReboot.h"

#include "job/JobWindowContext.h"

namespace JobLayer {

bool JobCommandReboot::Execute(const JobParamList&, const JobExecutorPair&) {
  constexpr int CodeShift = 16; // the code stands in the high word
  JobWindowContext::instance().postToMainDialog(
      JobDialogs::MessageCommand, static_cast<uintptr_t>(JobDialogs::CommandRestart) << CodeShift,
      0);
  return true;
}

JobCommandUnit& jobCommandReboot() {
  static JobCommandReboot command;
  return command;
}

} // namespace JobLayer
