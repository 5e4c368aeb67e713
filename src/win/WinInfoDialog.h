// WinInfoDialog: the program's message box: an icon, a text and a row of answers, fitted to its
// content.
//
//   RawLayer::RawLabelList answers;
//   answers.add("Yes"_text, 1);
//   answers.add("No"_text, 2);
//   WinInfoDialog dialog;
//   dialog.Prepare(caption, text, answers, WinInfoDialog::IconQuestion, 1, owner.windowRect());
//   dialog.set(dialog.rect.movedTo(x, y));          // where the caller wants it elsewhere
//   const int32_t answer = dialog.RunModal(&owner); // the value of an answer, else 0
//
// Another process answers it by WM_COPYDATA with the value as a text. Belongs to the thread that
// runs it.
#pragma once

#include "raw/RawLabelList.h"
#include "win/WinDialog.h"
#include "win/WinImageBox.h"
#include "win/WinInfoLayout.h"
#include "win/WinRadioButton.h"
#include "win/WinStaticBox.h"

namespace WinLayer {

class WinInfoDialog : public WinDialog {
 public:
  // Icons of the system, by number.
  static constexpr uint16_t IconNone = 0;
  static constexpr uint16_t IconQuestion = 0x7F02;
  static constexpr uint16_t IconExclamation = 0x7F03;

  WinInfoDialog();
  // Lays the dialog out and centres it on a screen rectangle, within the work area. The answers end
  // with the list or at an empty label; `initial` is the value of the one that has the focus, the
  // first where there is no such value.
  void Prepare(const RawString& title, const RawString& text, const RawLayer::RawLabelList& answers,
               uint16_t iconId, int32_t initial, const WinRect& centreOn);

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnCommand(WinView& view, uint32_t code) override;
  void OnCreated() override;
  void OnCreateChildren() override;
  void OnResized() override;
  bool OnMinMaxInfo(WinSize& shrink, WinSize& growth) override;

 private:
  void loadIcon(uint16_t iconId);
  void place(const WinInfoLayout& layout);
  void finish(int32_t answer);

  WinFitRect upper_; // icon and text
  WinFitRect lower_; // the answers
  WinImageBox image_;
  WinStaticBox text_;
  RawLayer::RawLabelList answers_;
  int32_t value_ = 0; // what the row writes
  WinSelectorButton row_;
  WinIconHolder icon_;
  bool isFinished_ = false;
};

} // namespace WinLayer
