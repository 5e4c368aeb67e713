// GuiReport: an error report on the screen: an info dialog with the exclamation icon and one "OK".
#pragma once

#include "raw/RawString.h"

namespace AppLayer {

class GuiReport {
 public:
  // Returns when the user has answered. Over the main dialog the report is modal and stands on the
  // side with more room, above or below a horizontal launcher; without one it stands in the middle
  // of the work area. The main dialog may be gone afterwards. Main thread.
  static void Show(const RawLayer::RawString& caption, const RawLayer::RawString& text,
                   bool isHorizontal);
};

} // namespace AppLayer
