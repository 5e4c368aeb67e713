#include "job/JobCommandPickup.h"

#include "job/JobToolMessage.h"

namespace JobLayer {

bool JobCommandPickup::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString key = optionalValue(params, "Parameter"_text, caller);
  if (expansionFailed()) return false;
  if (key.isEmpty()) {
    // This report names the key in the command's place and the command in the value's.
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, "Parameter"_text,
                                       RawString::emptyStatic(), keyword);
    return false;
  }
  setVariable("Pickup"_text, optionalValue(params, key, caller));
  return true;
}

JobCommandUnit& jobCommandPickup() {
  static JobCommandPickup command;
  return command;
}

} // namespace JobLayer
