// WinFont: a font handle with its description. Read by any thread once made; changed by its owner.
#pragma once

#include "raw/RawParameterList.h"
#include "win/WinGdi.h"

namespace WinLayer {

class WinFont {
 public:
  LOGFONTW description{};

  WinFont();
  [[nodiscard]] HFONT handle() const { return font_.get(); } // null before create
  void create(); // from the description; the old handle goes
  // The 14 keys of a font section ("Height" to "FaceName"); missing keys keep what stood.
  void read(const RawLayer::RawParameterList& parameters);
  void write(RawLayer::RawParameterList& parameters) const;
  void setSystemDefault(); // the platform's own font for windows

  // The three fonts of the windows, made from WindowMetrics at first use.
  static WinFont& window();
  static WinFont& menu();
  static WinFont& tip();

 private:
  WinFontOwner font_;
};

} // namespace WinLayer
