#include "app/GuiPixelBuffer.h"

#include <algorithm>

namespace AppLayer {

GuiPixelBuffer::~GuiPixelBuffer() {
  if (oldBitmap_) SelectObject(dc_.get(), oldBitmap_);
}

bool GuiPixelBuffer::reserve(HDC target, WinSize size) {
  size_ = size;
  if (size.width <= 0 || size.height <= 0) return false;
  if (bitmap_ && size.width <= capacity_.width && size.height <= capacity_.height) return true;
  if (!dc_) dc_.reset(CreateCompatibleDC(target));
  if (!dc_) return false;
  const WinSize grown{std::max(size.width, capacity_.width),
                      std::max(size.height, capacity_.height)};
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = grown.width;
  info.bmiHeader.biHeight = -grown.height; // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* pixels = nullptr;
  WinLayer::WinBitmapOwner bitmap(
      CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
  if (!bitmap || !pixels) return false;
  const HGDIOBJ previous = SelectObject(dc_.get(), bitmap.get());
  if (!previous) return false;
  if (!oldBitmap_) oldBitmap_ = previous;
  bitmap_ = std::move(bitmap);
  pixels_ = static_cast<uint32_t*>(pixels);
  capacity_ = grown;
  return true;
}

void GuiPixelBuffer::copyTo(HDC target) const {
  BitBlt(target, 0, 0, size_.width, size_.height, dc_.get(), 0, 0, SRCCOPY);
}

} // namespace AppLayer
