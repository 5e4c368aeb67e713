// WinView: base of every widget and dialog. One object stands for one platform window and holds
// its text, style, font, rectangle and hooks; it dispatches platform messages to virtual
// operations, measures itself from its content, and follows a parent rectangle by anchors.
//
// A view belongs to the thread that runs its window; only the blocking-window handle may be read
// by others, under the view's lock. A null window handle makes operations no-ops. Views own
// nothing of the data that they show, and dialogs do not own their child views.
#pragma once

#include "raw/RawList.h"
#include "raw/RawLock.h"
#include "win/WinFitRect.h"
#include "win/WinFont.h"
#include "win/WinPlatform.h"

namespace WinLayer {

class WinDialog;
class WinView;

// The result of a handler that did not handle the message.
inline constexpr int32_t WinNotHandled = 0x7FFFFFFF;

// Private window messages.
inline constexpr UINT WinMessageRemind = 0x8000;
inline constexpr UINT WinMessageShow = 0x8001;
inline constexpr UINT WinMessageMoveFocus =
    0x8002; // wParam the view's identifier, lParam 1 backwards
inline constexpr UINT WinMessageMenuResult = 0x8003; // wParam the entry id

// Codes of a WM_COMMAND between views: the high word, with the view's identifier in the low word.
inline constexpr uint32_t WinCodePress = 0;
inline constexpr uint32_t WinCodeDoubleClick = 0x1002;
inline constexpr uint32_t WinCodeEscape = 0x1004;
inline constexpr uint32_t WinCodeFocusLost = 0x1005;
inline constexpr uint32_t WinCodeSelection = 0x1008;
inline constexpr uint32_t WinCodeScrolled = 0x100A;

// Sees each message after the view's own handler.
class WinViewHook {
 public:
  virtual ~WinViewHook() = default;
  virtual int32_t OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};
class WinViewHookListAllocator : public RawLayer::RawListAllocator<WinViewHook> {
 public:
  void destroy(WinViewHook*) override {} // hooks are members of who adds them
};
class WinViewHookList : public RawLayer::RawListR<WinViewHookListAllocator, WinViewHook> {};

// Title, style and font. Slot order: GetTitle, ClearTitle, SetTitle, AppendTitle.
class WinViewStyle {
 public:
  uint32_t titleRevision = 0; // goes up with each change of the title
  DWORD style = 0;
  DWORD extendedStyle = 0;
  WinFont* font = nullptr;
  WinViewStyle* styleParent = nullptr; // where the font comes from without one of its own

  [[nodiscard]] virtual RawString GetTitle() const;
  virtual void ClearTitle();
  virtual void SetTitle(const RawString& text);
  virtual void AppendTitle(const RawString& text);
  // Own font, else the first up the style parents, else the window font.
  [[nodiscard]] HFONT fontHandle() const;

  static HINSTANCE instance();        // of the program's module, for resources
  static COLORREF windowTextColour(); // taken once at first use
  static COLORREF dialogColour();

 protected:
  virtual ~WinViewStyle() = default;
  RawString title_;
};

// Measuring. Slot order: MeasureText, AdjustFrame.
class WinViewFitting {
 public:
  enum FitFlag : uint16_t {
    TextLeft = 0x0001,
    TextRight = 0x0002,
    TextCentre = 0x0004,
    TextWrapped = 0x0008,
    TextTop = 0x0010,
    TextBottom = 0x0020,
    TextMiddle = 0x0040,
  };
  uint16_t fitFlags = 0;
  int32_t clientWidth = 0; // the four from FitToContent
  int32_t clientHeight = 0;
  int32_t windowWidth = 0;
  int32_t windowHeight = 0;
  WinRect margins; // inner: left, top, right, bottom

  void FitToContent();
  // The rectangle of the content, from (0, 0).
  virtual void MeasureText(WinRect& rect) = 0;
  // From client to window rectangle.
  virtual void AdjustFrame(WinRect& rect) = 0;

 protected:
  virtual ~WinViewFitting() = default;
};

// The window and its hooks.
class WinViewAction {
 public:
  enum ViewFlag : uint16_t {
    WantsPreTranslate = 0x0001,
    NotSubclassed = 0x0002,
  };
  enum ClassKind : uint32_t { OwnClass = 1, SystemClass = 2 };

  HWND window = nullptr;
  uint16_t viewFlags = 0;
  uint32_t identifier = 0; // given by the dialog's list of children
  RawString className;
  uint32_t classKind = SystemClass;
  WinViewHookList hooks;
  WinDialog* owner = nullptr;

  void setBlockingWindow(HWND blocking); // under the lock
  [[nodiscard]] HWND blockingWindow();

 private:
  RawLayer::RawLock lock_;
  HWND blockingWindow_ = nullptr;
};

class WinView : public WinFitRect,
                public WinViewStyle,
                public WinViewAction,
                public WinViewFitting {
 public:
  WinView() = default;
  ~WinView() override; // a window that still stands is destroyed
  WinView(const WinView&) = delete;
  WinView& operator=(const WinView&) = delete;

  // Slot order behind the title operations: OnMessage to OnReserved.
  virtual int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
  virtual int32_t OnChildNotify(uint32_t code); // forwards to the owner's OnCommand; -1 without one
  virtual int32_t OnMenuCommand(uint32_t entry, LPARAM lParam);
  virtual bool PreTranslate(const MSG& message, LRESULT& result);
  virtual void OnCreated() {}
  virtual void OnDestroyed() {}
  virtual int32_t OnCommand(WinView& view, uint32_t code);
  virtual bool OnMinMaxInfo(WinSize& shrink, WinSize& growth);
  virtual void OnResized() {}
  virtual void OnShowState(int32_t oldState, int32_t newState);
  virtual void OnReserved() {}

  void MeasureText(WinRect& rect) override;
  void AdjustFrame(WinRect& rect) override;

  // Creates the platform window as a child of the dialog; without one later calls are no-ops.
  void Create(WinDialog& dialog);
  // Binds a window that the platform is creating for this view.
  void bindWindow(HWND newWindow) { window = newWindow; }
  // OnMessage, then the hooks until one answers.
  int32_t Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
  void addHook(WinViewHook& hook);
  void removeHook(WinViewHook& hook);

  void invalidate() const;
  void moveWindow(bool repaint) const; // to the view's rectangle
  [[nodiscard]] WinRect clientRect() const;
  [[nodiscard]] WinRect windowRect() const; // in screen coordinates
  // Posts or sends a WM_COMMAND of this view with the code, to its own window.
  void postCode(uint32_t code) const;
  LRESULT sendCode(uint32_t code) const;

 private:
  static LRESULT CALLBACK SubclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR view);
  bool swallowsInput(UINT message, WPARAM wParam);
};

// Measures and draws text as views do: tab length 4. `format` is the platform's.
WinRect measureText(HDC dc, const RawString& text, const WinRect& box, UINT format);
void drawText(HDC dc, const RawString& text, const WinRect& box, UINT format);
// The horizontal and wrapping part of a text's format by fit flags.
UINT textFormat(uint16_t fitFlags);

} // namespace WinLayer
