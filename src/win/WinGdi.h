// Owners of the platform's drawing objects and scopes of their use: no path leaks a handle.
// Everything here belongs to one thread.
#pragma once

#include "win/WinPlatform.h"
#include "win/WinRect.h"

namespace WinLayer {

template <class H>
struct WinGdiCloser {
  using Handle = H;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DeleteObject(handle); }
};
using WinFontOwner = RawLayer::RawOwner<WinGdiCloser<HFONT>>;
using WinBrushOwner = RawLayer::RawOwner<WinGdiCloser<HBRUSH>>;
using WinPenOwner = RawLayer::RawOwner<WinGdiCloser<HPEN>>;
using WinBitmapOwner = RawLayer::RawOwner<WinGdiCloser<HBITMAP>>;
using WinRegionOwner = RawLayer::RawOwner<WinGdiCloser<HRGN>>;

struct WinIconCloser {
  using Handle = HICON;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DestroyIcon(handle); }
};
using WinIconOwner = RawLayer::RawOwner<WinIconCloser>;

struct WinMenuCloser {
  using Handle = HMENU;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DestroyMenu(handle); }
};
using WinMenuOwner = RawLayer::RawOwner<WinMenuCloser>;

struct WinMemoryDcCloser {
  using Handle = HDC;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DeleteDC(handle); }
};
using WinMemoryDcOwner = RawLayer::RawOwner<WinMemoryDcCloser>;

// The device context of a window (null: the screen) for the length of a scope.
class WinWindowDc {
 public:
  explicit WinWindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
  ~WinWindowDc() {
    if (dc_) ReleaseDC(window_, dc_);
  }
  WinWindowDc(const WinWindowDc&) = delete;
  WinWindowDc& operator=(const WinWindowDc&) = delete;
  [[nodiscard]] HDC get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// An object selected into a context for the length of a scope.
class WinSelect {
 public:
  WinSelect(HDC dc, HGDIOBJ object) : dc_(dc), old_(object ? SelectObject(dc, object) : nullptr) {}
  ~WinSelect() {
    if (old_) SelectObject(dc_, old_);
  }
  WinSelect(const WinSelect&) = delete;
  WinSelect& operator=(const WinSelect&) = delete;

 private:
  HDC dc_;
  HGDIOBJ old_;
};

inline RECT platformRect(const WinRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}
inline WinRect rectOf(const RECT& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

// Fills and frames with a solid colour, right and bottom edge excluded, without a brush left
// behind. An empty rectangle draws nothing.
void fillRect(HDC dc, const WinRect& rect, COLORREF colour);
void frameRect(HDC dc, const WinRect& rect, COLORREF colour); // one pixel wide, inside

// A surface in memory of the size of a rectangle, to be copied to its context in one step. Keeps
// its bitmap for the next use while it is big enough.
class WinOffscreen {
 public:
  WinOffscreen() = default;
  ~WinOffscreen();
  WinOffscreen(const WinOffscreen&) = delete;
  WinOffscreen& operator=(const WinOffscreen&) = delete;

  // The context to draw into, with the rectangle's left top at (0, 0); what stood there before is
  // still there. Null for an empty size or when the platform has no memory: then `end` must not
  // be called.
  HDC begin(HDC target, WinSize size);
  // Copies the surface to `place` in the target that `begin` was given.
  void end(WinPoint place);

 private:
  HDC target_ = nullptr;
  WinSize size_;
  WinSize capacity_;
  WinBitmapOwner bitmap_;
  WinMemoryDcOwner dc_;
  HGDIOBJ oldBitmap_ = nullptr;
};

} // namespace WinLayer
