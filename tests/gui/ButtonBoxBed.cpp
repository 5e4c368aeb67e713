#include "gui/ButtonBoxBed.h"

#include "app/GuiMainCommands.h"
#include "job/JobConfigFile.h"

#include <shellapi.h>
#include <shlobj.h>

using namespace AppLayer;
using namespace WinLayer;
using namespace WindowTest;

namespace {

constexpr const wchar_t* MenuClass = L"#32768";

HMENU menuOf(HWND window) {
  return reinterpret_cast<HMENU>(SendMessageW(window, MN_GETHMENU, 0, 0));
}

HWND openMenu() {
  for (HWND window : windowsOfClass(MenuClass))
    if (IsWindowVisible(window)) return window;
  return nullptr;
}

} // namespace

// --- The dialog

ButtonBoxDialog::ButtonBoxDialog() : box(JobLayer::LauncherData::instance().buttons) {
  className = "Class_ButtonBoxDialog"_text;
  style = WS_POPUP | WS_SYSMENU;
  fitToBox();
  rect = rect.movedTo(200, 150);
}

void ButtonBoxDialog::fitToBox() {
  box.FitToContent();
  const WinSize size{box.windowWidth, box.windowHeight};
  box.rect = WinRect{0, 0, size.width, size.height}.movedBy(5, 5);
  const WinPoint place{rect.left, rect.top};
  fitToClient({size.width + 10, size.height + 10});
  rect = rect.movedTo(place.x, place.y);
}

int32_t ButtonBoxDialog::OnCommand(WinView& view, uint32_t code) {
  codes.push_back(code);
  if (code == MainCommandButtonsChanged) {
    fitToBox();
    box.moveWindow(true);
    moveWindow(true);
  }
  return WinDialog::OnCommand(view, code);
}

// --- The fixture

ButtonBoxTest::ButtonBoxTest() {
  LauncherOptions& options = LauncherOptions::instance();
  options.horizontal = options.viewTip = false;
  options.buttonAlign = 1;
}

ButtonBoxTest::~ButtonBoxTest() {
  LauncherOptions& options = LauncherOptions::instance();
  options.horizontal = options.viewTip = false;
  options.buttonAlign = 1;
  JobLayer::JobFacts::instance().configFile = {};
}

void ButtonBoxTest::TearDown() {
  close();
  Fixture::TearDown();
  EXPECT_FALSE(GetAsyncKeyState(VK_MENU) & 0x8000);
  EXPECT_FALSE(GetCapture());
}

std::string ButtonBoxTest::says(const std::string& name) {
  return "PutMessage {\r\n  Parameter=" + name + " $(KeyState)$(Drop)$(DropList)\r\n}\r\n";
}

std::string ButtonBoxTest::button(const std::string& name, const std::string& values) {
  return "[Button:" + name + "]\r\n" + values + says(name) + "\r\n";
}

void ButtonBoxTest::open(const std::string& configuration) {
  JobLayer::JobFacts::instance().configFile = folder.write("c.ini", configuration);
  JobLayer::LauncherData& data = JobLayer::LauncherData::instance();
  JobLayer::JobConfigFile::load(folder.file("c.ini"), data.selectors, data.buttons, data.actions);
  dialog_.emplace();
  dialog_->Create();
  ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog_->window); }));
  SetFocus(nullptr);
  settle();
}

void ButtonBoxTest::close() {
  if (dialog_ && dialog_->window) DestroyWindow(dialog_->window);
  settle();
  dialog_.reset();
}

std::string ButtonBoxTest::names() const {
  std::string text;
  for (const JobLayer::JobButtonUnit& unit : buttons().elements())
    text += (text.empty() ? "" : ",") + bytesOf(unit.name);
  return text;
}

WinPoint ButtonBoxTest::onScreen(int32_t x, int32_t y) {
  POINT point{x, y};
  ClientToScreen(box().window, &point);
  return {point.x, point.y};
}

WinPoint ButtonBoxTest::centreOf(int32_t index) {
  const WinRect area = GuiButtonLayout::rectOf(*buttons().at(index));
  return onScreen((area.left + area.right) / 2, (area.top + area.bottom) / 2);
}

void ButtonBoxTest::pointAt(int32_t index) {
  const WinPoint point = centreOf(index);
  movePointer(point.x, point.y);
  settle();
}

void ButtonBoxTest::pressLeft(int32_t index) {
  pointAt(index);
  mouseButton(MOUSEEVENTF_LEFTDOWN);
  mouseButton(MOUSEEVENTF_LEFTUP);
  settle();
}

void ButtonBoxTest::pressRight(int32_t index) {
  pointAt(index);
  mouseButton(MOUSEEVENTF_RIGHTDOWN);
  mouseButton(MOUSEEVENTF_RIGHTUP);
  settle();
}

void ButtonBoxTest::key(uint16_t virtualKey) {
  pressKey(virtualKey);
  settle();
}

void ButtonBoxTest::altKey(uint16_t virtualKey) {
  keyDown(VK_MENU);
  pressKey(virtualKey);
  keyUp(VK_MENU);
  settle();
}

void ButtonBoxTest::drop(const std::vector<std::wstring>& paths) {
  std::wstring list;
  for (const std::wstring& path : paths) list += path + L'\0';
  list += L'\0';
  const SIZE_T bytes = sizeof(DROPFILES) + list.size() * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, bytes);
  auto* head = static_cast<DROPFILES*>(GlobalLock(memory));
  head->pFiles = sizeof(DROPFILES);
  head->fWide = TRUE;
  std::copy(list.begin(), list.end(), reinterpret_cast<wchar_t*>(head + 1));
  GlobalUnlock(memory);
  PostMessageW(box().window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
  settle();
}

ButtonBoxTest::MenuSeen ButtonBoxTest::menu(const Action& opens, uint32_t entry) {
  MenuSeen seen;
  Steps steps;
  steps.when([] { return openMenu() != nullptr; },
             [&] {
               const HWND window = openMenu();
               const HMENU handle = menuOf(window);
               GetWindowRect(window, &seen.rect);
               for (int i = 0; i < GetMenuItemCount(handle); ++i) {
                 wchar_t text[200] = {};
                 const UINT state = GetMenuState(handle, static_cast<UINT>(i), MF_BYPOSITION);
                 GetMenuStringW(handle, static_cast<UINT>(i), text, 200, MF_BYPOSITION);
                 seen.texts.emplace_back((state & MF_SEPARATOR) ? L"-" : text);
                 if (!(state & MF_SEPARATOR))
                   seen.enabled.push_back(!(state & (MF_DISABLED | MF_GRAYED)));
               }
               keyUp(VK_MENU); // where it helped to open the menu
                               // The entries stand in the order of their numbers.
               for (uint32_t i = 0; i < entry; ++i) pressKey(VK_DOWN);
               pressKey(entry == 0 ? VK_ESCAPE : VK_RETURN);
             });
  opens();
  EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !openMenu(); }));
  settle();
  return seen;
}
