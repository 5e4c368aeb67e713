// Foreach: runs its body once for each element of a comma-separated list, with the element in the
// variable Each.
#pragma once

#include "job/JobCommand.h"

namespace JobLayer {

class JobCommandForeach final : public JobCommandUnitEx {
 public:
  JobCommandForeach() : JobCommandUnitEx("Foreach"_text) {}
  bool Execute(const JobParamList& params, const JobExecutorPair& caller) override;
  // The element at `position`, which moves to the next one, or past the end behind the last. A
  // quoted element may hold commas; what stands between its closing quote and the comma is lost.
  static RawString takeElement(const RawString& list, int32_t& position);
};

JobCommandUnit& jobCommandForeach();

} // namespace JobLayer
