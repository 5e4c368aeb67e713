#include "job/JobCommandPickupMenu.h"

#include "job/JobCommandList.h"
#include "job/JobMenuList.h"

namespace JobLayer {

bool JobCommandPickupMenu::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  return JobMenuList::instance().runMenu(params, true, *executor, caller);
}

JobCommandUnit& jobCommandPickupMenu() {
  static JobCommandPickupMenu command;
  return command;
}

} // namespace JobLayer
