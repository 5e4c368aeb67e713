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

} // namespace

int32_t JobIconInfoList::find(const RawString& file, int32_t iconIndex) const {
  int32_t position = 0;
  for (const JobIconInfoUnit& unit : elements()) {
    if (unit.iconIndex == iconIndex &&
        unit.file.rangeEqualsNoCase(unit.file.all(), file, file.all()))
      return position;
    ++position;
  }
  return -1;
}

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
