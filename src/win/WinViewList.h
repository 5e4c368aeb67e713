// WinViewList: the child views of a dialog, each with an identifier. The list does not own them.
// Every operation is under the list's lock, so any thread may ask; whoever walks the list takes the
// lock himself.
#pragma once

#include "win/WinView.h"

namespace WinLayer {

class WinViewListAllocator : public RawLayer::RawListAllocator<WinView> {
 public:
  void destroy(WinView*) override {} // views are members of their dialogs
};

class WinViewList : public RawLayer::RawListR<WinViewListAllocator, WinView> {
 public:
  static constexpr uint32_t FirstIdentifier = 2500;

  RawLayer::RawLock lock;
  void add(WinView& view); // at the end, with the next identifier
  void addAsItIs(WinView& view);
  void bindWindow(WinView& view, HWND window);
  // Null when there is none, and for a null window.
  [[nodiscard]] WinView* findWindow(HWND window);
  [[nodiscard]] WinView* findIdentifier(uint32_t identifier);
  // Nothing when it is not there.
  void remove(uint32_t identifier);
  void removeView(const WinView& view);
  void removeAll(); // the next identifier is the first again

 private:
  uint32_t nextIdentifier_ = FirstIdentifier;
};

} // namespace WinLayer
