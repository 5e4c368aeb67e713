// GuiMainDialog: the one main window: a list of selectors and the buttons, with a thin strip that
// carries the close button and by which the window is moved. It decides the window's size from its
// content, restores and saves its position, serves the commands of its boxes, of the icon thread
// and of scripts, and restarts the program.
//
//   GuiMainDialog dialog;
//   dialog.Prepare();
//   dialog.Create();
//   dialog.RunLoop();
//
// Once in the process, main thread. It ends by WM_CLOSE; by then it has stopped the icon thread,
// and scripts find no main dialog any more.
#pragma once

#include "app/GuiButtonBox.h"
#include "app/GuiLayout.h"
#include "app/GuiSelectorBox.h"
#include "app/GuiTMenuExecution.h"
#include "app/GuiTray.h"
#include "win/WinDialog.h"
#include "win/WinEdgePicker.h"
#include "win/WinEnterControl.h"

namespace AppLayer {

class GuiMainDialog : public WinLayer::WinDialog, public WinLayer::WinEnterControl {
 public:
  static constexpr uint16_t BigIconId = 130; // resources
  static constexpr uint16_t SmallIconId = 131;

  GuiMainDialog();
  ~GuiMainDialog() override;

  // Sets buttons and selectors up, and with them style, size and place of the window: the stored
  // place, or the middle of the primary screen, also when Shift is held down.
  void Prepare();

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnChildNotify(uint32_t code) override;
  void OnCreated() override;
  void OnDestroyed() override;
  int32_t OnCommand(WinView& view, uint32_t code) override; // Esc does nothing here
  bool OnMinMaxInfo(WinSize& shrink, WinSize& growth) override;
  void OnResized() override;
  void OnShowState(int32_t oldState, int32_t newState) override;
  void OnCreateChildren() override;

 private:
  [[nodiscard]] bool showsSelectors() const { return layout_.mode == GuiLayout::Selectors; }
  void computeLayout();
  void bindAreas();
  void restorePlace();
  void placeBox(WinView& box, const WinLayer::WinFitRect& area) const;
  void dispatchCommand(uint32_t code);
  void restart();
  void stopIcons();
  void followSelectors();
  void followButtons();
  WinSize growthWithSelectors();
  void growBy(WinSize delta);
  void openTrayMenu() const;
  void focusFirstBox() const;

  GuiTMenuExecution titleMenu_;
  GuiLayout layout_;
  GuiTray tray_;
  WinLayer::WinFitRect selectorArea_;
  WinLayer::WinFitRect buttonArea_;
  WinLayer::WinEdgePicker edges_;
  GuiSelectorBox selectors_;
  GuiButtonBox buttons_;
};

} // namespace AppLayer
