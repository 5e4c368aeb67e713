// WindowMetrics: the measures of the windows, read once from the gui profile, and the descriptions
// of the three fonts. Sizes are pixels. Written by the main thread at start-up, read-only after.
#pragma once

#include "raw/RawParameterList.h"

#include <cstdint>

namespace WinLayer {

class WindowMetrics {
 public:
  int32_t margin = 4;
  int32_t frameMargin = 2;
  int32_t captionHeight = 12;
  int32_t buttonSeparator = 7;
  int32_t selectorSeparator = 5;
  int32_t baseIconSize = 32; // the system's large icon size, set before the profile is read
  int32_t buttonIconSize = 16;
  int32_t menuIconSize = 16;
  // The keys of a font section; empty for the system's own font.
  RawLayer::RawParameterList windowFont;
  RawLayer::RawParameterList menuFont; // the window font's, unless it has a section of its own
  RawLayer::RawParameterList tipFont;

  static WindowMetrics& instance();
};

} // namespace WinLayer
