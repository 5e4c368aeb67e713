#include "win/WinPoolPlatform.h"

#include "win/WinGdi.h"

#include <algorithm>

namespace WinLayer {

namespace {

BITMAPINFO infoOf(WinSize size) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = size.width;
  info.bmiHeader.biHeight = -size.height; // rows from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

WinSize sizeOf(HBITMAP bitmap) {
  BITMAP data{};
  if (!bitmap || GetObjectW(bitmap, sizeof data, &data) == 0) return {};
  return {data.bmWidth, data.bmHeight};
}

bool readRows(HDC dc, HBITMAP bitmap, WinSize size, uint32_t* pixels) {
  BITMAPINFO info = infoOf(size);
  const auto rows = static_cast<UINT>(size.height);
  return GetDIBits(dc, bitmap, 0, rows, pixels, &info, DIB_RGB_COLORS) == size.height;
}

// An icon of two colours has no bitmap of its own for them: its mask has twice the height, and the
// lower half holds the colours.
bool readTwoColours(HDC dc, HBITMAP both, WinSize size, WinIconPixels& pixels) {
  const WinSize half{size.width, size.height / 2};
  WinIconPixels whole;
  if (!whole.setSize(size) || !pixels.setSize(half)) return false;
  if (!readRows(dc, both, size, whole.mask())) return false;
  std::copy_n(whole.mask(), pixels.count(), pixels.mask());
  std::copy_n(whole.mask() + pixels.count(), pixels.count(), pixels.colours());
  return true;
}

class Surface : public WinPoolSurface {
 public:
  Surface() = default;
  ~Surface() override {
    if (oldBitmap_) SelectObject(dc_.get(), oldBitmap_);
  }
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;

  bool reserve(void* context, WinSize size) override {
    if (bitmap_ && size.width <= size_.width && size.height <= size_.height) return true;
    if (!dc_) dc_.reset(CreateCompatibleDC(static_cast<HDC>(context)));
    if (!dc_ || size.width <= 0 || size.height <= 0) return false;
    const BITMAPINFO info = infoOf(size);
    void* pixels = nullptr;
    WinBitmapOwner bitmap(CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
    if (!bitmap || !pixels) return false;
    const HGDIOBJ previous = SelectObject(dc_.get(), bitmap.get());
    if (!previous) return false;
    if (!oldBitmap_) oldBitmap_ = previous;
    bitmap_ = std::move(bitmap);
    pixels_ = static_cast<uint32_t*>(pixels);
    size_ = size;
    return true;
  }
  uint32_t* row(int32_t y) override {
    return pixels_ + static_cast<std::ptrdiff_t>(y) * size_.width;
  }
  bool take(void* context, const WinRect& from, WinSize size) override {
    SetStretchBltMode(dc_.get(), HALFTONE);
    const bool copied =
        StretchBlt(dc_.get(), 0, 0, size.width, size.height, static_cast<HDC>(context), from.left,
                   from.top, from.width(), from.height(), SRCCOPY) != FALSE;
    GdiFlush();
    return copied;
  }
  void give(void* context, const WinRect& to, WinSize size) override {
    const HDC target = static_cast<HDC>(context);
    GdiFlush();
    SetStretchBltMode(target, HALFTONE);
    StretchBlt(target, to.left, to.top, to.width(), to.height(), dc_.get(), 0, 0, size.width,
               size.height, SRCCOPY);
    GdiFlush();
  }

 private:
  WinMemoryDcOwner dc_;
  WinBitmapOwner bitmap_;
  HGDIOBJ oldBitmap_ = nullptr;
  uint32_t* pixels_ = nullptr;
  WinSize size_;
};

} // namespace

bool readIconPixels(void* icon, WinIconPixels& pixels) {
  ICONINFO info{};
  if (!icon || !GetIconInfo(static_cast<HICON>(icon), &info)) return false;
  const WinBitmapOwner colours(info.hbmColor);
  const WinBitmapOwner mask(info.hbmMask);
  const WinWindowDc screen(nullptr);
  if (!colours) return readTwoColours(screen.get(), mask.get(), sizeOf(mask.get()), pixels);
  return pixels.setSize(sizeOf(colours.get())) &&
         readRows(screen.get(), colours.get(), pixels.size(), pixels.colours()) &&
         readRows(screen.get(), mask.get(), pixels.size(), pixels.mask());
}

std::unique_ptr<WinPoolSurface> WinPoolSurface::make() {
  return std::make_unique<Surface>();
}

} // namespace WinLayer
