// WinDialog: a top-level view with a message loop, child views, and the window procedure that
// serves all of them. Modality is a blocking-window handle on the top-most dialog: the platform
// never sees a disabled owner. WinDialogThread runs a dialog on a thread of its own.
//
// Each dialog runs on one thread. Failed registration or creation leaves a null handle, on which
// later calls do nothing.
#pragma once

#include "raw/RawThread.h"
#include "win/WinView.h"

namespace WinLayer {

class WinViewListAllocator : public RawLayer::RawListAllocator<WinView> {
 public:
  void destroy(WinView*) override {} // views are members of their dialogs
};

// Views with identifiers; every operation is under the list's lock.
class WinViewList : public RawLayer::RawListR<WinViewListAllocator, WinView> {
 public:
  static constexpr uint32_t FirstIdentifier = 2500;

  RawLayer::RawLock lock;
  void add(WinView& view); // gives it the next identifier
  [[nodiscard]] WinView* findWindow(HWND window);
  [[nodiscard]] WinView* findIdentifier(uint32_t identifier);
  [[nodiscard]] WinView* findClass(const RawString& className);
  void remove(uint32_t identifier);
  void removeView(const WinView& view);
  void removeAll(); // identifiers begin anew

 private:
  uint32_t nextIdentifier_ = FirstIdentifier;
};

// State and size of a dialog.
class WinDialogResize {
 public:
  enum DialogFlag : uint16_t { OffersKeys = 0x0001, ChildWantsKeys = 0x0002 };
  enum ShowState : int32_t {
    Normal = 0,
    Minimised = 1,
    Maximised = 2,
    NeverShown = 5,
    FirstShown = 6,
    Destroying = 7,
  };

  uint16_t dialogFlags = 0;
  uint16_t bigIconId = 0; // resource numbers for the window class; 0 for none
  uint16_t smallIconId = 0;
  int32_t result = 0;
  WinViewList children;
  WinFitRect client; // the client rectangle, anchor parent of the children
  int32_t state = NeverShown;
  WinRect normalRect; // the last in the normal state
  int32_t showCommand = SW_SHOWNORMAL;
};

class WinDialog : public WinView, public WinDialogResize {
 public:
  WinDialog();
  ~WinDialog() override;

  // Registers the class where needed, creates and shows the top-level window.
  void Create();
  using WinView::Create;
  int32_t RunLoop();                    // the wParam of WM_QUIT
  int32_t RunModal(WinView* ownerView); // the dialog's result; null: no owner, by itself
  void Show(WPARAM wParam, LPARAM lParam);

  virtual void OnCreateChildren() {}
  virtual bool CanClose() { return true; }
  int32_t OnCommand(WinView& view, uint32_t code) override; // Esc posts WM_CLOSE

  // Adds a child and creates its window.
  void addChild(WinView& view);
  // The view rectangle around a client rectangle of this size, at (0, 0); the client is set.
  void fitToClient(WinSize size);
  // The view at the top of a view's chain of owners.
  static WinView* topView(WinView* view);

  static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

 protected:
  int32_t blockedHandler(HWND blocking, UINT message, WPARAM wParam, LPARAM lParam);
  int32_t normalHandler(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  int32_t handleDestroy();
  int32_t handleSize(WPARAM wParam, LPARAM lParam);
  int32_t handlePaint(WPARAM wParam, LPARAM lParam);
  int32_t handleMinMaxInfo(WPARAM wParam, LPARAM lParam);
  void moveFocus(uint32_t childId, bool backwards);
  void leaveStanding();
};

// Brings a window to the front, again and again until it is there or gone.
void forceForeground(HWND window);

class WinDialogThread : public WinDialog, public RawLayer::RawThreadUnit {
 public:
  // Starts the thread and waits until its window stands.
  void startAndWait();
  // Destroys the window from another thread and joins.
  void stopAndWait();
  [[nodiscard]] bool isReady();

 protected:
  void run() override;

 private:
  void setReady(bool value);
  RawLayer::RawEvent readyEvent_;
  RawLayer::RawLock readyLock_;
  bool ready_ = false;
};

} // namespace WinLayer
