#include "job/JobCommandAskMessage.h"

#include "job/JobWindowContext.h"

namespace JobLayer {

bool JobCommandAskMessage::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString message = requiredValue(params, "Parameter"_text, caller);
  if (message.isEmpty()) return false;
  RawString buttons = optionalValue(params, "Button"_text, caller);
  if (expansionFailed()) return false;
  const RawString abortBy = optionalValue(params, "AbortBy"_text, caller);
  if (expansionFailed()) return false;
  if (buttons.isEmpty()) buttons = "Yes,No"_text;

  const RawString answer = JobWindowContext::instance().AskDialog(message, buttons, caller);
  if (answer.isEmpty() || answer.equals(abortBy)) return false;
  setVariable("Result"_text, answer);
  return true;
}

JobCommandUnit& jobCommandAskMessage() {
  static JobCommandAskMessage command;
  return command;
}

} // namespace JobLayer
