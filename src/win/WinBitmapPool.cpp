#include "win/WinBitmapPool.h"

#include "win/WinPixels.h"
#include "win/WinScaler.h"

#include <algorithm>

namespace WinLayer {

bool WinIconPixels::setSize(WinSize newSize) {
  size_ = {};
  if (newSize.width <= 0 || newSize.height <= 0) return false;
  if (!reserve(int64_t{newSize.width} * newSize.height)) return false;
  size_ = newSize;
  return true;
}

bool WinIconPixels::reserve(int64_t pixels) {
  if (pixels > MostPixels) return false;
  if (pixels <= scratchCapacity_) return true;
  const auto count = static_cast<std::size_t>(pixels);
  colorScratch_ = std::make_unique_for_overwrite<uint32_t[]>(count);
  maskScratch_ = std::make_unique_for_overwrite<uint32_t[]>(count);
  scratchCapacity_ = pixels;
  return true;
}

void WinIconPixels::release() {
  *this = WinIconPixels();
}

void WinBitmapPool::release() {
  WinBitmapPool::clearCells();
  scratch_.release();
  surface_.reset();
}

void WinBitmapPool::clearCells() {
  pixels_.reset();
  storeWidth_ = storeHeight_ = 0;
  capacity_ = usedCells_ = 0;
}

int32_t WinBitmapPool::acquireCell() {
  return usedCells_++;
}

void WinBitmapPool::setCellSize(int32_t width, int32_t height) {
  const auto side = [](int32_t pixels) { return pixels < 0 || pixels > MostSide ? 0 : pixels; };
  const WinSize size{side(width), side(height)};
  if (size == cellSize()) return;
  clearCells();
  cellWidth_ = size.width;
  cellHeight_ = size.height;
}

uint32_t* WinBitmapPool::cellAt(int32_t cell) const {
  return pixels_.get() + static_cast<std::size_t>(cell) * static_cast<std::size_t>(cellBytes() / 4);
}

const uint32_t* WinBitmapPool::cellPixels(int32_t cell) const {
  return cell >= 0 && cell < capacity_ ? cellAt(cell) : nullptr;
}

std::unique_ptr<uint32_t[]> WinBitmapPool::replaceStore(int32_t count) {
  const auto size = static_cast<std::size_t>(cellBytes() / 4) * static_cast<std::size_t>(count);
  auto store = std::make_unique_for_overwrite<uint32_t[]>(size);
  pixels_.swap(store);
  capacity_ = count;
  storeWidth_ = cellWidth_;
  storeHeight_ = cellHeight_ * count;
  return store;
}

void WinBitmapPool::clearFrom(int32_t cell) {
  std::fill(cellAt(cell), cellAt(std::max(cell, capacity_)), 0);
}

bool WinBitmapPool::reserveCells(int32_t count) {
  if (count <= capacity_) return true;
  // Cells without pixels would never use the room up.
  if (cellBytes() == 0 || count > MostBytes / cellBytes()) return false;
  const int32_t before = capacity_;
  const auto old = replaceStore(count);
  std::copy_n(old.get(), cellAt(before) - cellAt(0), cellAt(0));
  clearFrom(before);
  return true;
}

bool WinBitmapPool::reserveScratch(int64_t size) {
  return scratch_.reserve(size);
}

// The icon is read before a cell is taken, so that one that cannot be read costs none.
int32_t WinBitmapPool::addIcon(void* icon) {
  if (!readIcon(icon)) return -1;
  const int32_t cell = acquireCell();
  if (cell >= capacity_ && !reserveCells(std::max(capacity_ + growStep, cell + 1))) return -1;
  storeScratch(cell);
  return cell;
}

bool WinBitmapPool::storeIcon(int32_t cell, void* icon) {
  if (cell < 0 || cell >= capacity_ || !readIcon(icon)) return false;
  storeScratch(cell);
  return true;
}

bool WinBitmapPool::readIcon(void* icon) {
  if (!readIconPixels(icon, scratch_)) return false;
  straightenIcon(scratch_.colours(), scratch_.mask(), scratch_.count());
  return true;
}

void WinBitmapPool::storeScratch(int32_t cell) {
  scaleBitmap(WinBitmapAlpha::over(scratch_.colours(), scratch_.size()),
              WinBitmapAlpha::over(cellAt(cell), cellSize()));
}

// The context cannot be blended onto by the platform without losing what stands in it, so its
// pixels are fetched, blended by hand and put back.
void WinBitmapPool::drawCell(int32_t cell, void* context, const WinRect& rectangle) {
  if (cell < 0 || cell >= capacity_) return;
  if (!surface_) surface_ = WinPoolSurface::make();
  if (!surface_->reserve(context, cellSize())) return;
  if (!surface_->take(context, rectangle, cellSize())) return;
  const uint32_t* row = cellAt(cell);
  for (int32_t y = 0; y < cellHeight_; ++y, row += cellWidth_)
    blendPixels(surface_->row(y), row, static_cast<std::size_t>(cellWidth_));
  surface_->give(context, rectangle, cellSize());
}

} // namespace WinLayer
