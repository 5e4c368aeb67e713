// Creation, loops and modality; the handlers of a dialog's messages stand in WinDialogHandlers.cpp.
#include "win/WinDialog.h"

#include "raw/RawStringList.h"
#include "raw/RawWindows.h"

namespace WinLayer {

using RawLayer::RawListNode;
using RawLayer::RawLock;
using RawLayer::RawLockScope;

namespace {

// What a window that was just clicked would be told: client hit, left press.
constexpr LPARAM ClickedClient = 0x02010001;

// The dialogs that stand, for finding the view of a window.
WinViewList& standingDialogs() {
  static WinViewList list;
  return list;
}

// Each class is registered once for the process; any thread may be the first.
void registerClass(const RawString& name, uint16_t bigIcon, uint16_t smallIcon) {
  static RawLock lock;
  static RawLayer::RawStringList registered;
  const RawLockScope scope(lock);
  registered.caseSensitive = true;
  if (!RawLayer::RawStringList::isEnd(registered.find(name))) return;

  const HINSTANCE instance = WinViewStyle::instance();
  const RawString wideName = name.shareAs(RawLayer::EncodingWide);
  WNDCLASSEXW record{};
  record.cbSize = sizeof record;
  record.style = CS_VREDRAW | CS_HREDRAW;
  record.lpfnWndProc = WinDialog::WindowProcedure;
  record.hInstance = instance;
  record.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  record.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_BTNFACE + 1));
  record.lpszClassName = wideUnits(wideName);
  if (bigIcon) record.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(bigIcon));
  if (smallIcon) record.hIconSm = LoadIconW(instance, MAKEINTRESOURCEW(smallIcon));
  if (RegisterClassExW(&record)) registered.add(name);
}

} // namespace

WinDialog::WinDialog() {
  classKind = OwnClass;
}

WinDialog::~WinDialog() {
  if (window) DestroyWindow(window);
  window = nullptr;
  leaveStanding();
}

void WinDialog::Create() {
  registerClass(className, bigIconId, smallIconId);
  standingDialogs().removeView(*this);
  standingDialogs().addAsItIs(*this);
  const RawString wideClass = className.shareAs(RawLayer::EncodingWide);
  const RawString wideTitle = GetTitle().shareAs(RawLayer::EncodingWide);
  const HWND created = CreateWindowExW(extendedStyle, wideUnits(wideClass), wideUnits(wideTitle),
                                       style, rect.left, rect.top, rect.width(), rect.height(),
                                       nullptr, nullptr, instance(), static_cast<WinView*>(this));
  if (!created) {
    window = nullptr;
    leaveStanding();
    return;
  }
  dialogFlags = static_cast<uint16_t>(dialogFlags & ~ChildWantsKeys);
  ShowWindow(window, showCommand);
  UpdateWindow(window);
  {
    const RawLockScope scope(children.lock);
    for (const WinView& child : children.elements())
      if (child.viewFlags & WantsPreTranslate) dialogFlags |= ChildWantsKeys;
  }
  OnCreated();
}

int32_t WinDialog::RunLoop() {
  MSG message{};
  while (window && GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (dialogFlags & OffersKeys) {
      WinView* child = children.findWindow(message.hwnd);
      LRESULT answer = 0;
      if (child && (child->viewFlags & WantsPreTranslate) && child->PreTranslate(message, answer))
        continue;
    }
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  // A window that was only told that it is being destroyed still stands.
  if (window && IsWindow(window)) DestroyWindow(window);
  window = nullptr;
  return static_cast<int32_t>(message.wParam);
}

WinView* WinDialog::topView(WinView* view) {
  while (view && view->owner) view = view->owner;
  return view;
}

int32_t WinDialog::RunModal(WinView* ownerView) {
  WinView* const top = topView(ownerView);
  result = 0;
  Create();
  if (!window) return result;
  if (top) top->setBlockingWindow(window);
  RunLoop();
  if (top) {
    top->setBlockingWindow(nullptr);
    // What it and its children did not paint while it was blocked, they paint now.
    if (top->window) {
      RedrawWindow(top->window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
      SendMessageW(top->window, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top->window),
                   ClickedClient);
    }
    if (ownerView->window) SetFocus(ownerView->window);
  }
  return result;
}

void WinDialog::Show(WPARAM wParam, LPARAM lParam) {
  if (!window) return;
  if (extendedStyle & WS_EX_NOACTIVATE) {
    ShowWindow(window, SW_SHOWNOACTIVATE);
    return;
  }
  ShowWindow(window, SW_SHOWNORMAL);
  SetForegroundWindow(window);
  RawLayer::popupWindow(reinterpret_cast<uintptr_t>(window));
  if (const HWND blocking = blockingWindow())
    PostMessageW(blocking, WinMessageShow, wParam, lParam);
}

int32_t WinDialog::OnCommand(WinView&, uint32_t code) {
  if (code == WinCodeEscape && window) PostMessageW(window, WM_CLOSE, 0, 0);
  return 0;
}

void WinDialog::addChild(WinView& view) {
  children.add(view);
  view.Create(*this);
}

void WinDialog::fitToClient(WinSize size) {
  client.set({0, 0, size.width, size.height});
  RECT frame{0, 0, size.width, size.height};
  AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
  set(rectOf(frame));
}

void WinDialog::leaveStanding() {
  standingDialogs().removeView(*this);
}

LRESULT CALLBACK WinDialog::WindowProcedure(HWND window, UINT message, WPARAM wParam,
                                            LPARAM lParam) {
  WinView* view = standingDialogs().findWindow(window);
  if (!view && (message == WM_NCCREATE || message == WM_CREATE)) {
    view = static_cast<WinView*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    if (view) standingDialogs().bindWindow(*view, window);
  }
  if (!view) return DefWindowProcW(window, message, wParam, lParam);

  auto* dialog = static_cast<WinDialog*>(view);
  const HWND blocking = dialog->blockingWindow();
  const int32_t result = blocking ? dialog->blockedHandler(blocking, message, wParam, lParam)
                                  : dialog->normalHandler(message, wParam, lParam);
  return result == WinNotHandled ? DefWindowProcW(window, message, wParam, lParam) : result;
}

} // namespace WinLayer
