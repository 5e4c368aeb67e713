#include "job/JobIconCache.h"

#include "raw/RawFile.h"
#include "raw/RawNumber.h"
#include "raw/RawParameterList.h"
#include "raw/RawPath.h"

#include <vector>

namespace JobLayer {

using RawLayer::RawFileOwner;
using RawLayer::RawLockScope;
using RawLayer::RawParameterList;
using RawLayer::RawProfile;
using RawLayer::RawProfileEnumeration;

namespace {

const RawString& identify() {
  return "Identify"_text;
}
const RawString& dataFile() {
  return "DataFile"_text;
}
const RawString& topInfo() {
  return "TopInfo"_text;
}

// Names of one second that are tried before a folder counts as one that takes no file.
constexpr int32_t MostNames = 100;

void markNamed(std::vector<bool>& named, int32_t cell) {
  if (cell >= 0 && static_cast<std::size_t>(cell) < named.size())
    named[static_cast<std::size_t>(cell)] = true;
}

// The sections of the profile on their way to whom they concern.
class Sections : public RawProfileEnumeration::Enumerator {
 public:
  RawParameterList topValues; // of all sections "TopInfo"

  explicit Sections(JobIconInfoList& items) : items_(items) {}
  void onSection(const RawString& name, const RawParameterList& parameters) override {
    if (name.equalsNoCase(topInfo()))
      topValues.merge(parameters);
    else
      items_.onSection(name, parameters);
  }

 private:
  JobIconInfoList& items_;
};

} // namespace

void JobIconCache::setBuiltIn(int32_t failedId, int32_t loadingId) {
  failedId_ = failedId;
  loadingId_ = loadingId;
  list.firstFreeId = loadingId;
}

int32_t JobIconCache::imageOf(int32_t handle) {
  const RawLockScope ring(locks.list);
  const RawLockScope fields(locks.state);
  JobIconInfoUnit* unit = list.at(handle);
  if (!unit) return -1;
  unit->unused = 0;
  return unit->imageId;
}

void JobIconCache::evict(int32_t unusedCount) {
  const RawLockScope ring(locks.list);
  const RawLockScope fields(locks.state);
  const RawLockScope cells(locks.pool);
  for (JobIconInfoUnit& unit : list.elements()) {
    // The cell of one that went before may be another's by now.
    if (unit.unused < unusedCount || unit.state == JobIconInfoUnit::Evicted) continue;
    unit.state = JobIconInfoUnit::Evicted;
    if (!list.isBuiltIn(unit.imageId)) pool.freeCell(unit.imageId);
  }
}

RawString JobIconCache::dataFileName(const RawLayer::RawMoment& moment, int32_t number) {
  uint64_t digits = static_cast<uint64_t>(moment.year);
  for (const int32_t part : {moment.month, moment.day, moment.hour, moment.minute, moment.second})
    digits = digits * 100 + static_cast<uint64_t>(part);
  RawString name = RawString::fromDigits(digits + static_cast<uint64_t>(number), 10, 14);
  name.append(".dat"_text);
  return name;
}

// --- Saving

bool JobIconCache::save() {
  if (!persistent) return true;
  const RawString data = writeData();
  if (data.isEmpty()) return false;
  if (writeProfile(data)) return true;
  RawLayer::deleteFile(data);
  RawLayer::deleteFile(profile);
  return false;
}

// Gives the path of a new file with the whole pool; empty when there is none. The name is one that
// nothing has, so that a second save of the same moment neither reuses nor deletes the first one's.
RawString JobIconCache::writeData() {
  const RawString folder = RawLayer::folderOf(profile);
  const RawLayer::RawMoment now = RawLayer::utcTime();
  RawString path;
  RawFileOwner file;
  for (int32_t i = 0; !file && i < MostNames; ++i) {
    path = RawLayer::joinPath(folder, dataFileName(now, i));
    if (RawLayer::exists(path)) continue;
    file = RawLayer::openFile(path, RawLayer::RawAccessWrite, RawLayer::RawShareNone,
                              RawLayer::RawCreateNew);
    if (!file) break;
  }
  if (!file) return {};
  const RawLockScope cells(locks.pool);
  if (pool.save(file)) return path;
  file.reset();
  RawLayer::deleteFile(path);
  return {};
}

// The old data file goes first and the new one is named last: in between, the profile has no cache.
bool JobIconCache::writeProfile(const RawString& data) {
  RawProfile file(profile);
  const RawString old = file.readValue(identify(), dataFile());
  if (!old.isEmpty() && RawLayer::isFile(old) && !RawLayer::deleteFile(old)) return false;
  return writeTopInfo(file) && saveItems() && file.writeValue(identify(), dataFile(), data);
}

bool JobIconCache::writeTopInfo(RawProfile& file) const {
  const RawLockScope cells(locks.pool);
  RawParameterList values;
  values.add("IconWidth"_text)->setInt(pool.cellSize().width);
  values.add("IconHeight"_text)->setInt(pool.cellSize().height);
  values.add("FailedId"_text)->setInt(failedId_);
  values.add("LoadingId"_text)->setInt(loadingId_);
  return file.saveSection(values, topInfo());
}

bool JobIconCache::saveItems() {
  const RawLockScope ring(locks.list);
  const RawLockScope fields(locks.state);
  return RawProfileEnumeration(RawProfile(profile)).save(list, JobIconInfoList::sectionName());
}

// --- Loading

bool JobIconCache::load() {
  if (!persistent) return true;
  const RawLockScope ring(locks.list);
  const RawLockScope fields(locks.state);
  const RawLockScope cells(locks.pool);
  list.renew();
  if (readFiles()) {
    queuePosition = 0;
    workPending = true;
    return true;
  }
  list.renew();
  pool.clearCells();
  return false;
}

bool JobIconCache::readFiles() {
  RawProfile file(profile);
  if (!readData(file.readValue(identify(), dataFile()))) return false;
  if (!readSections()) return false;
  freeUnnamedCells();
  return true;
}

bool JobIconCache::readData(const RawString& data) {
  if (data.isEmpty()) return false;
  const RawFileOwner file = RawLayer::openFile(data, RawLayer::RawAccessRead,
                                               RawLayer::RawShareRead, RawLayer::RawOpenExisting);
  return file && pool.load(file);
}

// In one pass, for the profile is long.
bool JobIconCache::readSections() {
  Sections sections(list);
  return RawProfileEnumeration(RawProfile(profile)).enumerate(sections) &&
         takeTopInfo(sections.topValues);
}

bool JobIconCache::takeTopInfo(const RawParameterList& values) {
  const auto number = [&](const RawString& key) { return RawLayer::toInt(values.valueOf(key)); };
  const WinLayer::WinSize size{number("IconWidth"_text), number("IconHeight"_text)};
  if (size != pool.cellSize()) return false;
  if (!values.contains("FailedId"_text) || !values.contains("LoadingId"_text)) return false;
  setBuiltIn(number("FailedId"_text), number("LoadingId"_text));
  return true;
}

// Entries without a file are not saved, but their images are. No entry will ever ask for them, so
// they would fill the pool in the course of many runs.
void JobIconCache::freeUnnamedCells() {
  std::vector<bool> named(static_cast<std::size_t>(pool.usedCells()));
  for (const JobIconInfoUnit& unit : list.elements()) markNamed(named, unit.imageId);
  for (int32_t cell = 0; cell < pool.usedCells(); ++cell)
    if (!list.isBuiltIn(cell) && cell != failedId_ && !named[static_cast<std::size_t>(cell)])
      pool.freeCell(cell);
}

} // namespace JobLayer
