#include "job/JobCommandToClipboard.h"

#include "raw/RawClipboard.h"

namespace JobLayer {

bool JobCommandToClipboard::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  const RawString text = requiredValue(params, "Parameter"_text, caller);
  return !text.isEmpty() && RawLayer::setClipboard(text, text.all());
}

JobCommandUnit& jobCommandToClipboard() {
  static JobCommandToClipboard command;
  return command;
}

} // namespace JobLayer
