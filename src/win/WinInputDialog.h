// WinInputDialog: a form of at most 20 rows of label, edit box and hint button below a prompt, with
// two buttons. What the user typed is in the `value` fields of the list.
//
//   WinInputDialog form;
//   form.Prepare(anchor, caption, fields);
//   form.rect = monitors.PlaceBeside(anchor, form.rect, isHorizontal);
//   const bool finished = form.RunModal(&mainDialog) == WinInputDialog::Finished;
//
// The list is shared with the caller's: both see the values. They are copied at every notification,
// so they are also there after a cancel. Belongs to the thread of its run.
#pragma once

#include "win/WinDialog.h"
#include "win/WinEditBox.h"
#include "win/WinHintButton.h"
#include "win/WinInputLayout.h"
#include "win/WinInputParameter.h"
#include "win/WinStaticBox.h"

namespace WinLayer {

class WinInputDialog : public WinDialog {
 public:
  static constexpr int32_t RowLimit = 20; // fields beyond it are not shown
  enum Result : int32_t { Cancelled = 0, Finished = 1 };
  enum Command : uint32_t {
    CommandCancel = 0x1100,
    CommandFinish = 0x1101,
    CommandHintPress = 0x1102,
    CommandHintChosen = 0x1103,
  };

  static void registerTexts(); // makes the dialogs' texts known to the catalogue

  WinInputDialog();
  // Fills the form and sets `rect`: the client as high as the form and a quarter of the work area
  // wide, over the middle of the rectangle. An empty title gives "Input text.". Once for each
  // object.
  void Prepare(const WinRect& rectangle, const RawString& title,
               const WinInputParameterList& fields);

  void OnCreated() override;
  int32_t OnCommand(WinView& view, uint32_t code) override;
  bool OnMinMaxInfo(WinSize& shrink, WinSize& growth) override; // not below what the form needs
  void OnResized() override;
  void OnCreateChildren() override;
  void MeasureText(WinRect& area) override; // both areas, with their margins

 private:
  void fillRow(int32_t row, const WinInputParameterUnit& unit);
  void measureParts();
  void placeParts();
  template <class Act>
  void forEachPart(Act act); // a view, those that have no window included
  void applyAnchors();
  void copyTexts();
  [[nodiscard]] int32_t rowOfEdit(const WinView& view) const; // -1 for another view
  void endOnce(Result outcome);

  WinStaticBox promptBox_;
  WinStaticBox labels_[RowLimit];
  WinEditBox edits_[RowLimit];
  WinHintButton hintButtons_[RowLimit]; // of a row without hints: not in the window
  WinButton finishButton_;
  WinButton cancelButton_;
  WinInputParameterList fields_;
  int32_t rowCount_ = 0;
  int32_t defaultWidth_ = 0; // of the client
  RawString prompt_;
  WinInputLayout layout_;
  WinFitRect fieldsArea_;
  WinFitRect buttonsArea_;
  bool hasEnded_ = false;
};

} // namespace WinLayer
