// GuiDialogs: how scripts reach the user's eyes: reports and questions in info dialogs, forms in
// input dialogs, popup menus. All open beside the main dialog, or beside what was pressed; reports
// open in the middle of the screen where there is no main dialog.
//
// One for the process, installed at start-up. Main thread; each call returns when the user has
// answered, and the main dialog may be gone by then.
#pragma once

#include "job/JobDialogs.h"

namespace AppLayer {

class GuiDialogs : public JobLayer::JobDialogs {
 public:
  using RawString = RawLayer::RawString;

  // Makes this the implementation behind the scripts' dialogs. Menus and dialogs open above or
  // below a horizontal launcher, else at its sides.
  static void install(bool isHorizontal);

  void showReport(const RawString& caption, const RawString& text) override;
  void postToMainDialog(uint32_t message, uintptr_t first, intptr_t second) override;
  int32_t ask(const RawString& message, const RawLayer::RawStringList& labels) override;
  bool input(WinLayer::WinInputParameterList& fields) override;
  uint32_t trackMenu(const WinLayer::WinMenuHandle& menu,
                     const JobLayer::JobRectangle& rectangle) override;

 private:
  bool isHorizontal_ = false;
};

} // namespace AppLayer
