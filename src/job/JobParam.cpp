#include "job/JobParam.h"

namespace JobLayer {

using RawLayer::RawLineFile;

namespace {

constexpr int32_t IndentStep = 2;

RawString blanks(int32_t count) {
  RawString text = RawString::withCapacity(count);
  while (count-- > 0) text.appendChar(' ');
  return text;
}

} // namespace

void JobParamListAllocator::destroy(JobParamUnit* element) {
  delete element;
}

// --- JobParamList

void JobParamList::addText(const RawString& key, const RawString& value) {
  duplicate();
  append(new JobParamText(key, value));
}

void JobParamList::addBlock(const RawString& key, const JobParamList& params) {
  duplicate();
  append(new JobParamCommand(key, params));
}

JobParamUnit* JobParamList::find(const RawString& key) const {
  for (JobParamUnit& unit : elements())
    if (unit.key.equals(key)) return &unit;
  return nullptr;
}

RawString JobParamList::text(const RawString& key) const {
  const JobParamUnit* unit = find(key);
  if (unit == nullptr || unit->type() != JobParamUnit::TypeText) return RawString::emptyStatic();
  return static_cast<const JobParamText*>(unit)->value;
}

void JobParamList::writeAll(RawLineFile& file, int32_t indent) const {
  for (const JobParamUnit& unit : elements()) unit.write(file, indent);
}

void JobParamList::summarizeAll(RawString& target) const {
  for (const JobParamUnit& unit : elements()) unit.summarize(target);
}

JobParamList JobParamList::substituted(const RawString& pattern,
                                       const RawString& replacement) const {
  JobParamList copy(*this);
  copy.substituteAll(pattern, replacement);
  return copy;
}

void JobParamList::substituteAll(const RawString& pattern, const RawString& replacement) {
  duplicate();
  for (JobParamUnit& unit : elements()) unit.substitute(pattern, replacement);
}

void JobParamList::duplicate() {
  if (references() == 0) return;
  const JobParamList shared(*this);
  renewRing();
  for (const JobParamUnit& unit : shared.elements()) append(unit.clone());
}

// --- JobParamText

JobParamUnit* JobParamText::clone() const {
  return new JobParamText(key, value);
}

void JobParamText::write(RawLineFile& file, int32_t indent) const {
  RawString line = blanks(indent);
  line.append5(key, "="_text, value);
  file.writeLine(line);
}

void JobParamText::substitute(const RawString& pattern, const RawString& replacement) {
  const int32_t position = value.find(pattern);
  if (position == value.length()) return;
  value.replaceRange({position, position + pattern.length()}, replacement, replacement.all());
}

void JobParamText::summarize(RawString& target) const {
  target.append5("["_text, key, "="_text, value, "]"_text);
}

// --- JobParamCommand

JobParamUnit* JobParamCommand::clone() const {
  return new JobParamCommand(key, params);
}

void JobParamCommand::write(RawLineFile& file, int32_t indent) const {
  RawString line = blanks(indent);
  line.append(key);
  if (params.count() == 0) {
    file.writeLine(line);
    return;
  }
  line.append(" {"_text);
  file.writeLine(line);
  params.writeAll(file, indent + IndentStep);
  line = blanks(indent);
  line.append("}"_text);
  file.writeLine(line);
}

void JobParamCommand::substitute(const RawString& pattern, const RawString& replacement) {
  params.substituteAll(pattern, replacement);
}

void JobParamCommand::summarize(RawString& target) const {
  target.append5("["_text, key, "]"_text);
}

} // namespace JobLayer
