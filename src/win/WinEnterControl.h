// WinEnterControl: a hook that tells when the pointer enters, leaves and rests on a view. Points
// are those of the messages: client pixels, and (0, 0) for a leave.
//
//   class Box : public WinView, public WinEnterControl {
//     Box() : WinEnterControl(*this) {
//       addHook(static_cast<WinEnterControl&>(*this));
//       hoverTime = 500;
//     }
//     bool OnMouseHover(WinPoint point) override { return showTip(point); }
//   };
//
// Belongs to the thread of its view, which must outlive it.
#pragma once

#include "win/WinView.h"

namespace WinLayer {

class WinEnterControl : public WinViewHook {
 public:
  uint8_t inside = 0; // the pointer is on the view
  // A move or a leave also calls OnMouseMoveTracked. Follows the answers of OnMouseHover and of
  // OnMouseMoveTracked.
  uint8_t trackMoves = 0;
  uint32_t hoverTime = 0; // milliseconds that the pointer must rest for OnMouseHover; 0 never

  explicit WinEnterControl(WinView& view) : hookedView_(view) {}
  WinEnterControl(const WinEnterControl&) = delete;
  WinEnterControl& operator=(const WinEnterControl&) = delete;

  // 0 for an enter, a leave and a rest; all else goes on, moves on the view included.
  int32_t OnHookMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  virtual void OnMouseEnter(WinPoint) {}
  virtual void OnMouseLeave(WinPoint) {}
  virtual bool OnMouseHover(WinPoint) { return false; }      // true: moves are tracked from now on
  virtual bool OnMouseMoveTracked(WinPoint) { return true; } // false: no longer

 protected:
  // Asks for the next leave, and the next rest where it is wanted. A rest ends the tracking of
  // rests, so who wants to hear of the next one asks again.
  void track() const;

 private:
  void trackedMove(WinPoint point);
  WinView& hookedView_;
};

} // namespace WinLayer
