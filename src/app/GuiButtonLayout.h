// GuiButtonLayout: where the buttons of the box stand. Pure arithmetic in pixels over the units of
// a JobButtonList, whose fields width, height and rectangle it fills and reads; rectangles are
// relative to the box. Divisions truncate.
//
// Neighbours share an edge: the one before wins there. A hidden unit has no extent in the direction
// of the layout, but can be hit on the line on which it lies.
#pragma once

#include "job/JobButtonList.h"
#include "win/WinRect.h"

#include <functional>

namespace AppLayer {

using JobLayer::JobButtonList;
using JobLayer::JobButtonUnit;
using RawLayer::RawString;
using WinLayer::WinPoint;
using WinLayer::WinRect;
using WinLayer::WinSize;

// The extent of a title in the box's font.
using GuiTextMeasure = std::function<WinSize(const RawString& text)>;

class GuiButtonLayout {
 public:
  static constexpr int32_t Margin = 4;  // between a face and its content, on all four sides
  static constexpr int32_t IconGap = 3; // between an icon and its title

  bool horizontal = false;
  int32_t iconSize = 16;
  int32_t separator = 7; // extent of a separator
  int32_t align = 1;     // of a content in its face: 0 left, 1 centre, 2 right

  // Where the parts of a content stand; a part that is not there is empty.
  struct Content {
    WinRect icon;
    WinRect text;
  };

  // Fills width and height of a unit: of its title, its icon, or both. A unit that shows neither
  // keeps what it had.
  void measureUnit(JobButtonUnit& unit, const GuiTextMeasure& measure) const;
  void measureAll(const JobButtonList& buttons, const GuiTextMeasure& measure) const;
  // Fills the rectangles from the widths; gives the size of the whole.
  WinSize arrange(const JobButtonList& buttons) const;
  // The rectangle from (0, 0) that the units' rectangles cover without a gap; empty when there is a
  // gap, as there is in a list that was changed and not laid out again.
  static WinSize seamlessSize(const JobButtonList& buttons);
  // The first unit whose rectangle holds the point, all four edges included; -1 for none.
  static int32_t hitTest(const JobButtonList& buttons, WinPoint point);
  [[nodiscard]] Content contentOf(const JobButtonUnit& unit) const;

  // By the unit's flags: it has an icon to draw, a title to draw.
  static bool showsIcon(const JobButtonUnit& unit);
  static bool showsTitle(const JobButtonUnit& unit);
  static WinRect rectOf(const JobButtonUnit& unit);

 private:
  [[nodiscard]] WinSize extentOf(const JobButtonUnit& unit, int32_t columnWidth) const;
};

} // namespace AppLayer
