#include "job/JobCommandWhile.h"

#include "job/JobCommandLoop.h"
#include "job/JobToolMessage.h"
#include "job/JobVariable.h"

namespace JobLayer {

bool JobCommandWhile::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  // The text that comes back is expanded already, so it stays the same for all rounds.
  const RawString condition = requiredValue(params, "Condition"_text, caller);
  if (condition.isEmpty()) return false;
  beginLoop(*executor);
  for (;;) {
    const RawString current = expandText(condition, caller);
    if (expansionFailed()) return false;
    if (!isTrueText(current)) return true;
    const JobLoopRound round = runLoopBody(*executor, params, caller);
    if (round != JobLoopRound::Done) return round == JobLoopRound::Broken;
    if (isLoopAborted()) {
      JobToolMessage::ReportCommandError("UserAborted"_text, keyword, RawString::emptyStatic(),
                                         RawString::emptyStatic());
      return false;
    }
  }
}

JobCommandUnit& jobCommandWhile() {
  static JobCommandWhile command;
  return command;
}

} // namespace JobLayer
