// LauncherData: owner of all selectors, buttons and actions, for the life of the process.
#pragma once

#include "job/JobActionList.h"
#include "job/JobButtonList.h"
#include "job/JobSelectorList.h"

namespace JobLayer {

class LauncherData {
 public:
  JobSelectorList selectors;
  JobButtonList buttons;
  JobActionList actions;

  static LauncherData& instance();
};

} // namespace JobLayer
