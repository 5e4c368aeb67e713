#include "job/JobCommandPopupWindow.h"

#include "job/JobToolMessage.h"
#include "raw/RawWindows.h"

namespace JobLayer {

bool JobCommandPopupWindow::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString text = optionalValue(params, "Parameter"_text, caller);
  if (expansionFailed()) return false;
  int32_t handle = 0;
  if (!readNumber(text, handle)) handle = 0;
  // The upper half of a handle carries nothing but its sign.
  const auto window = static_cast<uintptr_t>(static_cast<intptr_t>(handle));
  if (RawLayer::popupWindow(window) == RawLayer::RawPopupResult::NoWindow) {
    JobToolMessage::ReportCommandError("MissingTargetWindow"_text, keyword, "Parameter"_text, text);
    return false;
  }
  return true;
}

JobCommandUnit& jobCommandPopupWindow() {
  static JobCommandPopupWindow command;
  return command;
}

} // namespace JobLayer
