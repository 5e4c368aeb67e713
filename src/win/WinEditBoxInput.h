// WinEditBoxInput: the part of an edit box that talks to the input method. It has a context of its
// own from the first focus on, where the platform has an input method at all; without a context it
// does nothing.
//
// Belongs to its box and the box's thread.
#pragma once

#include "win/WinInputMethod.h"
#include "win/WinRect.h"

namespace WinLayer {

class WinEditBox;

class WinEditBoxInput {
 public:
  explicit WinEditBoxInput(WinEditBox& box) : box_(box) {}
  ~WinEditBoxInput();
  WinEditBoxInput(const WinEditBoxInput&) = delete;
  WinEditBoxInput& operator=(const WinEditBoxInput&) = delete;

  [[nodiscard]] bool hasContext() const { return context_ != nullptr; }
  // Makes the context at the first time; then attaches it, or takes it away from a box that is
  // read-only or without an input method.
  void onFocus();
  void onFocusLost();
  void follow(); // the same for a box whose flags have changed; makes no context
  // The answer to a message; WinNotHandled leaves it to the box.
  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam);

  void openOnSelection();
  void registerSelection();

 private:
  [[nodiscard]] bool isKeptAway() const;
  [[nodiscard]] bool isListening() const;
  void setOpenState(bool isOpen);
  void readOpenState();
  void completeRunning();
  void beginComposition();
  void takeComposition(LPARAM parts);
  int32_t answerRequest(WPARAM request, LPARAM lParam);
  int32_t tellPlace(IMECHARPOSITION& place);
  int32_t offerReconversion(RECONVERTSTRING* offer);

  WinEditBox& box_;
  WinInputMethod* method_ = nullptr; // whose context it is
  HIMC context_ = nullptr;
  bool hasAsked_ = false;
};

} // namespace WinLayer
