// A selector box over a real configuration file, in a dialog that stands for the main one.
#pragma once

#include "JobTestBed.h"
#include "app/GuiSelectorBox.h"
#include "app/GuiSelectorMenu.h"
#include "job/JobConfigFile.h"
#include "window/InputFixture.h"
#include "window/TestDialog.h"

#include <shlobj.h>

namespace WindowTest {

// A dialog whose test sees each command as it comes.
class WatchedDialog : public TestDialog {
 public:
  std::function<void(uint32_t)> onCommand;
  int32_t OnCommand(WinLayer::WinView& view, uint32_t code) override {
    if (onCommand) onCommand(code);
    return TestDialog::OnCommand(view, code);
  }
};

class SelectorBoxFixture : public InputFixture {
 protected:
  using Box = AppLayer::GuiSelectorBox;
  using Menu = AppLayer::GuiSelectorMenu;

  JobTestBed bed;
  TestFolder folder;
  WatchedDialog dialog;
  JobLayer::JobSelectorList& selectors = JobLayer::LauncherData::instance().selectors;
  Box box{selectors}; // goes first, and leaves the dialog

  void SetUp() override {
    InputFixture::SetUp();
    oldConfigFile_ = JobLayer::JobFacts::instance().configFile;
    JobTestBed::setVariable("Seen", "");
  }
  void TearDown() override {
    JobLayer::JobFacts::instance().configFile = oldConfigFile_;
    InputFixture::TearDown();
  }

  // One section for each name; its script adds "name:key;" to the variable Seen.
  static std::string sections(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
      text += "[Selector:" + name +
              "]\r\nExpand {\r\n  Before=$(Seen)\r\n  Key=$(KeyState)\r\n  Define {\r\n    "
              "Seen=$(Before)" +
              name + ":$(Key);\r\n  }\r\n}\r\n\r\n";
    return text;
  }
  void load(const std::string& configuration) {
    JobLayer::JobFacts::instance().configFile = folder.write("c.ini", configuration);
    JobLayer::LauncherData& data = JobLayer::LauncherData::instance();
    JobLayer::JobConfigFile::load(data.selectors, data.buttons, data.actions);
    JobTestBed::setVariable("Seen", "");
  }
  void measure() {
    box.fill();
    box.FitToContent();
    box.rect = WinLayer::WinRect{0, 0, box.windowWidth, box.windowHeight}.movedTo(10, 10);
  }
  // Rows of a fixed look, so that a test can name pixels: the box 100 wide, 30 higher than its
  // rows.
  void show(const std::string& configuration) {
    load(configuration);
    measure();
    box.rect.right = 110;
    box.rect.bottom += 30;
    dialog.Create();
    dialog.addChild(box);
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
    target = box.window;
    SetFocus(target);
    settle();
    dialog.diary.clear();
  }
  void showRows(const std::vector<std::string>& names) { show(sections(names)); }

  static std::string takeSeen() {
    const std::string seen = JobTestBed::variable("Seen");
    JobTestBed::setVariable("Seen", "");
    return seen;
  }
  // The names of rows and entries, marked ones in brackets; both must be the same but for marks.
  std::string shown() {
    std::string text;
    for (const WinLayer::WinListBoxItemUnit& item : box.items.elements()) {
      const std::string name = bytesOf(Box::dataOf(item)->name);
      text += item.isMarked() ? "[" + name + "]" : name;
    }
    return text;
  }
  std::string names() {
    std::string text;
    for (const JobLayer::JobSelectorUnit& unit : selectors.elements()) text += bytesOf(unit.name);
    return text;
  }
  void mark(const std::vector<int32_t>& rows) {
    box.clearMarks();
    for (const int32_t row : rows) box.unitAt(row)->mark(true);
  }
  // The middle of a row, in the client.
  int32_t middleOf(int32_t row) {
    const WinLayer::WinRect place = box.shownRect(box.unitAt(row)->rect);
    return (place.top + place.bottom) / 2;
  }
  void pressRow(int32_t row) { press(20, middleOf(row)); }
  std::string file() { return folder.read("c.ini"); }
  void paint() {
    box.invalidate();
    UpdateWindow(box.window);
  }
  COLORREF at(int32_t x, int32_t y) { return pixel(box.window, x, y); }

  void keyWithAlt(uint16_t code) {
    keyDown(VK_MENU);
    pressKey(code);
    keyUp(VK_MENU);
    settle();
  }
  // Drops files with the pointer at a point of the client.
  void drop(const std::vector<std::wstring>& paths, int32_t x, int32_t y, bool withAlt = false) {
    POINT place{x, y};
    ClientToScreen(box.window, &place);
    movePointer(place.x, place.y);
    settle();
    std::wstring text;
    for (const std::wstring& path : paths) text += path + L'\0';
    text.append(2, L'\0'); // where no path ends the list needs both
    const size_t size = text.size() * sizeof(wchar_t);
    const HGLOBAL block = GlobalAlloc(GHND, sizeof(DROPFILES) + size);
    auto* files = static_cast<DROPFILES*>(GlobalLock(block));
    files->pFiles = sizeof(DROPFILES);
    files->fWide = TRUE;
    memcpy(files + 1, text.data(), size);
    GlobalUnlock(block);
    // Behind the move, which would bring the keys of the display with it.
    if (withAlt) keyDown(VK_MENU);
    settle();
    PostMessageW(box.window, WM_DROPFILES, reinterpret_cast<WPARAM>(block), 0);
    settle();
    if (!withAlt) return;
    pressKey(VK_F13); // Alt alone would open the window's menu
    keyUp(VK_MENU);
    settle();
  }

 private:
  RawLayer::RawString oldConfigFile_;
};

// The popup menu that is open, or null.
inline HWND openMenu() {
  const HWND menu = FindWindowW(L"#32768", nullptr);
  return menu && IsWindowVisible(menu) ? menu : nullptr;
}

// Its entries: the id, in brackets when it can be chosen; a line as "|".
inline std::string entriesOfMenu() {
  const auto menu = reinterpret_cast<HMENU>(SendMessageW(openMenu(), MN_GETHMENU, 0, 0));
  std::string text;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
    const std::string id = std::to_string(GetMenuItemID(menu, i));
    text += state & MF_SEPARATOR ? "|" : state & (MF_DISABLED | MF_GRAYED) ? id : "[" + id + "]";
  }
  return text;
}

} // namespace WindowTest
