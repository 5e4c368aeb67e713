#include "job/JobDialogs.h"

#include "raw/RawSystem.h"

namespace JobLayer {

void JobMessageBoxDialogs::showReport(const RawString& caption, const RawString& text) {
  RawLayer::messageBox(caption, text);
}

void JobDialogs::postToMainDialog(uint32_t, uintptr_t, intptr_t) {}

int32_t JobDialogs::ask(const RawString&, const RawLayer::RawStringList&) {
  return 0;
}

bool JobDialogs::input(WinLayer::WinInputParameterList&) {
  return false;
}

uint32_t JobDialogs::trackMenu(const WinLayer::WinMenuHandle&, const JobRectangle&) {
  return 0;
}

} // namespace JobLayer
