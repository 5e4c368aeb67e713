// WinHintButton: a button with a menu of hints that fills an edit box.
//
//   hint.Connect(edit, 0x1102, 0x1103);
//   hint.SetLabels(field.hints);
//   ...
//   hint.ShowMenu(true);         // as when the edit box asks for it by a key
//
// The edit box must outlive the button. Belongs to the thread of its dialog.
#pragma once

#include "raw/RawLabelList.h"
#include "raw/RawParameterList.h"
#include "win/WinButton.h"
#include "win/WinMenuHandle.h"

#include <optional>

namespace WinLayer {

class WinEditBox;

class WinHintButton : public WinButton {
 public:
  WinEditBox* edit = nullptr;
  uint32_t chosenCommand = 0;    // the code posted when an entry has been chosen; 0 none
  RawLayer::RawLabelList labels; // a label "-" is a separator line
  bool caseSensitive = false;    // how the entry is found that the edit box shows already

  WinHintButton();
  // Without a title it shows an arrow. `pressCode` is posted by each press, `chosenCode` when an
  // entry has gone into the edit box.
  void Connect(WinEditBox& editBox, uint32_t pressCode, uint32_t chosenCode);
  // A label for each unit: its key, standing for its value where it has one. Compares as the list.
  void SetLabels(const RawLayer::RawParameterList& hints);
  // Opens the menu below the button and returns when it has closed; nothing without labels. The
  // dialog may be gone by then.
  void ShowMenu(bool marksFirst); // the first entry as the default one

  int32_t OnChildNotify(uint32_t code) override;
  int32_t OnMenuCommand(uint32_t entry, LPARAM lParam) override; // ids from 1
  void MeasureText(WinRect& area) override;
  void DrawContent(HDC dc, const WinRect& rect, uint32_t flags) override;

 protected:
  bool onKey(WPARAM key) override;

 private:
  [[nodiscard]] WinMenuHandle builtMenu() const;
  void drawArrow(HDC dc, const WinRect& rect) const;

  std::optional<WinMenuHandle> menu_; // from the first opening on
};

} // namespace WinLayer
