#include "win/WinDialog.h"

namespace WinLayer {

using RawLayer::RawListNode;
using RawLayer::RawLockScope;

void WinViewList::add(WinView& view) {
  const RawLockScope scope(lock);
  view.identifier = nextIdentifier_++;
  append(&view);
}

WinView* WinViewList::findWindow(HWND window) {
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

WinView* WinViewList::findClass(const RawString& className) {
  const RawLockScope scope(lock);
  for (WinView& view : elements())
    if (view.className.equals(className)) return &view;
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

void WinViewList::removeAll() {
  const RawLockScope scope(lock);
  clear();
  nextIdentifier_ = FirstIdentifier;
}

} // namespace WinLayer
