#include "job/JobActionList.h"

namespace JobLayer {

JobActionUnit* JobActionList::find(const RawString& name) const {
  for (JobActionUnit& unit : elements())
    if (unit.name.equals(name)) return &unit;
  return nullptr;
}

JobActionUnit* JobActionList::add(const RawString& name) {
  auto* unit = new JobActionUnit;
  unit->name = name;
  append(unit);
  return unit;
}

} // namespace JobLayer
