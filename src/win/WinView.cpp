// Child views subclass a window of a system class; their dialog's window procedure serves the rest.
// While a dialog is blocked by a modal one its children are dead to input too: they would otherwise
// still get what the pointer and the keyboard send straight to them.
#include "win/WinView.h"

#include "win/WinDialog.h"

#include <commctrl.h>
#include <shellapi.h>

namespace WinLayer {

namespace {

constexpr int32_t MeasureLimit = 0x7FFF;
constexpr int TabLength = 4;

DRAWTEXTPARAMS textParameters() {
  DRAWTEXTPARAMS parameters{};
  parameters.cbSize = sizeof parameters;
  parameters.iTabLength = TabLength;
  return parameters;
}

} // namespace

WinRect measureText(HDC dc, const RawString& text, const WinRect& box, UINT format) {
  const RawString wide = text.shareAs(RawLayer::EncodingWide);
  RECT area = platformRect(box);
  DRAWTEXTPARAMS parameters = textParameters();
  // The call never writes into the text without DT_MODIFYSTRING.
  DrawTextExW(dc, const_cast<wchar_t*>(wideUnits(wide)), wide.length(), &area, format | DT_CALCRECT,
              &parameters);
  return rectOf(area);
}

void drawText(HDC dc, const RawString& text, const WinRect& box, UINT format) {
  const RawString wide = text.shareAs(RawLayer::EncodingWide);
  RECT area = platformRect(box);
  DRAWTEXTPARAMS parameters = textParameters();
  DrawTextExW(dc, const_cast<wchar_t*>(wideUnits(wide)), wide.length(), &area, format, &parameters);
}

UINT textFormat(uint16_t fitFlags) {
  UINT format = (fitFlags & WinViewFitting::TextWrapped)
                    ? DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL
                    : DT_NOPREFIX;
  if (fitFlags & WinViewFitting::TextRight) format |= DT_RIGHT;
  if (fitFlags & WinViewFitting::TextCentre) format |= DT_CENTER;
  return format;
}

// --- Title, style and font

RawString WinViewStyle::GetTitle() const {
  return title_.shareAs(RawLayer::EncodingUtf8);
}

void WinViewStyle::ClearTitle() {
  title_.release();
  ++titleRevision;
}

void WinViewStyle::SetTitle(const RawString& text) {
  title_ = text;
  ++titleRevision;
}

void WinViewStyle::AppendTitle(const RawString& text) {
  title_.append(text.shareAs(title_.encoding()));
  ++titleRevision;
}

HFONT WinViewStyle::fontHandle() const {
  for (const WinViewStyle* each = this; each; each = each->styleParent)
    if (each->font) return each->font->handle();
  return WinFont::window().handle();
}

HINSTANCE WinViewStyle::instance() {
  return GetModuleHandleW(nullptr);
}

COLORREF WinViewStyle::windowTextColour() {
  static const COLORREF colour = GetSysColor(COLOR_WINDOWTEXT);
  return colour;
}

COLORREF WinViewStyle::dialogColour() {
  static const COLORREF colour = GetSysColor(COLOR_3DFACE);
  return colour;
}

// --- Measuring

void WinViewFitting::FitToContent() {
  WinRect area;
  MeasureText(area);
  clientWidth = area.width();
  clientHeight = area.height();
  area.left -= margins.left;
  area.top -= margins.top;
  area.right += margins.right;
  area.bottom += margins.bottom;
  AdjustFrame(area);
  windowWidth = area.width();
  windowHeight = area.height();
}

void WinView::MeasureText(WinRect& area) {
  const WinWindowDc dc(window);
  const WinSelect selected(dc.get(), fontHandle());
  const UINT format =
      (fitFlags & TextWrapped) ? DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL : DT_NOPREFIX;
  const RawString title = GetTitle();
  area = measureText(dc.get(), title.isEmpty() ? "A"_text : title,
                     {0, 0, MeasureLimit, MeasureLimit}, format);
  if (title.isEmpty()) area.right = area.left;
}

// The width of a vertical bar also stands for the height of a horizontal one.
void WinView::AdjustFrame(WinRect& area) {
  RECT frame = platformRect(area);
  AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
  area = rectOf(frame);
  if (style & WS_VSCROLL) area.right += GetSystemMetrics(SM_CXVSCROLL);
  if (style & WS_HSCROLL) area.bottom += GetSystemMetrics(SM_CXVSCROLL);
}

// --- The window

void WinViewAction::setBlockingWindow(HWND blocking) {
  const RawLayer::RawLockScope scope(lock_);
  blockingWindow_ = blocking;
}

HWND WinViewAction::blockingWindow() {
  const RawLayer::RawLockScope scope(lock_);
  return blockingWindow_;
}

WinView::~WinView() {
  if (window && owner) {
    RemoveWindowSubclass(window, SubclassProcedure, identifier);
    DestroyWindow(window);
  }
}

void WinView::Create(WinDialog& dialog) {
  owner = &dialog;
  const RawString wideClass = className.shareAs(RawLayer::EncodingWide);
  const RawString wideTitle = GetTitle().shareAs(RawLayer::EncodingWide);
  window = CreateWindowExW(extendedStyle, wideUnits(wideClass), wideUnits(wideTitle), style,
                           rect.left, rect.top, rect.width(), rect.height(), dialog.window,
                           reinterpret_cast<HMENU>(static_cast<UINT_PTR>(identifier)), instance(),
                           nullptr);
  if (!window) return;
  if (classKind == SystemClass)
    SetWindowSubclass(window, SubclassProcedure, identifier, reinterpret_cast<DWORD_PTR>(this));
  else
    viewFlags |= NotSubclassed;
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(fontHandle()), FALSE);
  OnCreated();
}

int32_t WinView::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
  const int32_t own = OnMessage(message, wParam, lParam);
  for (RawLayer::RawListNode* node = hooks.first(); !hooks.isEnd(node);) {
    RawLayer::RawListNode* const following = hooks.next(node);
    const int32_t answer = hooks.element(node)->OnHookMessage(message, wParam, lParam);
    if (answer != WinNotHandled) return answer;
    node = following;
  }
  return own;
}

bool WinView::swallowsInput(UINT message, WPARAM wParam) {
  if (!owner || !owner->blockingWindow()) return false;
  const bool isInput = (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                       (message >= WM_KEYFIRST && message <= WM_KEYLAST) ||
                       message == WM_CONTEXTMENU || message == WM_DROPFILES ||
                       message == WM_MOUSEHOVER;
  if (message == WM_DROPFILES) DragFinish(reinterpret_cast<HDROP>(wParam));
  return isInput;
}

LRESULT CALLBACK WinView::SubclassProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR reference) {
  auto* view = reinterpret_cast<WinView*>(reference);
  if (message == WM_NCDESTROY) {
    RemoveWindowSubclass(window, SubclassProcedure, id);
    view->window = nullptr;
    return DefSubclassProc(window, message, wParam, lParam);
  }
  if (view->swallowsInput(message, wParam)) return 0;
  const bool isPress = message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN;
  if (isPress && !(view->viewFlags & NotSubclassed) && GetFocus() != window) SetFocus(window);
  const int32_t result = view->Dispatch(message, wParam, lParam);
  return result == WinNotHandled ? DefSubclassProc(window, message, wParam, lParam) : result;
}

int32_t WinView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
  case WM_COMMAND:
    return OnChildNotify(HIWORD(wParam));
  case WinMessageMenuResult:
    return OnMenuCommand(static_cast<uint32_t>(wParam), lParam);
  case WM_KEYDOWN:
    if (wParam == VK_TAB && owner) {
      SendMessageW(owner->window, WinMessageMoveFocus, identifier,
                   GetKeyState(VK_SHIFT) < 0 ? 1 : 0);
      return 0;
    }
    if (wParam == VK_ESCAPE) {
      postCode(WinCodeEscape);
      return 0;
    }
    return WinNotHandled;
  default:
    return WinNotHandled;
  }
}

int32_t WinView::OnChildNotify(uint32_t code) {
  return owner ? owner->OnCommand(*this, code) : -1;
}

int32_t WinView::OnMenuCommand(uint32_t, LPARAM) {
  return -1;
}

bool WinView::PreTranslate(const MSG&, LRESULT&) {
  return false;
}

int32_t WinView::OnCommand(WinView&, uint32_t) {
  return 0;
}

bool WinView::OnMinMaxInfo(WinSize&, WinSize&) {
  return false;
}

void WinView::OnShowState(int32_t, int32_t) {}

void WinView::addHook(WinViewHook& hook) {
  hooks.append(&hook);
}

void WinView::removeHook(WinViewHook& hook) {
  for (RawLayer::RawListNode* node = hooks.first(); !hooks.isEnd(node); node = hooks.next(node))
    if (hooks.element(node) == &hook) return hooks.erase(node);
}

void WinView::invalidate() const {
  if (window) InvalidateRect(window, nullptr, FALSE);
}

void WinView::moveWindow(bool repaint) const {
  if (window) MoveWindow(window, rect.left, rect.top, rect.width(), rect.height(), repaint);
}

WinRect WinView::clientRect() const {
  RECT area{};
  if (window) GetClientRect(window, &area);
  return rectOf(area);
}

WinRect WinView::windowRect() const {
  RECT area{};
  if (window) GetWindowRect(window, &area);
  return rectOf(area);
}

void WinView::postCode(uint32_t code) const {
  if (window) PostMessageW(window, WM_COMMAND, MAKEWPARAM(identifier, code), 0);
}

LRESULT WinView::sendCode(uint32_t code) const {
  return window ? SendMessageW(window, WM_COMMAND, MAKEWPARAM(identifier, code), 0) : 0;
}

} // namespace WinLayer
