// GuiPixelBuffer: an off-screen surface that is drawn on both in memory and through a device
// context. It keeps its memory for the next frame while that is big enough. One thread.
//
// Drawing of the two kinds is kept in order by `flush`: after drawing through the context and
// before the next pixel is touched in memory.
#pragma once

#include "app/GuiPixelView.h"
#include "win/WinGdi.h"

namespace AppLayer {

class GuiPixelBuffer {
 public:
  GuiPixelBuffer() = default;
  ~GuiPixelBuffer();
  GuiPixelBuffer(const GuiPixelBuffer&) = delete;
  GuiPixelBuffer& operator=(const GuiPixelBuffer&) = delete;

  // Makes it at least so big; what stood on it may be lost. False for an empty size and when the
  // platform has no memory: nothing may be drawn then.
  bool reserve(HDC target, WinSize size);
  [[nodiscard]] HDC dc() const { return dc_.get(); }
  [[nodiscard]] GuiPixelView view() const { return {pixels_, size_, capacity_.width}; }
  static void flush() { GdiFlush(); }
  void copyTo(HDC target) const; // to (0, 0), as much as was reserved

  static constexpr uint32_t pixelOf(COLORREF colour) { // 0x00RRGGBB
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
  }

 private:
  WinLayer::WinMemoryDcOwner dc_;
  WinLayer::WinBitmapOwner bitmap_;
  HGDIOBJ oldBitmap_ = nullptr;
  uint32_t* pixels_ = nullptr;
  WinSize size_;
  WinSize capacity_;
};

} // namespace AppLayer
