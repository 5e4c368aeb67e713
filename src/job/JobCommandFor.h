// For: sets Counter to its first number and runs its body again and again, unless its two numbers
// are equal. The step is only checked: a break, a failure or the Escape key ends the loop.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandFor final : public JobCommandUnitEx {
 public:
  JobCommandFor() : JobCommandUnitEx("For"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;

 private:
  bool readOrReport(const RawString& key, const RawString& text, int32_t& number) const;
};

JobCommandUnit& jobCommandFor();

} // namespace JobLayer
