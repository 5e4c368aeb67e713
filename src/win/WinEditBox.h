// WinEditBox: the toolkit's own text editor. It stores the text, paints it, blinks its own caret
// and talks to the input method; the platform's edit control is not used.
//
//   WinEditBox edit;
//   edit.SetTitle("Alice"_text);
//   edit.setReadOnly(true);
//   edit.FitToContent();
//   dialog.addChild(edit);      // in OnCreateChildren
//   ...
//   const RawString entered = edit.GetTitle();
//
// The text is the view's title: GetTitle gives it in EncodingUtf8; SetTitle, AppendTitle and
// ClearTitle replace it without a step of undo. The codes WinEditEnter to WinEditDropped come to
// the owner's OnCommand, posted; WinEditChanged also after SetTitle. Flags of the box are set
// through `info` before the window stands, read-only at any time. Main thread.
#pragma once

#include "win/WinEditBoxBasic.h"
#include "win/WinEditBoxDraw.h"
#include "win/WinEditBoxInput.h"
#include "win/WinPlaneBox.h"

#include <shellapi.h>

namespace WinLayer {

// The rooms of an edit box: they stand before the box that they belong to.
class WinEditBoxRooms {
 protected:
  explicit WinEditBoxRooms(WinEditBox& box) : draw_(box), input_(box) {}
  WinEditBoxDraw draw_;
  WinEditBoxInput input_;
};

class WinEditBox : private WinEditBoxRooms, public WinPlaneBox, public WinEditBoxBasic {
 public:
  static constexpr UINT_PTR CaretTimer = 600;
  static constexpr UINT CaretPeriod = 600;        // milliseconds
  static constexpr COLORREF OpenFrame = 0x80FF80; // the input method is open
  static constexpr COLORREF MarkedFrame = 0x4040FF;
  static constexpr COLORREF FocusFrame = 0xFFC0A0;

  using RawString = RawLayer::RawString;
  COLORREF background = GetSysColor(COLOR_WINDOW);
  COLORREF textColour = windowTextColour();

  WinEditBox();

  void ClearTitle() override;
  void SetTitle(const RawString& text) override;
  void AppendTitle(const RawString& text) override;
  // Each is cut back to the length of the text. Scrolls the caret into view.
  void setSelection(int32_t anchor, int32_t caret);
  void setReadOnly(bool value);
  [[nodiscard]] WinRect caretPlace(); // in pixels of the client, whether it shows or not

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnMenuCommand(uint32_t entry, LPARAM lParam) override; // a WinEditBoxEntry
  virtual void OnFocusIn();
  virtual void OnFocusOut();
  void MeasureText(WinRect& area) override;
  virtual void PaintFrame(HDC dc, const WinRect& client); // and the background
  virtual void ScrollToCaret();
  // Opens the menu at a point of the client; what is chosen comes to OnMenuCommand. The dialog may
  // be gone when it returns.
  virtual void OnContextMenu(WinPoint point);

  void OnCreated() override;
  void DrawContent(HDC dc, WinPoint place) override;
  void MeasureContent(HDC dc) override;
  void AfterMeasure() override;

 protected:
  void tellParent(uint32_t code) override;

 private:
  friend class WinEditBoxDraw;
  friend class WinEditBoxInput;
  int32_t onKeyDown(WPARAM key);
  int32_t onMouse(UINT message, LPARAM lParam);
  void onPress(WinPoint point);
  void onDrag(WinPoint point);
  void endDrag();
  void onContextKey();
  void onDrop(HDROP drop);
  void onTextChanged();
  void takeOffsets(); // of the surface, for the text
  void afterInput();  // shows what an operation of the user has done
  void blinkCaret();

  bool isCaretShown_ = false;
};

} // namespace WinLayer
