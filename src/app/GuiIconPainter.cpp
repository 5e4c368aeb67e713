#include "app/GuiIconPainter.h"

#include <algorithm>

namespace AppLayer {

namespace {

constexpr size_t MostScaled = 4096; // icons kept

size_t countOf(WinSize size) {
  return static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
}

bool liesOn(const GuiPixelView& view, const WinRect& area) {
  return area.left >= 0 && area.top >= 0 && area.right <= view.size().width &&
         area.bottom <= view.size().height && area.left < area.right && area.top < area.bottom;
}

} // namespace

size_t GuiIconPainter::KeyHash::operator()(const Key& key) const {
  size_t hash = static_cast<uint32_t>(key.cell);
  for (const int32_t part : {static_cast<int32_t>(key.ground.look), key.size.width,
                             key.ground.face.width, key.ground.face.height, key.ground.at.x})
    hash = hash * 1000003 + static_cast<uint32_t>(part);
  return hash;
}

// The pool is locked for as long as its pixels are looked at: the icon thread may fill the cell
// meanwhile, and a growing pool moves.
void GuiIconPainter::draw(GuiPixelBuffer& buffer, int32_t icon, const WinRect& place,
                          const Ground& ground) {
  const int32_t cell = icons_.imageOf(icon);
  const WinSize wanted{place.width(), place.height()};
  Scaled* scaled = nullptr;
  {
    const RawLayer::RawLockScope scope(icons_.cache.locks.pool);
    const uint32_t* pixels = icons_.cache.pool.cellPixels(cell);
    if (!pixels) return;
    const WinSize size = icons_.cache.pool.cellSize();
    if (size == wanted) {
      buffer.view().blend({place.left, place.top}, pixels, size);
      return;
    }
    if (liesOn(buffer.view(), place)) scaled = &scaledOf({cell, wanted, ground}, pixels, size);
  }
  if (scaled && !scaled->result.empty()) {
    buffer.view().copy({place.left, place.top}, scaled->result.data(), wanted);
    return;
  }
  icons_.draw(icon, buffer.dc(), place);
  GuiPixelBuffer::flush();
  if (!scaled) return;
  scaled->result.resize(countOf(wanted));
  buffer.view().read(place, scaled->result.data());
}

// Without a result when the icon was not scaled yet, or has changed since.
GuiIconPainter::Scaled& GuiIconPainter::scaledOf(const Key& key, const uint32_t* pixels,
                                                 WinSize size) {
  if (scaled_.size() >= MostScaled) scaled_.clear();
  Scaled& scaled = scaled_[key];
  const size_t count = countOf(size);
  if (scaled.cell.size() == count && std::equal(pixels, pixels + count, scaled.cell.data()))
    return scaled;
  scaled.cell.assign(pixels, pixels + count);
  scaled.result.clear();
  return scaled;
}

} // namespace AppLayer
