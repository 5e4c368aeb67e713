#include "job/JobCommandSeparator.h"

#include "job/JobMenuList.h"
#include "job/JobToolMessage.h"

namespace JobLayer {

bool JobCommandSeparator::Execute(const JobParamList&, const JobExecutorPair&) {
  if (JobMenuList::instance().addSeparator()) return true;
  JobToolMessage::ReportCommandError("OutOfMenuScope"_text, keyword, RawString::emptyStatic(),
                                     RawString::emptyStatic());
  return false;
}

JobCommandUnit& jobCommandSeparator() {
  static JobCommandSeparator command;
  return command;
}

} // namespace JobLayer
