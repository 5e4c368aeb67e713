// ButtonBoxBed: the button box in a small dialog of the test, over a real configuration file. The
// dialog grows with the box as the launcher's does, and writes down the commands that reach it.
//
//   class Some : public ButtonBoxTest {};
//   TEST_F(Some, Thing) {
//     open("[Button:a]\r\nTitle=A\r\n");
//     pressLeft(0);
//     EXPECT_EQ(runs(), Names{"a LButton"});
//   }
//
// A button that `says` its key shows it in a report, which the bed collects.
#pragma once

#include "JobTestBed.h"
#include "app/GuiButtonBox.h"
#include "app/LauncherOptions.h"
#include "window/WindowTest.h"

#include <optional>
#include <string>
#include <vector>

using Names = std::vector<std::string>;

class ButtonBoxDialog : public WinLayer::WinDialog {
 public:
  AppLayer::GuiButtonBox box;
  std::vector<uint32_t> codes; // of commands

  ButtonBoxDialog();
  void OnCreateChildren() override { addChild(box); }
  int32_t OnCommand(WinLayer::WinView& view, uint32_t code) override;

 private:
  void fitToBox();
};

class ButtonBoxTest : public WindowTest::Fixture {
 protected:
  ButtonBoxTest();
  ~ButtonBoxTest() override;
  void TearDown() override;

  // A block that shows the press: `runs` gives it as "NAME KEY" with what KeyState and the drop
  // say.
  static std::string says(const std::string& name);
  // A button with that block.
  static std::string button(const std::string& name, const std::string& values = {});
  static constexpr const char* Separator = "[Button:-]\r\n";

  // Loads the configuration and shows the box in a window that has the front. Options first.
  void open(const std::string& configuration);
  void close();

  [[nodiscard]] AppLayer::GuiButtonBox& box() { return dialog_->box; }
  [[nodiscard]] ButtonBoxDialog& dialog() { return *dialog_; }
  [[nodiscard]] int32_t cursor() { return box().property().cursor; }
  [[nodiscard]] bool has(AppLayer::GuiButtonBoxProperty::Flag flag) {
    return box().property().has(flag);
  }
  [[nodiscard]] static JobLayer::JobButtonList& buttons() {
    return JobLayer::LauncherData::instance().buttons;
  }
  [[nodiscard]] std::string names() const;
  [[nodiscard]] std::string file() const { return folder.read("c.ini"); }
  [[nodiscard]] Names runs() const { return bed.dialogs.reports; }

  // Points of the screen.
  [[nodiscard]] WinLayer::WinPoint centreOf(int32_t index);
  [[nodiscard]] WinLayer::WinPoint onScreen(int32_t x, int32_t y); // from the box's client
  void pointAt(int32_t index);
  void pressLeft(int32_t index);
  void pressRight(int32_t index);
  void key(uint16_t virtualKey); // down and up, and served
  void altKey(uint16_t virtualKey);
  // What the box is sent when files are dropped where the pointer stands.
  void drop(const std::vector<std::wstring>& paths);

  // Opens the menu by the action, looks at it, and chooses an entry (0: none) by its number.
  struct MenuSeen {
    std::vector<std::wstring> texts; // a separator is "-"
    std::vector<bool> enabled;       // of the entries that are none
    RECT rect{};
  };
  MenuSeen menu(const WindowTest::Action& opens, uint32_t entry);

  JobTestBed bed;
  TestFolder folder;

 private:
  std::optional<ButtonBoxDialog> dialog_;
};
