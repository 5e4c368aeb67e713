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

// Over unit values, so that texts that are equal in different encodings are found alike.
template <class Unit>
static std::size_t hashOf(const Unit* units, int32_t length) {
  uint32_t hash = 2166136261U;
  for (int32_t i = 0; i < length; ++i) hash = (hash ^ static_cast<uint16_t>(units[i])) * 16777619U;
  return hash;
}

static std::size_t hashOf(const RawString& name) {
  return name.encoding() == RawLayer::EncodingWide
             ? hashOf(name.wide(), name.length())
             : hashOf(reinterpret_cast<const unsigned char*>(name.text()), name.length());
}

// The place of the name: that of its entry, or the free one where it belongs.
static std::size_t placeOf(const std::vector<JobVariableUnit*>& index, const RawString& name) {
  const std::size_t mask = index.size() - 1;
  std::size_t place = hashOf(name) & mask;
  while (index[place] != nullptr && !index[place]->name.equals(name)) place = (place + 1) & mask;
  return place;
}

void JobVariableList::makeIndex() {
  std::size_t size = 64;
  while (size < 2 * static_cast<std::size_t>(count())) size *= 2;
  index_.assign(size, nullptr);
  for (JobVariableUnit& unit : elements()) {
    JobVariableUnit*& place = index_[placeOf(index_, unit.name)];
    if (place == nullptr) place = &unit;
  }
  indexed_ = count();
}

JobVariableUnit* JobVariableList::find(const RawString& name) {
  const RawLockScope scope(lock);
  return findLocked(name);
}

JobVariableUnit* JobVariableList::findLocked(const RawString& name) {
  if (indexed_ != count() || index_.empty()) makeIndex();
  return index_[placeOf(index_, name)];
}

void JobVariableList::destroy(JobVariableUnit* element) {
  index_.clear();
  JobVariableListAllocator::destroy(element);
}

void JobVariableList::set(const RawString& name, const RawString& value) {
  const RawLockScope scope(lock);
  JobVariableUnit* unit = findLocked(name);
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
  const JobVariableUnit* const unit = findLocked(name);
  return unit != nullptr ? unit->value : RawString();
}

JobVariableResult JobVariableList::evaluate(const RawString& name, JobVariableArgument& argument) {
  JobVariableUnit* unit = nullptr;
  {
    const RawLockScope scope(lock);
    unit = findLocked(name);
    if (unit == nullptr) return {VariableUnknown, RawString()};
    if ((unit->flags & JobVariableUnit::UserVariable) != 0) return unit->evaluate(argument);
  }
  return unit->evaluate(argument);
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
