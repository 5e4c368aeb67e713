// WinView: base of every widget and dialog. One object stands for one platform window and holds
// its text, style, font, rectangle and hooks; it dispatches platform messages to virtual
// operations, measures itself from its content, and follows a parent rectangle by anchors.
//
// A view belongs to the thread that runs its window. Until the window stands, and when its creation
// failed, operations on it do nothing. Views own nothing of the data that they show; dialogs do not
// own their child views, which are members of them or outlive them.
#pragma once

#include "win/WinCodes.h"
#include "win/WinText.h"
#include "win/WinViewParts.h"

namespace WinLayer {

// Private window messages.
inline constexpr UINT WinMessageRemind = 0x8000;     // a blocked dialog, of its modal one
inline constexpr UINT WinMessageShow = 0x8001;       // a dialog
inline constexpr UINT WinMessageMoveFocus = 0x8002;  // wParam the view's identifier, lParam 1 back
inline constexpr UINT WinMessageMenuResult = 0x8003; // wParam the entry id

class WinView : public WinViewResize,
                public WinViewStyle,
                public WinViewAction,
                public WinViewFitting {
 public:
  WinView() = default;
  // Destroys the window of a child that still stands, and takes it off its dialog.
  ~WinView() override;
  WinView(const WinView&) = delete;
  WinView& operator=(const WinView&) = delete;

  // Slot order behind the title operations: OnMessage to OnReserved.
  //
  // The view's own answer to a message; WinNotHandled leaves it to the platform. The base answers
  // WM_COMMAND, the menu result, and the Tab and Esc keys.
  virtual int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  virtual int32_t OnChildNotify(uint32_t code); // to the owner's OnCommand; -1 without an owner
  virtual int32_t OnMenuCommand(uint32_t entry, LPARAM lParam); // -1
  // Sees a message of this view before the loop does; true ends it there.
  virtual bool PreTranslate(const MSG& message, LRESULT& result);
  virtual void OnCreated() {}                              // the window stands
  virtual void OnDestroyed() {}                            // the window is about to go
  virtual int32_t OnCommand(WinView& view, uint32_t code); // of a child; 0
  // By how many pixels the window may shrink and grow; true when it changed them.
  virtual bool OnMinMaxInfo(WinSize& shrink, WinSize& growth);
  virtual void OnResized() {} // the client has a new size
  virtual void OnShowState(int32_t oldState, int32_t newState);
  virtual void OnReserved() {}

  // The title's rectangle in the view's font, from (0, 0). An empty title has no width and the
  // height of a line.
  void MeasureText(WinRect& rect) override;
  void AdjustFrame(WinRect& rect) override;

  // Creates the platform window as a child of the dialog, with the view's class, title, style,
  // rectangle and identifier.
  void Create(WinDialog& dialog);
  // OnMessage, then the hooks until one answers: the result is the hook's, else the view's own.
  int32_t Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  void addHook(WinViewHook& hook); // behind those that stand; the hook stays the caller's
  void removeHook(WinViewHook& hook);

  void invalidate() const;                  // all of it, without erasing
  void moveWindow(bool repaint) const;      // to the view's rectangle
  [[nodiscard]] WinRect clientRect() const; // from (0, 0); empty without a window
  [[nodiscard]] WinRect windowRect() const; // in screen coordinates
  // Posts or sends a WM_COMMAND of this view with the code, to its own window.
  void postCode(uint32_t code) const;
  LRESULT sendCode(uint32_t code) const; // 0 without a window
  // Gives the focus to the owner's next or previous child that takes it.
  void passFocus(bool backwards) const;

 private:
  static LRESULT CALLBACK SubclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR view);
  void leaveOwner();
  [[nodiscard]] bool isBlocked() const; // by a modal dialog over the owner
};

} // namespace WinLayer
