#include "IconPeer.h"

#include "win/WinGdi.h"

#include <algorithm>

namespace IconPeer {

namespace {

// A context in memory over a bitmap of 32 bits.
class Surface {
 public:
  explicit Surface(int32_t side) : dc_(CreateCompatibleDC(nullptr)) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = side;
    info.bmiHeader.biHeight = -side;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap_.reset(CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    pixels_ = static_cast<uint32_t*>(bits);
    old_ = SelectObject(dc_.get(), bitmap_.get());
  }
  Surface(const Pixels& pixels, int32_t side) : Surface(side) {
    std::copy(pixels.begin(), pixels.end(), pixels_);
  }
  ~Surface() { SelectObject(dc_.get(), old_); }
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  [[nodiscard]] HDC get() const { return dc_.get(); }
  [[nodiscard]] HBITMAP bitmap() const { return bitmap_.get(); }

 private:
  WinLayer::WinMemoryDcOwner dc_;
  WinLayer::WinBitmapOwner bitmap_;
  uint32_t* pixels_ = nullptr;
  HGDIOBJ old_ = nullptr;
};

class Stretch : public Work {
 public:
  Stretch(const Pixels& pixels, int32_t from, int32_t to)
      : source_(pixels, from), target_(to), from_(from), to_(to) {
    SetStretchBltMode(target_.get(), HALFTONE);
  }
  void run() override {
    StretchBlt(target_.get(), 0, 0, to_, to_, source_.get(), 0, 0, from_, from_, SRCCOPY);
    GdiFlush();
  }

 private:
  Surface source_;
  Surface target_;
  int32_t from_;
  int32_t to_;
};

class Blend : public Work {
 public:
  Blend(const Pixels& pixels, int32_t side) : source_(pixels, side), target_(side), side_(side) {}
  void run() override {
    const BLENDFUNCTION how{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    AlphaBlend(target_.get(), 0, 0, side_, side_, source_.get(), 0, 0, side_, side_, how);
    GdiFlush();
  }

 private:
  Surface source_;
  Surface target_;
  int32_t side_;
};

} // namespace

const char* scalerName() {
  return "StretchBlt";
}
const char* blenderName() {
  return "AlphaBlend";
}
double scalerGoal() {
  return 1.0;
}
double blenderGoal() {
  return 1.0 / 7;
}

std::unique_ptr<Work> makeScaler(const Pixels& pixels, int32_t from, int32_t to) {
  return std::make_unique<Stretch>(pixels, from, to);
}
std::unique_ptr<Work> makeBlender(const Pixels& pixels, int32_t side) {
  return std::make_unique<Blend>(pixels, side);
}

void* makeContext(int32_t side) {
  static const Surface surface(side);
  return surface.get();
}

void* makeIcon(const Pixels& pixels, int32_t side) {
  const Surface colours(pixels, side);
  const WinLayer::WinBitmapOwner mask(CreateBitmap(side, side, 1, 1, nullptr));
  ICONINFO info{TRUE, 0, 0, mask.get(), colours.bitmap()};
  static WinLayer::WinIconOwner icon;
  icon.reset(CreateIconIndirect(&info));
  return icon.get();
}

} // namespace IconPeer
