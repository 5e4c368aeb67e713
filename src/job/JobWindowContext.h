// JobWindowContext: what the commands of a run know of the windows. One record for the process;
// main thread only, but for `menuOpen`, which any thread may read.
#pragma once

#include "job/JobDialogs.h"
#include "job/JobExecutorPair.h"
#include "raw/RawLock.h"

namespace WinLayer {
class WinDialog;
}

namespace JobLayer {

class JobWindowContext {
 public:
  WinLayer::WinDialog* dialog = nullptr;       // the main dialog; null until it exists
  JobRectangle rectangle;                      // screen rectangle of what was pressed
  RawLayer::RawAutoFlag::BooleanUnit menuOpen; // a popup menu is tracked

  static JobWindowContext& instance();
  // Who shows dialogs; the caller keeps `implementation` alive, null brings the stand-in back.
  void installDialogs(JobDialogs* implementation);
  JobDialogs& dialogs();

  // Each does nothing without a main dialog. The label pressed, out of the button text split at
  // commas and slashes; empty when the dialog was closed otherwise.
  RawString AskDialog(const RawString& message, const RawString& buttons,
                      const JobExecutorPair& caller);
  // Whether the form was finished.
  bool InputDialog(WinLayer::WinInputParameterList& fields, const JobExecutorPair& caller);
  // The id chosen out of a popup menu beside the rectangle; 0 for none.
  uint32_t TrackMenu(WinLayer::WinMenuHandle& menu);
  void postToMainDialog(uint32_t message, uintptr_t first, intptr_t second);
  // A run from a press or a drop has ended. A close that it posted is posted again: a dialog of the
  // same run may have kept the main dialog from seeing it.
  void runEnded();

  // The labels of a button text: cut at every comma and slash outside double quotes; quotes around
  // a label go.
  static void splitLabels(const RawString& buttons, RawLayer::RawStringList& labels);

 private:
  JobDialogs* dialogs_ = nullptr;
  bool closePosted_ = false; // by the present run
};

} // namespace JobLayer
