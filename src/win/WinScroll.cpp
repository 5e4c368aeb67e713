#include "win/WinScroll.h"

#include <algorithm>

namespace WinLayer {

namespace {

// What a message of a scroll bar asks for.
enum Step : uint32_t { LineBack, LineOn, PageBack, PageOn, ThumbSet, ThumbMoved, ToStart, ToEnd };

constexpr int32_t FastWheel = 3;

} // namespace

int32_t WinScrollAxis::limit() const {
  return std::max(content - view, 0);
}

int32_t WinScrollAxis::clamped(int32_t value) const {
  return std::clamp(value, 0, limit());
}

WinScrollBar WinScrollAxis::bar() const {
  return {std::max(content, offset + view) - 1, view, offset};
}

int32_t WinScrollAxis::afterStep(uint32_t code, int32_t tracked) const {
  switch (code) {
  case LineBack:
    return clamped(offset - lineStep);
  case LineOn:
    return clamped(offset + lineStep);
  case PageBack:
    return clamped(offset - view / 2);
  case PageOn:
    return clamped(offset + view / 2);
  case ThumbSet:
  case ThumbMoved:
    return clamped(tracked);
  case ToStart:
    return 0;
  case ToEnd:
    return limit();
  default:
    return clamped(offset);
  }
}

int32_t WinScrollAxis::afterWheel(int32_t delta, bool control, bool shift) const {
  if (control) delta *= FastWheel;
  if (shift) delta *= FastWheel;
  return clamped(offset - lineStep * delta / WinWheelNotch);
}

} // namespace WinLayer
