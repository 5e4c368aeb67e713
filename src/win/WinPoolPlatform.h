// The platform's calls under WinBitmapPool. Icons and device contexts are the platform's handles;
// the caller keeps them. One thread at a time.
#pragma once

#include "win/WinRect.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace WinLayer {

// The pixels of one icon as the platform has them. The arrays are kept for the next icon.
class WinIconPixels {
 public:
  // More pixels than this make no icon: 64 MB in each array.
  static constexpr int64_t MostPixels = 16 * 1024 * 1024;

  // Makes the arrays fit and takes the size; false when there are no pixels in it, or too many.
  bool setSize(WinSize newSize);
  bool reserve(int64_t pixels); // what they hold is lost when they grow
  void release();

  [[nodiscard]] WinSize size() const { return size_; }
  [[nodiscard]] std::size_t count() const {
    return static_cast<std::size_t>(size_.width) * static_cast<std::size_t>(size_.height);
  }
  [[nodiscard]] uint32_t* colours() const { return colorScratch_.get(); }
  [[nodiscard]] uint32_t* mask() const { return maskScratch_.get(); }

 private:
  WinSize size_;
  std::unique_ptr<uint32_t[]> colorScratch_;
  std::unique_ptr<uint32_t[]> maskScratch_;
  int64_t scratchCapacity_ = 0; // pixels in each
};

// Reads the icon's colours and mask, rows from the top. A mask of 0 is where the icon shows. False
// when it is no icon or cannot be read.
bool readIconPixels(void* icon, WinIconPixels& pixels);

// A scratch surface in memory that a part of a device context is copied to and from.
class WinPoolSurface {
 public:
  static std::unique_ptr<WinPoolSurface> make();
  virtual ~WinPoolSurface() = default;

  // Makes it at least so big, which may lose what is on it; false when it cannot be made.
  virtual bool reserve(void* context, WinSize size) = 0;
  [[nodiscard]] virtual uint32_t* row(int32_t y) = 0; // after `reserve`
  // Copies the context's rectangle to the left top of the surface, scaled to `size`; false when
  // it could not be copied.
  virtual bool take(void* context, const WinRect& from, WinSize size) = 0;
  // Copies the left top of the surface to the context's rectangle, scaled to it.
  virtual void give(void* context, const WinRect& to, WinSize size) = 0;
};

} // namespace WinLayer
