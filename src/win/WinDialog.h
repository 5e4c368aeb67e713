// WinDialog: a top-level view with a message loop, child views, and the window procedure that
// serves all of them. Modality is a blocking-window handle on the top-most dialog: the platform
// never sees a disabled owner. WinDialogThread runs a dialog on a thread of its own.
//
//   class Question : public WinDialog {   // className, style and rectangle set beforehand
//     void OnCreateChildren() override { addChild(answers_); }
//   };
//   Question question;
//   question.fitToClient({200, 80});
//   const int32_t answer = question.RunModal(&ownerView);
//
// Each dialog runs on the thread that creates it. Failed registration or creation is not reported:
// it leaves a null handle, on which later calls do nothing. A dialog that becomes active again
// gives the focus back to the child that had it. A dialog can be created again after it ended; its
// children are then added anew and its show state keeps its last value.
#pragma once

#include "raw/RawThread.h"
#include "win/WinViewList.h"

namespace WinLayer {

// State and size of a dialog.
class WinDialogResize {
 public:
  enum DialogFlag : uint16_t {
    OffersKeys = 0x0001,     // the loop offers messages to PreTranslate; set it before the loop
    ChildWantsKeys = 0x0002, // some child wants them; found out by Create
  };
  // Normal to Maximised are the platform's size kinds.
  enum ShowState : int32_t {
    Normal = 0,
    Minimised = 1,
    Maximised = 2,
    NeverShown = 5,
    FirstShown = 6, // only OnShowState's old state, right after the first size
    Destroying = 7, // only OnShowState's new state
  };

  uint16_t dialogFlags = 0;
  uint16_t bigIconId = 0; // resource numbers for the window class; 0 for none
  uint16_t smallIconId = 0;
  int32_t result = 0; // 0 at the start of a modal run
  WinViewList children;
  WinFitRect client; // the client rectangle, anchor parent of the children
  int32_t state = NeverShown;
  WinRect normalRect; // the last in the normal state, in screen pixels
  int32_t showCommand = SW_SHOWNORMAL;
};

class WinDialog : public WinView, public WinDialogResize {
 public:
  WinDialog();
  ~WinDialog() override; // a window that still stands is destroyed

  // Registers the class where needed, creates and shows the top-level window. The class keeps the
  // icons of the first dialog of its name. Not while its window stands: that one would stay behind
  // without a view.
  void Create();
  using WinView::Create;
  // Serves the thread's messages until WM_QUIT, whose wParam it gives; at once without a window.
  // The end of the dialog posts WM_QUIT, so a dialog needs a loop of its own. No window is left.
  int32_t RunLoop();
  // Creates the dialog and serves it while it blocks the top-most view above `ownerView`, which
  // gets the focus afterwards and must outlive the run. Gives `result`. A null owner blocks
  // nothing.
  int32_t RunModal(WinView* ownerView);
  // What WinMessageShow does: to the front, with the modal dialog over it; without activation where
  // the style says so. Does not return before the window is in front or gone.
  void Show(WPARAM wParam, LPARAM lParam);

  virtual void OnCreateChildren() {}
  virtual bool CanClose() { return true; }                  // false: WM_CLOSE is ignored
  int32_t OnCommand(WinView& view, uint32_t code) override; // Esc posts WM_CLOSE

  // Adds a child and creates its window; for OnCreateChildren and later.
  void addChild(WinView& view);
  // Sets the client, and as the view rectangle the frame around it; where it stands is for the
  // caller to say by moving `rect`.
  void fitToClient(WinSize size);
  // The view at the top of a view's chain of owners; null for null.
  static WinView* topView(WinView* view);

  static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

 protected:
  int32_t blockedHandler(HWND blocking, UINT message, WPARAM wParam, LPARAM lParam);
  int32_t normalHandler(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  int32_t handleReminder(WPARAM wParam, LPARAM lParam);
  int32_t handleDestroy();
  int32_t handleSize(WPARAM wParam, LPARAM lParam);
  int32_t handlePaint(WPARAM wParam, LPARAM lParam);
  int32_t handleMinMaxInfo(WPARAM wParam, LPARAM lParam);
  int32_t handleChildPaint(UINT message, WPARAM wParam, LPARAM lParam);
  int32_t handleChildColour(UINT message, WPARAM wParam, LPARAM lParam);
  void handleChildGone(uint32_t childId);
  void limitSizes(MINMAXINFO& limits);
  int32_t handleFocus(WPARAM wParam, LPARAM lParam);
  void rememberFocus();
  void moveFocus(uint32_t childId, bool backwards);
  void leaveStanding();

  uint32_t lastFocus_ = 0; // the child that had the focus when the dialog was left; 0 none
};

// The window belongs to the thread; the two operations here are for its creator.
class WinDialogThread : public WinDialog, public RawLayer::RawThreadUnit {
 public:
  // Starts the thread and waits, without a limit, until its window stands or could not be made.
  // Does nothing while it runs.
  void startAndWait();
  // Ends the dialog and joins its thread. Nothing when it does not run. To be called before the
  // object goes.
  void stopAndWait();
  [[nodiscard]] bool isReady(); // the window stands; any thread

 protected:
  void run() override;

 private:
  void setReady(bool value);
  RawLayer::RawEvent readyEvent_;
  RawLayer::RawLock readyLock_; // guards ready_
  bool ready_ = false;
};

} // namespace WinLayer
