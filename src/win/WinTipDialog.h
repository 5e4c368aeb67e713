// WinTipDialog: the small window of a tip, on a thread of its own, so that it comes and goes
// without the message flow of its creator.
//
//   WinTipDialog tip;
//   tip.ShowTip("Opens the report"_text); // at the pointer; again for another text or place
//   tip.HideTip();
//
// The operations are for the creator's thread.
#pragma once

#include "win/WinDialog.h"
#include "win/WinStaticBox.h"

namespace WinLayer {

// A text that one thread sets while another paints it.
class WinTipText : public WinStaticBox {
 public:
  [[nodiscard]] RawString GetTitle() const override;
  void ClearTitle() override;
  void SetTitle(const RawString& text) override;
  void AppendTitle(const RawString& text) override;

 private:
  mutable RawLayer::RawLock titleLock_;
};

class WinTipDialog : public WinDialogThread {
 public:
  WinTipText text; // has the tip font; the creator may give it another before it is shown

  WinTipDialog();
  ~WinTipDialog() override; // hides it
  // Shows the text in any encoding below the pointer, and starts the window's thread where needed.
  // Nothing keeps the window on the screen. Returns when it stands.
  void ShowTip(const RawString& tip);
  // Destroys the window and joins its thread. Nothing when it is not shown.
  void HideTip();
  [[nodiscard]] bool isShown() { return isReady(); }

  void OnCreateChildren() override;
  void OnResized() override;

 private:
  void prepareFirst();
  [[nodiscard]] WinSize wantedSize() const; // of the client
  static WinPoint placeAtPointer();

  WinSize frame_; // what the window is larger than its client
  bool isFirst_ = true;
};

} // namespace WinLayer
