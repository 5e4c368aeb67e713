// WinFont: a font handle with its description. Any thread may use a font that stands; only its
// owner changes it. A font that the platform refuses has a null handle, and its views get the
// platform's.
#pragma once

#include "raw/RawParameterList.h"
#include "win/WinGdi.h"

namespace WinLayer {

class WinFont {
 public:
  LOGFONTW description{};

  WinFont();                                                 // height 12, the default character set
  [[nodiscard]] HFONT handle() const { return font_.get(); } // null before create
  void create(); // from the description; the old handle goes
  // The 14 keys of a font section ("Height" to "FaceName"); missing keys keep what stood.
  void read(const RawLayer::RawParameterList& parameters);
  void write(RawLayer::RawParameterList& parameters) const;
  void setSystemDefault(); // the platform's own font for windows

  // The three fonts of the windows, made from WindowMetrics at first use by whichever thread: the
  // gui profile must have been read by then.
  static WinFont& window();
  static WinFont& menu();
  static WinFont& tip();

 private:
  WinFontOwner font_;
};

} // namespace WinLayer
