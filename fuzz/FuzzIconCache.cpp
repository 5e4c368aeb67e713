// Bytes as the two files of an icon cache: loaded and compared with a plain reader of the data
// file, drawn, evicted, saved elsewhere and loaded again.
//
// Input: the cell size, bytes per read, the size of the profile (two bytes), then the profile
// behind the lines that name the data file, then the data file.

#include "TestIcon.h"
#include "TestText.h"
#include "host/HostFaults.h"
#include "job/JobIconCache.h"
#include "raw/RawNumber.h"
#include "raw/RawParameterList.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

using namespace JobLayer;
using namespace RawLayer;
using std::string;

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

// The two caches, in memory where the machine has such a folder.
class CacheFolders {
 public:
  CacheFolders() {
    const std::filesystem::path base =
        std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    folder_ = base / ("TarvellonIcons" + std::to_string(getpid()));
    std::filesystem::create_directories(folder_ / "saved");
  }
  ~CacheFolders() { std::filesystem::remove_all(folder_); }
  CacheFolders(const CacheFolders&) = delete;
  CacheFolders& operator=(const CacheFolders&) = delete;

  [[nodiscard]] string data() const { return (folder_ / "cells.dat").string(); }
  [[nodiscard]] string profile() const { return (folder_ / "IconCache.ini").string(); }
  [[nodiscard]] string savedProfile() const { return (folder_ / "saved/IconCache.ini").string(); }

 private:
  std::filesystem::path folder_;
};

void write(const string& path, const string& bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), std::ssize(bytes));
}

class Cache : public JobIconCache {
 public:
  Cache(int32_t size, const string& path) {
    pool.setCellSize(size, size);
    persistent = true;
    profile = raw(path);
  }
};

// --- The plain reader

struct Data {
  bool good = false;
  int32_t cells = 0;
  string pixels;
};

Data dataOf(const string& bytes, int32_t size) {
  Data data;
  int32_t header[4];
  if (bytes.size() < sizeof header) return data;
  std::memcpy(header, bytes.data(), sizeof header);
  if (header[0] != size || header[1] != size) return data;
  if (header[2] < 0 || header[2] > 1000 || header[3] < 0 || header[3] > 64) return data;
  const auto start = sizeof header + static_cast<std::size_t>(header[3]) * 4;
  const auto length = static_cast<std::size_t>(header[2] * size * size) * 4;
  if (bytes.size() < start + length) return data;
  data.good = true;
  data.cells = header[2];
  data.pixels = bytes.substr(start, length);
  return data;
}

class Counter : public RawProfileEnumeration::Enumerator {
 public:
  int32_t items = 0;
  void onSection(const RawString& name, const RawParameterList&) override {
    if (name.equalsNoCase("Item"_text)) ++items;
  }
};

bool hasTopInfo(RawProfile& profile, int32_t size) {
  RawParameterList list;
  profile.loadSection(list, "TopInfo"_text);
  const auto number = [&](const char* key) {
    const RawParameterUnit* unit = list.find(raw(key));
    return unit ? toInt(unit->value) : 0;
  };
  return number("IconWidth") == size && number("IconHeight") == size &&
         list.find("FailedId"_text) && list.find("LoadingId"_text);
}

// --- What is asked

void checkLoaded(const Cache& cache, const Data& data) {
  require(cache.pool.usedCells() == data.cells && cache.pool.capacity() <= 1001);
  if (data.cells > 0)
    require(std::memcmp(cache.pool.cellPixels(0), data.pixels.data(), data.pixels.size()) == 0);
  for (const JobIconInfoUnit& unit : cache.list.elements())
    require(unit.state == JobIconInfoUnit::Loaded);
}

bool isPlain(const RawString& text) {
  for (int32_t i = 0; i < text.length(); ++i)
    if (text.at(i) < 0x20 || text.at(i) > 0x7E) return false;
  return text.length() < 2000;
}

// The entries that a save keeps, one run older; empty text when one could be read as another.
string keptOf(const JobIconCache& cache, int32_t older, bool& plain) {
  string kept;
  for (const JobIconInfoUnit& unit : cache.list.elements()) {
    const bool shows =
        unit.state == JobIconInfoUnit::Ready || unit.state == JobIconInfoUnit::Loaded;
    if (!shows || unit.imageId <= cache.loadingId() || unit.file.isEmpty()) continue;
    plain = plain && isPlain(unit.file) && unit.unused < INT32_MAX;
    kept += std::to_string(unit.imageId) + "," + bytesOf(unit.file) + "," +
            std::to_string(unit.iconIndex) + "," + std::to_string(int64_t{unit.unused} + older) +
            "\n";
  }
  return kept;
}

void use(Cache& cache, int32_t size, int32_t limit) {
  static TestCanvas& canvas = *new TestCanvas({16, 16}, 0);
  for (int32_t handle = -1; handle <= std::min(cache.list.count(), 40); ++handle)
    cache.pool.drawCell(handle % 2 == 0 ? cache.imageOf(handle) : handle, canvas.get(),
                        {0, 0, size, size});
  cache.evict(limit);
  PlainIcon icon({size, size}, 0xFF123456);
  const int32_t cell = cache.pool.addIcon(icon.get());
  require(cell >= 0 && cache.pool.isTaken(cell) && *cache.pool.cellPixels(cell) == 0xFF123456);
}

void checkSaving(Cache& cache, int32_t size, const string& path) {
  cache.profile = raw(path);
  require(cache.save() == (cache.pool.usedCells() <= 1000));
  if (cache.pool.usedCells() > 1000) return;
  bool plain = true;
  const string kept = keptOf(cache, 1, plain);
  Cache again(size, path);
  if (!again.load()) return require(!plain);
  require(again.pool.usedCells() == cache.pool.usedCells());
  require(!plain || keptOf(again, 0, plain) == kept);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, std::size_t size) {
  static const CacheFolders folders;
  if (size < 4) return 0;
  const int32_t cellSize = 1 + bytes[0] % 16;
  const string all(reinterpret_cast<const char*>(bytes) + 4, size - 4);
  const std::size_t cut = std::min<std::size_t>(bytes[2] | bytes[3] << 8, all.size());
  write(folders.data(), all.substr(cut));
  write(folders.profile(),
        "[Identify]\r\nDataFile=" + folders.data() + "\r\n\r\n" + all.substr(0, cut));

  HostFaults::Scope faults;
  faults.limitReads(bytes[1]);
  RawProfile profile(raw(folders.profile()));
  const bool isNamed =
      bytesOf(profile.readValue("Identify"_text, "DataFile"_text)) == folders.data();
  const Data data = dataOf(all.substr(cut), cellSize);
  Counter counter;
  const bool expected = isNamed && data.good && hasTopInfo(profile, cellSize) &&
                        RawProfileEnumeration(profile).enumerate(counter);

  Cache cache(cellSize, folders.profile());
  require(cache.load() == expected);
  require(cache.list.count() == (expected ? counter.items : 0));
  if (expected) {
    checkLoaded(cache, data);
    use(cache, cellSize, bytes[1]);
  } else {
    require(cache.pool.usedCells() == 0 && cache.pool.capacity() == 0);
    cache.setBuiltIn(0, 0);
  }
  faults.limitReads(0);
  checkSaving(cache, cellSize, folders.savedProfile());
  return 0;
}
