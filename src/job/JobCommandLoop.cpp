#include "job/JobCommandLoop.h"

#include "raw/RawSystem.h"

namespace JobLayer {

namespace {
constexpr int32_t EscapeKey = 0x1B; // VK_ESCAPE
}

void beginLoop(JobCommandList& runner) {
  runner.setFlag(JobCommandList::BreakTravels, false);
}

JobLoopRound runLoopBody(JobCommandList& runner, const JobParamList& body,
                         const JobExecutorPair& caller) {
  if (runner.Execute(body, caller)) return JobLoopRound::Done;
  if (!runner.hasFlag(JobCommandList::BreakTravels)) return JobLoopRound::Failed;
  runner.setFlag(JobCommandList::BreakTravels, false);
  return JobLoopRound::Broken;
}

bool isLoopAborted() {
  return RawLayer::isKeyDownNow(EscapeKey);
}

} // namespace JobLayer
