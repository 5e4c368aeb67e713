// JobWindowContext: what the commands of a run know of the windows. One record for the process;
// main thread only, but for `menuOpen`, which any thread may read.
#pragma once

#include "job/JobDialogs.h"
#include "raw/RawLock.h"

namespace WinLayer {
class WinDialog;
}

namespace JobLayer {

class JobWindowContext {
public:
  WinLayer::WinDialog* dialog = nullptr; // the main dialog; null until it exists
  JobRectangle rectangle;                // screen rectangle of what was pressed
  RawLayer::RawAutoFlag::BooleanUnit menuOpen; // a popup menu is tracked

  static JobWindowContext& instance();
  // Who shows dialogs; the caller keeps `implementation` alive, null brings the stand-in back.
  void installDialogs(JobDialogs* implementation);
  JobDialogs& dialogs();

private:
  JobDialogs* dialogs_ = nullptr;
};

} // namespace JobLayer
