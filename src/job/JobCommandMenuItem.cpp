#include "job/JobCommandMenuItem.h"

#include "job/JobMenuList.h"
#include "job/JobToolMessage.h"

namespace JobLayer {

bool JobCommandMenuItem::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  if (JobMenuList::instance().addItem(params, caller)) return true;
  JobToolMessage::ReportCommandError("OutOfMenuScope"_text, keyword, RawString::emptyStatic(),
                                     RawString::emptyStatic());
  return false;
}

JobCommandUnit& jobCommandMenuItem() {
  static JobCommandMenuItem command;
  return command;
}

} // namespace JobLayer
