// The running text of the input method stands in the box itself, selected, so the platform's own
// window for it never shows: the messages that would open it are answered here.
#include "win/WinEditBoxInput.h"

#include "win/WinEditBox.h"

#include <algorithm>

namespace WinLayer {

using RawLayer::RawRange;

namespace {

bool isPress(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

} // namespace

WinEditBoxInput::~WinEditBoxInput() {
  if (context_) method_->destroyContext(context_);
}

// --- The context

void WinEditBoxInput::onFocus() {
  if (!hasAsked_) {
    hasAsked_ = true;
    method_ = &WinInputMethod::current();
    if (method_->isPresent()) context_ = method_->createContext();
  }
  follow();
  if (isListening()) readOpenState();
}

bool WinEditBoxInput::isKeptAway() const {
  return box_.info.has(WinEditBoxInfo::ReadOnly) || box_.info.has(WinEditBoxInfo::NoInputMethod);
}

bool WinEditBoxInput::isListening() const {
  return context_ && !isKeptAway();
}

void WinEditBoxInput::follow() {
  const bool isAttached = box_.info.has(WinEditBoxInfo::ContextAttached);
  if (!context_ || !box_.window || isAttached != isKeptAway()) return;
  method_->associate(box_.window, isAttached ? nullptr : context_);
  box_.info.setFlag(WinEditBoxInfo::ContextAttached, !isAttached);
  if (isAttached) setOpenState(false);
}

void WinEditBoxInput::onFocusLost() {
  if (!isListening()) return;
  setOpenState(false);
  completeRunning();
}

void WinEditBoxInput::setOpenState(bool isOpen) {
  box_.info.setFlag(WinEditBoxInfo::InputMethodOpen, isOpen);
  box_.invalidate();
}

void WinEditBoxInput::readOpenState() {
  setOpenState(method_->isOpen(context_));
}

void WinEditBoxInput::completeRunning() {
  if (box_.info.composing) method_->complete(context_);
}

// --- Messages

int32_t WinEditBoxInput::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!isListening()) return WinNotHandled;
  if (isPress(message)) completeRunning();
  switch (message) {
  case WM_IME_STARTCOMPOSITION:
    beginComposition();
    return 0;
  case WM_IME_COMPOSITION:
    takeComposition(lParam);
    return 0;
  case WM_IME_ENDCOMPOSITION:
    box_.info.endComposition();
    box_.afterInput();
    return 0;
  case WM_IME_NOTIFY:
    if (wParam == IMN_SETOPENSTATUS) readOpenState();
    return WinNotHandled;
  case WM_IME_REQUEST:
    return answerRequest(wParam, lParam);
  default:
    return WinNotHandled;
  }
}

void WinEditBoxInput::beginComposition() {
  LOGFONTW font{};
  if (!GetObjectW(box_.fontHandle(), sizeof font, &font)) font = WinFont::window().description;
  method_->setFont(context_, font);
  box_.info.beginComposition();
  box_.afterInput();
}

// The result first: both come in one message when the next composition has begun already.
void WinEditBoxInput::takeComposition(LPARAM parts) {
  if (parts & GCS_RESULTSTR) box_.info.putResult(method_->text(context_, GCS_RESULTSTR));
  if (parts & GCS_COMPSTR) box_.info.putComposition(method_->text(context_, GCS_COMPSTR));
  box_.afterInput();
}

int32_t WinEditBoxInput::answerRequest(WPARAM request, LPARAM lParam) {
  if (request == IMR_QUERYCHARPOSITION && lParam)
    return tellPlace(*reinterpret_cast<IMECHARPOSITION*>(lParam));
  if (request == IMR_RECONVERTSTRING)
    return offerReconversion(reinterpret_cast<RECONVERTSTRING*>(lParam));
  return 0;
}

int32_t WinEditBoxInput::tellPlace(IMECHARPOSITION& place) {
  if (place.dwSize < sizeof place) return 0;
  const WinRect caret = box_.caretPlace();
  POINT origin{0, 0};
  ClientToScreen(box_.window, &origin);
  place.pt = {origin.x + caret.left, origin.y + caret.top};
  place.cLineHeight = static_cast<UINT>(box_.info.lineHeight);
  const WinRect client = box_.clientRect();
  place.rcDocument = platformRect(client.movedBy(origin.x, origin.y));
  return 1;
}

// Without a place for it the answer is the size. The range is selected, so that what comes back
// takes its place.
int32_t WinEditBoxInput::offerReconversion(RECONVERTSTRING* offer) {
  const RawRange range = box_.info.reconversion();
  if (range.isEmpty()) return 0;
  const auto length = static_cast<DWORD>(range.size());
  const auto bytes = static_cast<DWORD>(length * sizeof(char16_t));
  const auto size = static_cast<DWORD>(sizeof(RECONVERTSTRING)) + bytes;
  if (!offer) return static_cast<int32_t>(size);
  if (offer->dwSize < size) return 0;
  const DWORD given = offer->dwSize;
  *offer = {};
  offer->dwSize = given;
  offer->dwStrLen = offer->dwCompStrLen = offer->dwTargetStrLen = length;
  offer->dwStrOffset = sizeof(RECONVERTSTRING);
  std::copy_n(box_.info.text.wide() + range.start, length,
              reinterpret_cast<char16_t*>(reinterpret_cast<char*>(offer) + sizeof *offer));
  box_.info.select(range.start, range.end);
  box_.afterInput();
  return static_cast<int32_t>(size);
}

// --- The menu's entries

void WinEditBoxInput::openOnSelection() {
  if (!isListening()) return;
  method_->open(context_);
  method_->setText(context_, box_.info.selectedText());
}

void WinEditBoxInput::registerSelection() {
  if (context_) method_->registerWord(box_.window, box_.info.selectedText());
}

} // namespace WinLayer
