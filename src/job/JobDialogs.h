// JobDialogs: the one way from this layer to the user's eyes. The upper layer installs an
// implementation at start-up; without one the system's message box serves. Main thread only; each
// call returns when the user has answered.
#pragma once

#include "job/JobFacts.h"
#include "raw/RawStringList.h"
#include "win/WinInputParameter.h"
#include "win/WinMenuHandle.h"

namespace JobLayer {

class JobDialogs {
 public:
  // What is posted to the main dialog: the platform's messages, and the code of a restart in the
  // high word of a command.
  static constexpr uint32_t MessageClose = 0x0010;
  static constexpr uint32_t MessageCommand = 0x0111;
  static constexpr uint32_t CommandRestart = 0x1100;

  virtual ~JobDialogs() = default;
  // A report with caption, text and an OK button.
  virtual void showReport(const RawString& caption, const RawString& text) = 0;

  // The rest is only called while there is a main dialog, and does nothing where there is none.
  // Posts a window message to it; whoever implements this adds its identifier to a command.
  virtual void postToMainDialog(uint32_t message, uintptr_t first, intptr_t second);
  // A question with one button for each label: the number of the one pressed, from 1; 0 when it
  // was closed otherwise.
  virtual int32_t ask(const RawString& message, const RawLayer::RawStringList& labels);
  // A form; each field's value is written. Whether it was finished.
  virtual bool input(WinLayer::WinInputParameterList& fields);
  // Tracks a popup menu beside the rectangle: the id chosen, or 0.
  virtual uint32_t trackMenu(const WinLayer::WinMenuHandle& menu, const JobRectangle& rectangle);
};

// The stand-in: the system's message box, and no main dialog.
class JobMessageBoxDialogs : public JobDialogs {
 public:
  void showReport(const RawString& caption, const RawString& text) override;
};

} // namespace JobLayer
