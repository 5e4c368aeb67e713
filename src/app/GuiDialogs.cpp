#include "app/GuiDialogs.h"

#include "app/GuiMenuRules.h"
#include "app/GuiReport.h"
#include "job/JobWindowContext.h"
#include "win/WinInfoDialog.h"
#include "win/WinInputDialog.h"
#include "win/WinMonitorList.h"

namespace AppLayer {

using WinLayer::WinDialog;
using WinLayer::WinInfoDialog;
using WinLayer::WinInputDialog;
using WinLayer::WinMonitorList;
using WinLayer::WinRect;

namespace {

constexpr int32_t FirstAnswer = 1;

// Null when it does not exist or its window has gone.
WinDialog* mainDialog() {
  WinDialog* const dialog = JobLayer::JobWindowContext::instance().dialog;
  return dialog && dialog->window ? dialog : nullptr;
}

int32_t runBeside(WinDialog& main, WinDialog& dialog, bool isHorizontal) {
  WinMonitorList monitors;
  dialog.set(monitors.PlaceBeside(main.windowRect(), dialog.rect, isHorizontal));
  return dialog.RunModal(&main);
}

} // namespace

void GuiDialogs::install(bool isHorizontal) {
  static GuiDialogs dialogs;
  dialogs.isHorizontal_ = isHorizontal;
  JobLayer::JobWindowContext::instance().installDialogs(&dialogs);
}

void GuiDialogs::showReport(const RawString& caption, const RawString& text) {
  GuiReport::Show(caption, text, isHorizontal_);
}

void GuiDialogs::postToMainDialog(uint32_t message, uintptr_t first, intptr_t second) {
  const WinDialog* const main = mainDialog();
  if (!main) return;
  const bool isCommand = message == MessageCommand;
  PostMessageW(main->window, message, isCommand ? first | main->identifier : first, second);
}

int32_t GuiDialogs::ask(const RawString& message, const RawLayer::RawStringList& labels) {
  WinDialog* const main = mainDialog();
  if (!main) return 0;
  RawLayer::RawLabelList answers;
  int32_t number = FirstAnswer;
  for (const RawString& label : labels.elements()) answers.add(label, number++);
  WinInfoDialog dialog;
  dialog.Prepare(main->GetTitle(), message, answers, WinInfoDialog::IconQuestion, FirstAnswer,
                 main->windowRect());
  return runBeside(*main, dialog, isHorizontal_);
}

bool GuiDialogs::input(WinLayer::WinInputParameterList& fields) {
  WinDialog* const main = mainDialog();
  if (!main) return false;
  WinInputDialog form;
  form.Prepare(main->windowRect(), main->GetTitle(), fields);
  return runBeside(*main, form, isHorizontal_) == WinInputDialog::Finished;
}

uint32_t GuiDialogs::trackMenu(const WinLayer::WinMenuHandle& menu,
                               const JobLayer::JobRectangle& rectangle) {
  const WinDialog* const main = mainDialog();
  if (!main) return 0;
  const WinRect pressed{rectangle.left, rectangle.top, rectangle.right, rectangle.bottom};
  WinMonitorList monitors;
  const WinLayer::WinSide side = monitors.ChooseSide(pressed, isHorizontal_);
  const GuiMenuRules::Placement place = GuiMenuRules::placement(side, pressed);
  return static_cast<uint32_t>(TrackPopupMenuEx(static_cast<HMENU>(menu.menu()), place.flags,
                                                place.x, place.y, main->window, nullptr));
}

} // namespace AppLayer
