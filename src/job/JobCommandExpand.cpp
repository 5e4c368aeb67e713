#include "job/JobCommandExpand.h"

#include "job/JobCommandList.h"

namespace JobLayer {

namespace {
constexpr int32_t PatternCapacity = 1024; // code units
}

bool JobCommandExpand::Execute(const JobParamList& params, const JobExecutorPair& caller) {
  JobParamList substitutions;
  for (const JobParamUnit& unit : params.elements()) {
    if (unit.type() == JobParamUnit::TypeText) {
      substitutions.addText(unit.key, static_cast<const JobParamText&>(unit).value);
      continue;
    }
    JobParamList block = static_cast<const JobParamCommand&>(unit).params;
    if (!rewrite(block, substitutions, caller)) return false;
    if (!executor->RunCommand(unit.key, block, caller)) return false;
  }
  return true;
}

// The list starts as a share of the source, which the first substitution leaves untouched.
bool JobCommandExpand::rewrite(JobParamList& list, const JobParamList& substitutions,
                               const JobExecutorPair& caller) const {
  for (const JobParamUnit& unit : substitutions.elements()) {
    const RawString value = expandText(static_cast<const JobParamText&>(unit).value, caller);
    if (expansionFailed()) return false;
    RawString pattern = RawString::withCapacity(PatternCapacity);
    pattern.append5("$("_text, unit.key, ")"_text);
    list.substituteAll(pattern, value);
  }
  return true;
}

JobCommandUnit& jobCommandExpand() {
  static JobCommandExpand command;
  return command;
}

} // namespace JobLayer
