#include "job/JobCommandOpenFolder.h"

#include "job/JobToolMessage.h"
#include "raw/RawFile.h"
#include "raw/RawPath.h"
#include "raw/RawShell.h"

namespace JobLayer {

bool JobCommandOpenFolder::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString path = optionalValue(params, "Parameter"_text, caller);
  if (expansionFailed()) return false;
  if (path.isEmpty()) {
    JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, keyword, "Parameter"_text,
                                       RawString::emptyStatic());
    return false;
  }
  for (RawString folder = path; !folder.isEmpty(); folder = RawLayer::folderOf(folder)) {
    if (RawLayer::isFolder(folder))
      return RawLayer::RawShell(folder).execute(RawString::emptyStatic(), RawString::emptyStatic());
  }
  JobToolMessage::ReportCommandError("UnexpectedParameter"_text, keyword, "Parameter"_text, path);
  return false;
}

JobCommandUnit& jobCommandOpenFolder() {
  static JobCommandOpenFolder command;
  return command;
}

} // namespace JobLayer
