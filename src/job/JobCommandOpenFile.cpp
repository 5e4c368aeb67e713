#include "job/JobCommandOpenFile.h"

#include "job/JobToolMessage.h"
#include "raw/RawShell.h"

namespace JobLayer {

bool JobCommandOpenFile::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString path = optionalValue(params, "Parameter"_text, caller);
  if (expansionFailed()) return false;
  if (path.isEmpty()) {
    // This report names the key in the command's place and the command in the value's.
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, "Parameter"_text,
                                       RawString::emptyStatic(), keyword);
    return false;
  }
  return RawLayer::RawShell(path).execute(RawString::emptyStatic(), RawString::emptyStatic());
}

JobCommandUnit& jobCommandOpenFile() {
  static JobCommandOpenFile command;
  return command;
}

} // namespace JobLayer
