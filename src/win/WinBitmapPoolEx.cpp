// The file of a pool: WinPoolHeader, the words of the bits that say which cells are taken, and the
// pixels of all cells; nothing in between, nothing behind.
#include "win/WinBitmapPool.h"

#include <algorithm>
#include <bit>

namespace WinLayer {

using RawLayer::RawFileOwner;

namespace {

static_assert(std::endian::native == std::endian::little, "files hold little-endian numbers");

struct WinPoolHeader {
  int32_t width;
  int32_t height;
  int32_t cellCount;
  int32_t wordCount;
};
static_assert(sizeof(WinPoolHeader) == 16);

constexpr int32_t WordBytes = 4;

// True when all bytes were there. One read does, unless the platform gives less.
bool readAll(const RawFileOwner& file, void* target, int32_t size) {
  auto* place = static_cast<char*>(target);
  while (size > 0) {
    const int32_t count = RawLayer::readFile(file, place, size);
    if (count <= 0) return false;
    place += count;
    size -= count;
  }
  return true;
}

// Whether so many bytes follow; the file pointer stays.
bool hasBytes(const RawFileOwner& file, int32_t size) {
  if (size == 0) return true;
  char last = 0;
  return RawLayer::seekFile(file, size - 1) && RawLayer::readFile(file, &last, 1) == 1 &&
         RawLayer::seekFile(file, -int64_t{size});
}

} // namespace

void WinBitmapPoolEx::release() {
  cells_.clear();
  WinBitmapPool::release();
}

void WinBitmapPoolEx::clearCells() {
  cells_.clear();
  WinBitmapPool::clearCells();
}

int32_t WinBitmapPoolEx::acquireCell() {
  const int32_t cell = cells_.findFirstClear();
  cells_.setBit(cell);
  setUsedCells(std::max(usedCells(), cell + 1));
  return cell;
}

void WinBitmapPoolEx::freeCell(int32_t cell) {
  cells_.clearBit(cell);
}

bool WinBitmapPoolEx::save(const RawFileOwner& file) const {
  const WinSize size = cellSize();
  const WinPoolHeader header{size.width, size.height, usedCells(), cells_.wordCount()};
  if (header.cellCount > MostStoredCells || header.cellCount > capacity()) return false;
  const auto pixelBytes = static_cast<int32_t>(cellBytes() * header.cellCount);
  return RawLayer::writeFile(file, &header, sizeof header) &&
         RawLayer::writeFile(file, cells_.words(), header.wordCount * WordBytes) &&
         RawLayer::writeFile(file, cellAt(0), pixelBytes);
}

bool WinBitmapPoolEx::load(const RawFileOwner& file) {
  if (readCells(file)) return true;
  clearCells();
  return false;
}

bool WinBitmapPoolEx::readCells(const RawFileOwner& file) {
  WinPoolHeader header;
  if (!readAll(file, &header, sizeof header)) return false;
  if (WinSize{header.width, header.height} != cellSize() || cellBytes() == 0) return false;
  if (header.cellCount < 0 || header.cellCount > MostStoredCells) return false;
  if (header.wordCount < 0 || header.wordCount > MostStoredWords) return false;
  // One cell more than are stored has to fit, too.
  if (header.cellCount >= MostBytes / cellBytes()) return false;

  const int32_t wordBytes = header.wordCount * WordBytes;
  const auto pixelBytes = static_cast<int32_t>(cellBytes() * header.cellCount);
  if (!hasBytes(file, wordBytes) || !cells_.resizeWords(header.wordCount)) return false;
  if (!readAll(file, cells_.mutableWords(), wordBytes)) return false;
  cells_.setUsedBits(
      std::max(cells_.usedBits(), header.wordCount * RawLayer::RawBitArray::WordBits));

  if (!hasBytes(file, pixelBytes)) return false;
  if (capacity() <= header.cellCount) {
    replaceStore(header.cellCount + 1);
    clearFrom(header.cellCount);
  }
  setUsedCells(header.cellCount);
  return readAll(file, cellAt(0), pixelBytes);
}

} // namespace WinLayer
