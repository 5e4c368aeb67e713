#include "job/JobCommandAction.h"

#include "job/JobCommandList.h"
#include "job/JobToolMessage.h"
#include "job/LauncherData.h"

namespace JobLayer {

bool JobCommandAction::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString name = requiredValue(params, "Name"_text, caller);
  if (name.isEmpty()) return false;
  const JobActionUnit* action = LauncherData::instance().actions.find(name);
  if (!action) {
    JobToolMessage::ReportCommandError("NoSuchDefinedAction"_text, keyword, "Name"_text, name);
    return false;
  }
  const JobParamList script = action->params;
  setVariables(params, "Name"_text);
  return executor->Execute(script, caller);
}

JobCommandUnit& jobCommandAction() {
  static JobCommandAction command;
  return command;
}

} // namespace JobLayer
