// GuiProfileFile: the profile of the windows' look: language selection, measures, fonts, and
// (written by the main dialog) the window's place. One for the process, main thread.
#pragma once

#include "raw/RawProfile.h"
#include "win/WindowMetrics.h"

namespace AppLayer {

class GuiProfileFile : public RawLayer::RawProfile {
 public:
  static GuiProfileFile& instance();
  // Loads the language that the user selected, the measures and the fonts. What is missing keeps
  // its default; menu and tip font follow the window font until they have sections of their own.
  void load(const RawLayer::RawString& file);

 private:
  void loadLanguage();
  void loadMetrics(WinLayer::WindowMetrics& metrics);
  void loadFonts(WinLayer::WindowMetrics& metrics);
};

} // namespace AppLayer
