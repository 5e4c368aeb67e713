#include "job/JobCommandPutMessage.h"

#include "job/JobToolMessage.h"

namespace JobLayer {

bool JobCommandPutMessage::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString text = optionalValue(params, "Parameter"_text, caller);
  if (expansionFailed()) return false;
  if (text.isEmpty()) {
    // This report names the key in the command's place and the command in the value's.
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, "Parameter"_text,
                                       RawString::emptyStatic(), keyword);
    return false;
  }
  // The catalogue gives a key that it does not know back as itself.
  JobToolMessage::ReportCommandError(text, RawString::emptyStatic(), keyword,
                                     RawString::emptyStatic());
  return true;
}

JobCommandUnit& jobCommandPutMessage() {
  static JobCommandPutMessage command;
  return command;
}

} // namespace JobLayer
