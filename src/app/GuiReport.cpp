#include "app/GuiReport.h"

#include "job/JobWindowContext.h"
#include "win/WinInfoDialog.h"
#include "win/WinMonitorList.h"

namespace AppLayer {

using namespace RawLayer::RawLiterals;
using WinLayer::WinInfoDialog;

namespace {

constexpr int32_t AnswerOk = 1;

WinLayer::WinRect workArea() {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  return WinLayer::rectOf(work);
}

} // namespace

void GuiReport::Show(const RawLayer::RawString& caption, const RawLayer::RawString& text,
                     bool isHorizontal) {
  WinLayer::WinDialog* const main = JobLayer::JobWindowContext::instance().dialog;
  const bool hasMain = main && main->window;
  const WinLayer::WinRect anchor = hasMain ? main->windowRect() : workArea();
  RawLayer::RawLabelList answers;
  answers.add("OK"_text, AnswerOk);
  WinInfoDialog dialog;
  dialog.Prepare(caption, text, answers, WinInfoDialog::IconExclamation, AnswerOk, anchor);
  if (hasMain) {
    WinLayer::WinMonitorList monitors;
    dialog.set(monitors.PlaceBeside(anchor, dialog.rect, isHorizontal));
  }
  dialog.RunModal(hasMain ? main : nullptr);
}

} // namespace AppLayer
