// WinButton: the plain push button of dialogs, drawn by WinButtonDraw. A press (mouse, Enter,
// Space) comes to the owner's OnCommand with WinCodePress, and then, where a command is set, with
// the command as its code.
//
//   WinButton finish;
//   finish.SetUp("Finish"_text, WinButtonDraw::CornersAll, 0x1101);
//   finish.FitToContent();       // windowWidth, windowHeight
//   finish.rect = ...;
//   dialog.addChild(finish);     // in OnCreateChildren
//
// Belongs to the thread of its dialog.
#pragma once

#include "win/WinButtonFaces.h"
#include "win/WinView.h"

namespace WinLayer {

class WinButton : public WinView {
 public:
  uint32_t drawFlags = WinButtonDraw::CornersAll; // corners, frames, Toggle
  bool focused = false;
  bool checked = false; // the state of a toggle
  uint32_t command = 0; // the code that a press posts; 0 none

  WinButton();
  // Each "\n" of two characters in the text becomes a line break.
  void SetUp(const RawString& text, uint32_t flags, uint32_t pressCommand);

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnChildNotify(uint32_t code) override;
  // What stands on the face: the title, by the fit flags. `rect` is the face less the margins,
  // already aligned from top to bottom.
  virtual void DrawContent(HDC dc, const WinRect& rect, uint32_t flags);

 protected:
  // What a key does; false leaves it to the platform.
  virtual bool onKey(WPARAM key);

 private:
  void paint(const DRAWITEMSTRUCT& item);
  WinButtonFaces faces_;
};

} // namespace WinLayer
