// What a view is made of: WinViewStyle (title, style, font), WinViewFitting (measuring),
// WinViewResize (the rectangle and its anchors), WinViewAction (the window and its hooks).
//
// All of it belongs to the thread that runs the view's window; only the blocking window may be
// asked for by other threads, under its lock. Fonts, parents and hooks stay their makers' and must
// outlive the view or be taken off.
#pragma once

#include "raw/RawList.h"
#include "raw/RawLock.h"
#include "win/WinFitRect.h"
#include "win/WinFont.h"
#include "win/WinPlatform.h"

namespace WinLayer {

class WinDialog;

// The result of a handler that did not handle the message.
inline constexpr int32_t WinNotHandled = 0x7FFFFFFF;

// Sees each message after the view's own handler. A hook may take itself off while it answers.
class WinViewHook {
 public:
  virtual ~WinViewHook() = default;
  // WinNotHandled lets the next hook see the message; any other result is the view's.
  virtual int32_t OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam) = 0;
};
class WinViewHookListAllocator : public RawLayer::RawListAllocator<WinViewHook> {
 public:
  void destroy(WinViewHook*) override {} // hooks are members of who adds them
};
class WinViewHookList : public RawLayer::RawListR<WinViewHookListAllocator, WinViewHook> {};

// Title, style and font. A new title or font reaches the platform's window at its creation only.
// Slot order: GetTitle, ClearTitle, SetTitle, AppendTitle.
class WinViewStyle {
 public:
  uint32_t titleRevision = 0; // goes up with each change of the title
  DWORD style = 0;
  DWORD extendedStyle = 0;
  WinFont* font = nullptr;
  WinViewStyle* styleParent = nullptr; // where the font comes from without one of its own

  [[nodiscard]] virtual RawString GetTitle() const; // in EncodingUtf8
  virtual void ClearTitle();
  virtual void SetTitle(const RawString& text); // any encoding
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

// Measuring, in pixels. Slot order: MeasureText, AdjustFrame.
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
  WinRect margins; // inner: left, top, right, bottom; between the client and the window

  // Measures the content and fills the four sizes. Moves nothing.
  void FitToContent();
  // The rectangle of the content.
  virtual void MeasureText(WinRect& rect) = 0;
  // From client to window rectangle.
  virtual void AdjustFrame(WinRect& rect) = 0;

 protected:
  virtual ~WinViewFitting() = default;
};

// The platform's format of a text by fit flags: its side, and whether it wraps. Top, bottom and
// middle are the painter's.
UINT textFormat(uint16_t fitFlags);
// The box, cut to `height` at the top, the bottom or in the middle by fit flags; at the top
// without one. A content higher than its box stands out of it.
WinRect alignedInBox(const WinRect& box, int32_t height, uint16_t fitFlags);

// The rectangle of the view, in pixels of its parent's client; of the screen for a dialog.
class WinViewResize : public WinFitRect {};

// The window and its hooks.
class WinViewAction {
 public:
  enum ViewFlag : uint16_t {
    WantsPreTranslate = 0x0001, // before the view is created
    // A press and the Tab key give no focus. Views that only show something set it themselves.
    NotSubclassed = 0x0002,
  };
  enum ClassKind : uint32_t { OwnClass = 1, SystemClass = 2 };

  HWND window = nullptr; // null before the creation and after the end
  uint16_t viewFlags = 0;
  uint32_t identifier = 0; // given by the dialog's list of children; 0 for dialogs
  RawString className;
  uint32_t classKind = SystemClass;
  WinViewHookList hooks;
  WinDialog* owner = nullptr; // of a child; set at creation

  // The window of the modal dialog that blocks this view, or null. Any thread.
  void setBlockingWindow(HWND blocking);
  [[nodiscard]] HWND blockingWindow();

 private:
  RawLayer::RawLock lock_;
  HWND blockingWindow_ = nullptr;
};

} // namespace WinLayer
