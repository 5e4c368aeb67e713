#include "job/JobVariable.h"

#include "job/JobVariableExpander.h"
#include "job/JobVariableFunctions.h"

namespace JobLayer {

using RawLayer::RawLockScope;

const RawString& variableStateWord(int32_t state) {
  switch (state) {
  case VariableSuccess:
    return "Success"_text;
  case VariableOverflow:
    return "Overflow"_text;
  case VariableInvalid:
    return "Invalid"_text;
  case VariableUnknown:
    return "Unknown"_text;
  case VariableExpanded:
    return "Expanded"_text;
  default:
    return RawString::emptyStatic();
  }
}

bool isTrueText(const RawString& text) {
  return !text.isEmpty() && !text.equalsNoCase("False"_text);
}

JobVariableResult JobVariableUnit::evaluate(JobVariableArgument&) {
  return {VariableSuccess, value};
}

JobVariableUnit* JobVariableList::find(const RawString& name) {
  const RawLockScope scope(lock);
  for (JobVariableUnit& unit : elements())
    if (unit.name.equals(name)) return &unit;
  return nullptr;
}

void JobVariableList::set(const RawString& name, const RawString& value) {
  const RawLockScope scope(lock);
  JobVariableUnit* unit = find(name);
  if (unit == nullptr) {
    unit = new JobVariableUnit(name);
    unit->flags = JobVariableUnit::UserVariable;
    append(unit);
  }
  unit->value = value;
  unit->flags |= JobVariableUnit::SetSinceRestore;
}

RawString JobVariableList::valueOf(const RawString& name) {
  const RawLockScope scope(lock);
  const JobVariableUnit* const unit = find(name);
  return unit != nullptr ? unit->value : RawString();
}

void JobVariableList::saveAll() {
  const RawLockScope scope(lock);
  for (JobVariableUnit& unit : elements()) unit.savedValue = unit.value;
}

void JobVariableList::restoreAll() {
  const RawLockScope scope(lock);
  for (JobVariableUnit& unit : elements()) {
    unit.value = unit.savedValue;
    unit.flags |= JobVariableUnit::SetSinceRestore;
  }
}

JobVariableStore::JobVariableStore() {
  appendBuiltInVariables(*this);
}

JobVariableStore& JobVariableStore::instance() {
  static JobVariableStore store;
  return store;
}

void JobVariableStore::defineInitialVariables() {
  set("ExitCode"_text, "0"_text);
  set("Missing"_text, RawString::emptyStatic());
}

} // namespace JobLayer
