// GuiButtonBox: the grid of the main window. One view with one window in which all buttons are
// drawn by hand: a column, or with the option Horizontal a row. A release of either mouse key runs
// the button under the pointer, dropped files run it or become new buttons, a menu and Alt keys
// edit the list, a tip window shows the tip of the button that the pointer rests on.
//
//   GuiButtonBox box(LauncherData::instance().buttons);
//   box.FitToContent();          // sets the buttons up, lays them out; windowWidth, windowHeight
//   box.rect = ...;
//   dialog.addChild(box);        // in OnCreateChildren
//
// The list must outlive the box. Options and measures are those of the process, read at each use.
// Main thread. Edits go to the list and the configuration file at once; those that change the set
// of buttons send MainCommandButtonsChanged to the owner. A script, a menu and an expansion can
// end the launcher or change the list: nothing is looked at behind them without finding it again.
#pragma once

#include "app/GuiButtonKeys.h"
#include "app/GuiButtonPainter.h"
#include "raw/RawStringList.h"
#include "win/WinEdgePicker.h"
#include "win/WinEnterControl.h"
#include "win/WinTipDialog.h"
#include "win/WinView.h"

#include <memory>
#include <shellapi.h>

namespace AppLayer {

class GuiButtonBox;

// What the box and its menu handler have in common.
class GuiButtonBoxProperty {
 public:
  // Slot order: destructor, ShowButtonMenu.
  class MenuHandler {
   public:
    virtual ~MenuHandler() = default;
    // Opens ButtonMenu at a point of the client and returns when it has closed; the chosen entry
    // comes through OnMenuCommand.
    virtual void ShowButtonMenu(WinPoint point) = 0;
  };
  enum Flag : uint16_t {
    TipsEnabled = 0x0001,
    FocusLook = 0x0002,
    PressInProgress = 0x0004,
  };

  MenuHandler* menuHandler = nullptr;
  GuiButtonBox* view = nullptr;
  JobButtonList* buttons = nullptr;
  uint16_t flags = 0;
  int32_t cursor = -1; // index of the current button

  [[nodiscard]] bool has(Flag flag) const { return (flags & flag) != 0; }
  void set(Flag flag, bool on) { flags = static_cast<uint16_t>(on ? flags | flag : flags & ~flag); }
};

class GuiButtonBox : public WinLayer::WinView,
                     public WinLayer::WinEnterControl,
                     public WinLayer::WinEdgePicker,
                     public GuiButtonBoxProperty::MenuHandler {
 public:
  enum MenuEntry : uint32_t {
    MenuInsertSeparator = 1,
    MenuDeleteItems = 2,
    MenuMoveUpItems = 3,
    MenuMoveDownItems = 4,
  };

  static void registerTexts(); // makes the menu's texts known to the catalogue

  explicit GuiButtonBox(JobButtonList& buttons);
  ~GuiButtonBox() override;
  GuiButtonBox(const GuiButtonBox&) = delete;
  GuiButtonBox& operator=(const GuiButtonBox&) = delete;

  [[nodiscard]] const GuiButtonBoxProperty& property() const { return property_; }

  int32_t OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  int32_t OnMenuCommand(uint32_t entry, LPARAM lParam) override;
  void OnDestroyed() override;
  // Runs the set-up of all buttons, which may show reports, and lays them out.
  void MeasureText(WinRect& area) override;
  void ShowButtonMenu(WinPoint point) override;

  // The pointer is on no button, or on a separator: there the window is moved, and its system menu
  // opens.
  bool CanMoveAt(const WinRect& area, WinPoint point) override;
  bool CanOpenSystemMenuAt(const WinRect& area, WinPoint point) override;
  void OnMouseLeave(WinPoint point) override;
  bool OnMouseHover(WinPoint point) override;
  bool OnMouseMoveTracked(WinPoint point) override;

 private:
  [[nodiscard]] static GuiButtonLayout layout(); // from options and measures
  [[nodiscard]] int32_t hitTest(WinPoint point) const;
  [[nodiscard]] JobButtonUnit* current() const; // null without a valid cursor
  [[nodiscard]] JobLayer::JobRectangle screenRect(int32_t index) const;
  [[nodiscard]] WinPoint pointerInClient() const;

  void paint();
  void pressed(WinPoint point, UINT message);
  void released(WinPoint point, const RawString& key);
  void moved(WinPoint point);
  void endPress();
  void focusChanged(bool hasFocus);
  bool keyPressed(uint32_t virtualKey, bool withAlt); // false: the key means nothing here
  void runCurrent(const RawString& key);
  void dropped(HDROP drop);
  void runDrop(const RawLayer::RawStringList& paths);

  void insertSeparator();
  void deleteCurrent();
  void moveCurrent(int32_t delta);
  void notify(); // the set of buttons has changed
  void hideTip();

  GuiButtonPainter painter_;
  std::unique_ptr<WinLayer::WinTipDialog> tip_; // made when the first tip shows
  WinPoint tipPoint_;                           // where the pointer was then, in the client
  GuiButtonBoxProperty property_;
  bool hasCaptured_ = false; // by a press that is no drag
};

} // namespace AppLayer
