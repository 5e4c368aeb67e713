// Icons and surfaces to draw on, alike on both builds. Rows are from the top; a mask of 0 is where
// the icon shows.
#pragma once

#include "win/WinRect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#else
#include "host/HostIcons.h"
#endif

using TestPixels = std::vector<uint32_t>;

inline std::size_t testCount(WinLayer::WinSize size) {
  return static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
}

#if defined(_WIN32)

// A bitmap of the given depth over pixels of that depth.
class TestBitmap {
 public:
  TestBitmap(WinLayer::WinSize size, WORD depth) {
    struct {
      BITMAPINFOHEADER header;
      RGBQUAD colours[2];
    } info{{}, {{0, 0, 0, 0}, {0xFF, 0xFF, 0xFF, 0}}};
    info.header.biSize = sizeof info.header;
    info.header.biWidth = size.width;
    info.header.biHeight = -size.height;
    info.header.biPlanes = 1;
    info.header.biBitCount = depth;
    void* bits = nullptr;
    bitmap_ = CreateDIBSection(nullptr, reinterpret_cast<BITMAPINFO*>(&info), DIB_RGB_COLORS, &bits,
                               nullptr, 0);
    bits_ = static_cast<uint8_t*>(bits);
    stride_ = (static_cast<std::size_t>(size.width) * depth + 31) / 32 * 4;
    width_ = static_cast<std::size_t>(size.width);
    depth_ = depth;
  }
  ~TestBitmap() { DeleteObject(bitmap_); }
  TestBitmap(const TestBitmap&) = delete;
  TestBitmap& operator=(const TestBitmap&) = delete;

  [[nodiscard]] HBITMAP get() const { return bitmap_; }
  [[nodiscard]] uint8_t* bits() const { return bits_; }
  void set(const TestPixels& pixels) const {
    for (std::size_t i = 0; i < pixels.size(); ++i) setPixel(i % width_, i / width_, pixels[i]);
  }

 private:
  // With one bit, any colour is white.
  void setPixel(std::size_t x, std::size_t y, uint32_t pixel) const {
    uint8_t* row = bits_ + y * stride_;
    if (depth_ == 1) {
      const auto bit = static_cast<uint8_t>(0x80 >> x % 8);
      row[x / 8] = static_cast<uint8_t>(pixel != 0 ? row[x / 8] | bit : row[x / 8] & ~bit);
    } else {
      for (std::size_t byte = 0; byte < depth_ / 8u; ++byte)
        row[x * (depth_ / 8u) + byte] = static_cast<uint8_t>(pixel >> 8 * byte);
    }
  }

  HBITMAP bitmap_;
  uint8_t* bits_;
  std::size_t stride_;
  std::size_t width_;
  WORD depth_;
};

class TestIcon {
 public:
  TestIcon(WinLayer::WinSize size, const TestPixels& colours, const TestPixels& mask,
           WORD depth = 32) {
    const TestBitmap colourBitmap(size, depth);
    const TestBitmap maskBitmap(size, 1);
    colourBitmap.set(colours);
    maskBitmap.set(mask);
    ICONINFO info{TRUE, 0, 0, maskBitmap.get(), colourBitmap.get()};
    icon_ = CreateIconIndirect(&info);
  }
  ~TestIcon() { DestroyIcon(icon_); }
  TestIcon(const TestIcon&) = delete;
  TestIcon& operator=(const TestIcon&) = delete;

  [[nodiscard]] void* get() const { return icon_; }

 private:
  HICON icon_;
};

class TestCanvas {
 public:
  explicit TestCanvas(WinLayer::WinSize size, uint32_t fill = 0)
      : size_(size), bitmap_(size, 32), dc_(CreateCompatibleDC(nullptr)),
        old_(SelectObject(dc_, bitmap_.get())) {
    bitmap_.set(TestPixels(testCount(size), fill));
  }
  ~TestCanvas() {
    SelectObject(dc_, old_);
    DeleteDC(dc_);
  }
  TestCanvas(const TestCanvas&) = delete;
  TestCanvas& operator=(const TestCanvas&) = delete;

  [[nodiscard]] void* get() const { return dc_; }
  // The top byte is nobody's.
  [[nodiscard]] TestPixels pixels() const {
    GdiFlush();
    const auto* first = reinterpret_cast<const uint32_t*>(bitmap_.bits());
    TestPixels pixels(first, first + testCount(size_));
    for (uint32_t& pixel : pixels) pixel &= 0xFFFFFF;
    return pixels;
  }

 private:
  WinLayer::WinSize size_;
  TestBitmap bitmap_;
  HDC dc_;
  HGDIOBJ old_;
};

#else

class TestIcon {
 public:
  TestIcon(WinLayer::WinSize size, const TestPixels& colours, const TestPixels& mask)
      : icon_{size, colours, mask} {}
  [[nodiscard]] void* get() { return &icon_; }

 private:
  HostIcon icon_;
};

class TestCanvas {
 public:
  explicit TestCanvas(WinLayer::WinSize size, uint32_t fill = 0)
      : canvas_{size, TestPixels(testCount(size), fill)} {}
  [[nodiscard]] void* get() { return &canvas_; }
  [[nodiscard]] TestPixels pixels() const {
    TestPixels pixels = canvas_.pixels;
    for (uint32_t& pixel : pixels) pixel &= 0xFFFFFF;
    return pixels;
  }

 private:
  HostCanvas canvas_;
};

#endif

// An icon of one colour, which shows everywhere.
class PlainIcon : public TestIcon {
 public:
  PlainIcon(WinLayer::WinSize size, uint32_t colour)
      : TestIcon(size, TestPixels(testCount(size), colour), TestPixels(testCount(size), 0)) {}
};
