#include "win/WinViewList.h"

namespace WinLayer {

using RawLayer::RawListNode;
using RawLayer::RawLockScope;

void WinViewList::add(WinView& view) {
  const RawLockScope scope(lock);
  view.identifier = nextIdentifier_++;
  append(&view);
}

void WinViewList::addAsItIs(WinView& view) {
  const RawLockScope scope(lock);
  append(&view);
}

void WinViewList::bindWindow(WinView& view, HWND window) {
  const RawLockScope scope(lock);
  view.window = window;
}

WinView* WinViewList::findWindow(HWND window) {
  if (!window) return nullptr; // else a view that has none would be found
  const RawLockScope scope(lock);
  for (WinView& view : elements())
    if (view.window == window) return &view;
  return nullptr;
}

WinView* WinViewList::findIdentifier(uint32_t identifier) {
  const RawLockScope scope(lock);
  for (WinView& view : elements())
    if (view.identifier == identifier) return &view;
  return nullptr;
}

void WinViewList::remove(uint32_t identifier) {
  const RawLockScope scope(lock);
  for (RawListNode* node = first(); !isEnd(node); node = next(node))
    if (element(node)->identifier == identifier) return erase(node);
}

void WinViewList::removeView(const WinView& view) {
  const RawLockScope scope(lock);
  for (RawListNode* node = first(); !isEnd(node); node = next(node))
    if (element(node) == &view) return erase(node);
}

// A WM_COMMAND has 16 bits for an identifier, which a dialog that is opened again and again would
// outgrow.
void WinViewList::removeAll() {
  const RawLockScope scope(lock);
  clear();
  nextIdentifier_ = FirstIdentifier;
}

} // namespace WinLayer
