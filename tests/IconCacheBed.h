// A run of the program over an icon cache, in tests.
#pragma once

#include "TestFolder.h"
#include "TestIcon.h"
#include "TestProfile.h"
#include "TestText.h"
#include "job/JobIconCache.h"

#include <filesystem>
#include <string>
#include <vector>

namespace IconCacheBed {

using TestProfile::sectionOf;
using TestProfile::Texts;

class CacheRun : public JobLayer::JobIconCache {
 public:
  explicit CacheRun(const TestFolder& folder, int32_t size = 4) {
    pool.setCellSize(size, size);
    persistent = true;
    profile = folder.file("IconCache.ini");
    addBuiltIn();
  }
  void addBuiltIn() {
    const int32_t failed = addImage();
    setBuiltIn(failed, addImage());
  }
  // Adds a ready entry, with a new image unless one is given; gives its image.
  int32_t add(const std::string& file, int32_t iconIndex, int32_t unused = 0,
              int32_t imageId = -1) {
    auto* unit = new JobLayer::JobIconInfoUnit;
    unit->file = raw(file);
    unit->iconIndex = iconIndex;
    unit->unused = unused;
    unit->imageId = imageId >= 0 ? imageId : addImage();
    list.append(unit);
    return unit->imageId;
  }
  [[nodiscard]] uint32_t colourOf(int32_t cell) const {
    const uint32_t* pixels = pool.cellPixels(cell);
    return pixels ? *pixels : 0;
  }
  [[nodiscard]] bool isEmpty() const {
    return list.count() == 0 && pool.usedCells() == 0 && pool.capacity() == 0;
  }
  // "image file index unused, " for each entry.
  [[nodiscard]] std::string content() const {
    std::string text;
    for (const JobLayer::JobIconInfoUnit& unit : list.elements())
      text += std::to_string(unit.imageId) + " " + bytesOf(unit.file) + " " +
              std::to_string(unit.iconIndex) + " " + std::to_string(unit.unused) + ", ";
    return text;
  }
  [[nodiscard]] std::vector<int32_t> states() const {
    std::vector<int32_t> all;
    for (const JobLayer::JobIconInfoUnit& unit : list.elements()) all.push_back(unit.state);
    return all;
  }

  // From now on, new images differ from those of other runs.
  void changeColours() { colour_ += 1000; }

 private:
  int32_t addImage() {
    PlainIcon icon(pool.cellSize(), 0xFF000000 | ++colour_ * 0x010305);
    return pool.addIcon(icon.get());
  }
  uint32_t colour_ = 0;
};

// The names of the data files in the folder.
inline std::vector<std::string> dataFiles(const TestFolder& folder) {
  std::vector<std::string> names;
  std::error_code error;
  const std::filesystem::path path(bytesOf(folder.path()));
  for (const auto& entry : std::filesystem::directory_iterator(path, error))
    if (entry.path().extension() == ".dat") names.push_back(entry.path().filename().string());
  return names;
}

} // namespace IconCacheBed
