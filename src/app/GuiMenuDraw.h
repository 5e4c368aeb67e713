// GuiMenuDraw: measures and draws the entries of script menus, for the window procedure of the
// dialog that owns them. Entries are found by their item data, which is the id; 0 is a separator.
// Main thread, inside the tracking of a menu or not.
#pragma once

#include "win/WinPlatform.h"

namespace AppLayer {

class GuiMenuDraw {
 public:
  // Fills in width and height in pixels; leaves the record alone when there is no such entry.
  static void MeasureMenuItem(MEASUREITEMSTRUCT& item);
  // Draws the entry; nothing when there is no such entry.
  static void DrawMenuItem(const DRAWITEMSTRUCT& item);
};

} // namespace AppLayer
