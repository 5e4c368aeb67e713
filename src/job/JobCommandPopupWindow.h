// PopupWindow: brings a window to the front, by the number of its handle.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandPopupWindow final : public JobCommandUnitEx {
 public:
  JobCommandPopupWindow() : JobCommandUnitEx("PopupWindow"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
};

JobCommandUnit& jobCommandPopupWindow();

} // namespace JobLayer
