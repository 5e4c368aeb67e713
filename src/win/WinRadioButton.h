// WinRadioButtonBody: one view that draws a title and a row of joined cells, of which one is
// chosen. WinSelectorButton: the answer row of a dialog, where a choice ends the dialog.
//
//   int32_t answer = 1;
//   WinSelectorButton row;
//   row.SetUp(labels, answer);   // each label with its value
//   row.FitToContent();
//   row.rect = ...;
//   dialog.addChild(row);        // in OnCreateChildren
//   ... OnCommand(row, WinSelectorButton::Chosen): `answer` holds the value of a cell
//
// The value belongs to the caller and must outlive the view. Belongs to the thread of its dialog.
#pragma once

#include "raw/RawArray.h"
#include "raw/RawLabelList.h"
#include "win/WinButtonFaces.h"
#include "win/WinView.h"

namespace WinLayer {

class WinRadioButtonBody : public WinView {
 public:
  int32_t* value = nullptr;            // what the view edits; null: nothing
  const bool* enabledCells = nullptr;  // one for each cell, the caller's; null: all enabled
  int32_t current = 0;                 // index of a cell
  RawLayer::RawLabelList cells;        // the ring is shared with the caller's list
  RawLayer::RawArrayC<WinSize> widths; // of the cells, from MeasureText
  int32_t firstLeft = 0;               // where the first cell begins, right of the title
  bool pressed = false;                // the current cell is held down
  uint32_t command = 0;                // the code that a choice posts; 0 none
  bool readOnly = false;               // shows the value and takes none
  uint32_t checkedFrames = 0;          // FrameLeft and so on, of the current cell without focus

  WinRadioButtonBody();
  // Takes the cells; the current one is the first whose value is `edited`, else the first of all.
  void SetUp(const RawLayer::RawLabelList& labels, int32_t& edited);

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnChildNotify(uint32_t code) override;
  // The title, then each cell as wide as its label and margins. Fitted, the row fills the view.
  void MeasureText(WinRect& area) override;

  [[nodiscard]] WinRect cellRect(int32_t index) const; // in the client
  [[nodiscard]] int32_t cellAt(int32_t x) const;       // -1 beside the row
  [[nodiscard]] bool isEnabled(int32_t index) const;   // false outside the row

 protected:
  // What a press of the left button, its release and a double click do, at a point of the client.
  virtual void onPress(WinPoint point);
  virtual void onRelease(WinPoint point);
  virtual void onDoubleClick(WinPoint point);
  // Writes the value of the current cell and posts the command.
  void choose();
  void writeValue();

 private:
  bool onKey(WPARAM key);
  void paint(const DRAWITEMSTRUCT& item);
  [[nodiscard]] uint32_t flagsOf(int32_t index, UINT itemState) const;

  WinButtonFaces faces_;
};

class WinSelectorButton : public WinRadioButtonBody {
 public:
  static constexpr uint32_t Chosen = 0x1100; // its command

  WinSelectorButton();
  // Another process chooses by WM_COPYDATA with a number as text.
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  // The number in the bytes of a WM_COPYDATA, up to their first zero; 0 when there is none.
  static int32_t numberIn(LPARAM copyData);

 protected:
  void onRelease(WinPoint point) override;
  void onDoubleClick(WinPoint point) override;
};

} // namespace WinLayer
