#include "win/WinButtonFaces.h"

#include "win/WinViewParts.h"

namespace WinLayer {

namespace {
// More than the buttons of a launcher need; a window that is being resized may ask for many sizes.
constexpr size_t MostPixels = 1024 * 1024;
} // namespace

size_t WinButtonFaces::KeyHash::operator()(const Key& key) const {
  const auto width = static_cast<size_t>(key.size.width);
  const auto height = static_cast<size_t>(key.size.height);
  return (width * 4099 + height) * 4099 + key.drawFlags;
}

const uint32_t* WinButtonFaces::pixels(WinSize size, uint32_t drawFlags) {
  if (size.width <= 0 || size.height <= 0) return nullptr;
  const Key key{drawFlags & WinButtonDraw::FaceFlags, size};
  if (const auto found = faces_.find(key); found != faces_.end()) return found->second.data();
  const size_t count = static_cast<size_t>(size.width) * static_cast<size_t>(size.height);
  if (pixelCount_ + count > MostPixels) {
    faces_.clear();
    pixelCount_ = 0;
  }
  pixelCount_ += count;
  std::vector<uint32_t>& face = faces_[key];
  face.resize(count);
  WinButtonDraw::paint(face.data(), size, drawFlags, WinViewStyle::dialogColour());
  return face.data();
}

void WinButtonFaces::draw(HDC dc, const WinRect& rect, uint32_t drawFlags) {
  const WinSize size{rect.width(), rect.height()};
  const uint32_t* face = pixels(size, drawFlags);
  if (!face) return;
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.width;
  info.bmiHeader.biHeight = -size.height; // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  SetDIBitsToDevice(dc, rect.left, rect.top, static_cast<DWORD>(size.width),
                    static_cast<DWORD>(size.height), 0, 0, 0, static_cast<UINT>(size.height), face,
                    &info, DIB_RGB_COLORS);
}

} // namespace WinLayer
