// JobDialogs: the one way from this layer to the user's eyes. The upper layer installs an
// implementation at start-up; without one the system's message box serves. Main thread only; each
// call returns when the user has answered.
#pragma once

#include "job/JobFacts.h"

namespace JobLayer {

class JobDialogs {
public:
  virtual ~JobDialogs() = default;
  // A report with caption, text and an OK button.
  virtual void showReport(const RawString& caption, const RawString& text) = 0;
  // Posts a window message to the main dialog; only called while there is one.
  virtual void postToMainDialog(uint32_t message, uintptr_t first, intptr_t second) = 0;
};

// The stand-in: the system's message box, and no main dialog.
class JobMessageBoxDialogs : public JobDialogs {
public:
  void showReport(const RawString& caption, const RawString& text) override;
  void postToMainDialog(uint32_t message, uintptr_t first, intptr_t second) override;
};

} // namespace JobLayer
