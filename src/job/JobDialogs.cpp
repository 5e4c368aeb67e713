#include "job/JobDialogs.h"

#include "raw/RawSystem.h"

namespace JobLayer {

void JobMessageBoxDialogs::showReport(const RawString& caption, const RawString& text) {
  RawLayer::messageBox(caption, text);
}

void JobMessageBoxDialogs::postToMainDialog(uint32_t, uintptr_t, intptr_t) {}

} // namespace JobLayer
