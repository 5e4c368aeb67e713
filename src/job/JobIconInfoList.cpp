#include "job/JobIconInfoList.h"

#include "raw/RawLineFile.h"
#include "raw/RawNumber.h"
#include "raw/RawParameterList.h"

namespace JobLayer {

using RawLayer::RawParameterList;

namespace {

void addNumber(RawParameterList& list, const RawString& key, int32_t value) {
  list.add(key)->setInt(value);
}

int32_t numberOf(const RawParameterList& list, const RawString& key) {
  return RawLayer::toInt(list.valueOf(key));
}

bool isSaved(const JobIconInfoUnit& unit, int32_t firstFreeId) {
  const bool hasImage =
      unit.state == JobIconInfoUnit::Ready || unit.state == JobIconInfoUnit::Loaded;
  return hasImage && unit.imageId > firstFreeId && !unit.file.isEmpty();
}

bool isOf(const JobIconInfoUnit& unit, const RawString& file, int32_t iconIndex) {
  return unit.iconIndex == iconIndex &&
         unit.file.rangeEqualsNoCase(unit.file.all(), file, file.all());
}

// Over the values of folded units, so that names that are equal in different encodings and cases
// are found alike.
template <class Unit>
uint64_t hashOf(const Unit* units, int32_t length, uint64_t hash) {
  for (int32_t i = 0; i < length; ++i) hash = (hash ^ RawLayer::rawFold(units[i])) * 1099511628211U;
  return hash;
}

uint64_t hashOf(const RawString& file, int32_t iconIndex) {
  const uint64_t start = 14695981039346656037U ^ static_cast<uint32_t>(iconIndex);
  return file.encoding() == RawLayer::EncodingWide
             ? hashOf(file.wide(), file.length(), start)
             : hashOf(reinterpret_cast<const unsigned char*>(file.text()), file.length(), start);
}

} // namespace

// --- The index

void JobIconInfoList::renew() {
  clearIndex();
  renewRing();
}

void JobIconInfoList::destroy(JobIconInfoUnit* element) {
  clearIndex();
  JobIconInfoListAllocator::destroy(element);
}

void JobIconInfoList::clearIndex() const {
  units_.clear();
  firstByHash_.clear();
}

// New entries stand at the end, so they are met from there.
void JobIconInfoList::extendIndex() const {
  const std::size_t known = units_.size();
  const auto wanted = static_cast<std::size_t>(count());
  if (known == wanted) return;
  units_.resize(wanted);
  const RawLayer::RawListNode* node = last();
  for (std::size_t i = wanted; i > known; --i, node = previous(node)) units_[i - 1] = element(node);
  for (std::size_t i = known; i < wanted; ++i)
    firstByHash_.try_emplace(hashOf(units_[i]->file, units_[i]->iconIndex),
                             static_cast<int32_t>(i));
}

JobIconInfoUnit* JobIconInfoList::at(int32_t position) const {
  extendIndex();
  if (position < 0 || position >= count()) return nullptr;
  return units_[static_cast<std::size_t>(position)];
}

// What is equal has one hash, so no entry ahead of the first with the hash can be meant. Nearly
// always that one is.
int32_t JobIconInfoList::find(const RawString& file, int32_t iconIndex) const {
  extendIndex();
  const auto found = firstByHash_.find(hashOf(file, iconIndex));
  if (found == firstByHash_.end()) return -1;
  for (int32_t position = found->second; position < count(); ++position)
    if (isOf(*at(position), file, iconIndex)) return position;
  return -1;
}

// --- In the profile

const RawString& JobIconInfoList::sectionName() {
  return "Item"_text;
}

bool JobIconInfoList::saveSections(RawLayer::RawLineFile& writer, const RawString&) {
  for (const JobIconInfoUnit& unit : elements()) {
    if (!isSaved(unit, firstFreeId)) continue;
    RawParameterList list;
    addNumber(list, "ImageId"_text, unit.imageId);
    list.add("File"_text)->value = unit.file;
    addNumber(list, "IconIndex"_text, unit.iconIndex);
    addNumber(list, "Unused"_text, unit.unused);
    RawLayer::RawProfile::writeSection(writer, sectionName(), list);
  }
  return true;
}

void JobIconInfoList::onSection(const RawString& name, const RawParameterList& parameters) {
  if (!name.equalsNoCase(sectionName())) return;
  auto* unit = new JobIconInfoUnit;
  unit->state = JobIconInfoUnit::Loaded;
  unit->imageId = numberOf(parameters, "ImageId"_text);
  unit->file = parameters.valueOf("File"_text);
  unit->iconIndex = numberOf(parameters, "IconIndex"_text);
  unit->unused = numberOf(parameters, "Unused"_text);
  if (unit->unused < INT32_MAX) ++unit->unused;
  append(unit);
}

} // namespace JobLayer
