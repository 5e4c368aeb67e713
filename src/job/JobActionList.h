// JobActionUnit, JobActionList: the actions of the configuration, and its start-up script under
// the name "#Initialize". Loaded once, never edited, never written.
#pragma once

#include "job/JobParam.h"

namespace JobLayer {

class JobActionUnit {
 public:
  RawString name;
  JobParamList params;
};
class JobActionListAllocator : public RawLayer::RawListAllocator<JobActionUnit> {
 public:
  void destroy(JobActionUnit* element) override { delete element; }
};
class JobActionList : public RawLayer::RawListR<JobActionListAllocator, JobActionUnit> {
 public:
  // The first with the name, exact case; null when missing.
  [[nodiscard]] JobActionUnit* find(const RawString& name) const;
  JobActionUnit* add(const RawString& name);
};

} // namespace JobLayer
