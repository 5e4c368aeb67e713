#include "job/JobCommandMenu.h"

#include "job/JobCommandList.h"
#include "job/JobMenuList.h"

namespace JobLayer {

bool JobCommandMenu::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  return JobMenuList::instance().runMenu(params, false, *executor, caller);
}

JobCommandUnit& jobCommandMenu() {
  static JobCommandMenu command;
  return command;
}

} // namespace JobLayer
