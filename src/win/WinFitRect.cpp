#include "win/WinFitRect.h"

namespace WinLayer {

void WinFitRect::set(const WinRect& newRect) {
  rect = newRect;
  saved = newRect;
}

void WinFitRect::bind(const WinFitRect* newParent, uint16_t newAnchors) {
  parent = newParent;
  anchors = newAnchors;
  parentRect = newParent ? newParent->rect : WinRect{};
}

namespace {

// The six changes of a rectangle. Centres are truncated on each rectangle before the difference.
struct Changes {
  int32_t left, right, centreX, top, bottom, centreY;

  Changes(const WinRect& now, const WinRect& then)
      : left(now.left - then.left), right(now.right - then.right),
        centreX((now.left + now.right) / 2 - (then.left + then.right) / 2), top(now.top - then.top),
        bottom(now.bottom - then.bottom),
        centreY((now.top + now.bottom) / 2 - (then.top + then.bottom) / 2) {}
};

struct AnchorRule {
  uint16_t anchor;
  int32_t WinRect::*side;
  int32_t Changes::*change;
};

constexpr AnchorRule anchorRules[] = {
    {WinFitRect::LeftByLeft, &WinRect::left, &Changes::left},
    {WinFitRect::LeftByRight, &WinRect::left, &Changes::right},
    {WinFitRect::LeftByCentre, &WinRect::left, &Changes::centreX},
    {WinFitRect::RightByRight, &WinRect::right, &Changes::right},
    {WinFitRect::RightByLeft, &WinRect::right, &Changes::left},
    {WinFitRect::RightByCentre, &WinRect::right, &Changes::centreX},
    {WinFitRect::TopByTop, &WinRect::top, &Changes::top},
    {WinFitRect::TopByBottom, &WinRect::top, &Changes::bottom},
    {WinFitRect::TopByCentre, &WinRect::top, &Changes::centreY},
    {WinFitRect::BottomByBottom, &WinRect::bottom, &Changes::bottom},
    {WinFitRect::BottomByTop, &WinRect::bottom, &Changes::top},
    {WinFitRect::BottomByCentre, &WinRect::bottom, &Changes::centreY},
};

} // namespace

bool WinFitRect::ApplyAnchors() {
  if (!parent) return false;
  const Changes changes(parent->rect, parentRect);
  for (const AnchorRule& rule : anchorRules)
    if (anchors & rule.anchor) rect.*rule.side += changes.*rule.change;
  parentRect = parent->rect;
  return true;
}

} // namespace WinLayer
