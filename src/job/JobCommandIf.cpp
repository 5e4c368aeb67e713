#include "job/JobCommandIf.h"

#include "job/JobCommandList.h"
#include "job/JobToolMessage.h"
#include "job/JobVariable.h"

namespace JobLayer {

bool JobCommandIf::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString rawCondition = params.text("Condition"_text);
  if (rawCondition.isEmpty()) {
    // This report names the key in the command's place and the command in the value's.
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, "Condition"_text,
                                       RawString::emptyStatic(), keyword);
    return false;
  }
  const RawString condition = expandText(rawCondition, caller);
  if (expansionFailed()) return false;
  if (!isTrueText(condition)) {
    executor->setFlag(JobCommandList::ElseRuns, true);
    return true;
  }
  const bool result = executor->Execute(params, caller);
  // Written behind the body, so that what counts for an Else is this condition and not those
  // inside.
  executor->setFlag(JobCommandList::ElseRuns, false);
  return result;
}

JobCommandUnit& jobCommandIf() {
  static JobCommandIf command;
  return command;
}

} // namespace JobLayer
