// GuiMenuRules: the arithmetic of script menus: where they open, how large an entry is, where icon
// and title stand in it, and in which colours. Pixels; colours have blue in the high byte.
#pragma once

#include "win/WinMonitorRules.h"
#include "win/WinRect.h"

#include <cstdint>

namespace AppLayer {

struct GuiMenuRules {
  // Where and how a popup menu is tracked.
  struct Placement {
    int32_t x = 0;
    int32_t y = 0;
    uint32_t flags = 0; // the platform's for tracking
  };
  // Beside what was pressed.
  static Placement placement(WinLayer::WinSide side, const WinLayer::WinRect& pressed);

  static constexpr int32_t Border = 2;
  static constexpr int32_t IconGap = 4;
  static constexpr uint32_t SelectedColour = 0x00FFD0C0;

  // The entry around a title of that size; `iconSize` is the side of its square icon. A separator
  // has half the height.
  static WinLayer::WinSize entrySize(WinLayer::WinSize title, int32_t iconSize, bool isSeparator);
  // The entry without its border, in which icon and title stand.
  static WinLayer::WinRect innerRect(const WinLayer::WinRect& entry);
  static WinLayer::WinRect iconRect(const WinLayer::WinRect& inner, int32_t iconSize);
  static WinLayer::WinRect titleRect(const WinLayer::WinRect& inner, int32_t iconSize);
  // Half way to white.
  static uint32_t normalColour(uint32_t menuColour);
};

} // namespace AppLayer
