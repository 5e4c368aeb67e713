// A dialog with one edit box (2500) that has the focus, and what a test asks of it.
#pragma once

#include "raw/RawClipboard.h"
#include "win/WinEditBox.h"
#include "window/InputFixture.h"
#include "window/TestDialog.h"

namespace WindowTest {

using RawLayer::RawRange;
using RawLayer::RawString;

inline RawString wide(const std::u16string& text) {
  return RawString::fromWide(text.data(), static_cast<int32_t>(text.size()));
}
inline std::u16string unitsOf(const RawString& text) {
  const RawString units = text.shareAs(RawLayer::EncodingWide);
  return {units.wide(), static_cast<std::size_t>(units.length())};
}

// The open popup menu, or null.
inline HWND shownMenu() {
  for (HWND each : windowsOfClass(L"#32768"))
    if (IsWindowVisible(each)) return each;
  return nullptr;
}

inline constexpr UINT MenuOfWindow = 0x01E1; // asks a menu's window for the menu

struct MenuEntry {
  uint32_t id;
  std::wstring text;
  bool isEnabled;
};

inline std::vector<MenuEntry> entriesOf(HWND menuWindow) {
  const auto menu = reinterpret_cast<HMENU>(SendMessageW(menuWindow, MenuOfWindow, 0, 0));
  std::vector<MenuEntry> entries;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    wchar_t text[200] = {};
    GetMenuStringW(menu, static_cast<UINT>(i), text, 200, MF_BYPOSITION);
    const UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
    entries.push_back({GetMenuItemID(menu, i), text, !(state & (MF_DISABLED | MF_GRAYED))});
  }
  return entries;
}

class EditBoxFixture : public InputFixture {
 protected:
  TestDialog dialog;
  WinLayer::WinEditBox box;
  Diary& diary = dialog.diary;

  void open(const std::u16string& text, uint16_t flags = 0,
            WinLayer::WinRect place = {10, 10, 210, 34}) {
    box.rect = place;
    box.info.flags = flags;
    box.SetTitle(wide(text));
    dialog.Create();
    dialog.addChild(box);
    target = box.window;
    ASSERT_TRUE(pumpUntil([this] { return bringToFront(dialog.window); }));
    SetFocus(box.window);
    ASSERT_TRUE(pumpUntil([this] { return GetFocus() == box.window; }));
    settle();
    diary.clear();
  }
  void TearDown() override {
    if (dialog.window) DestroyWindow(dialog.window);
    InputFixture::TearDown();
  }

  [[nodiscard]] std::u16string text() const { return unitsOf(box.info.text); }
  [[nodiscard]] std::u16string selected() const { return unitsOf(box.info.selectedText()); }
  // "3", or "1-3" from the anchor to the caret.
  [[nodiscard]] std::string place() const {
    const std::string caret = std::to_string(box.info.caret);
    return box.info.anchor == box.info.caret ? caret
                                             : std::to_string(box.info.anchor) + "-" + caret;
  }
  [[nodiscard]] int64_t told(const std::string& code) const {
    return timesOf(diary, "command 2500 " + code);
  }
  static std::u16string clipboard() { return unitsOf(RawLayer::getClipboard(1000)); }
  static void fillClipboard(const std::u16string& content) {
    const RawString units = wide(content);
    ASSERT_TRUE(RawLayer::setClipboard(units, units.all()));
  }
  // Pixels of the client where the position is.
  [[nodiscard]] WinLayer::WinPoint at(int32_t position) const {
    const WinLayer::WinPoint point = box.info.pointOf(position);
    return {point.x, point.y + box.info.lineHeight / 2};
  }

  std::vector<MenuEntry> entries;
  // Opens the menu by the right button, looks at it and chooses the n-th entry; 0 closes it.
  void choose(int number) {
    Steps steps;
    steps.when([] { return shownMenu() != nullptr; },
               [&] {
                 entries = entriesOf(shownMenu());
                 for (int i = 0; i < number; ++i) pressKey(VK_DOWN);
                 pressKey(number ? VK_RETURN : VK_ESCAPE);
               });
    rightPress(150, 10);
    EXPECT_TRUE(pumpUntil([&] { return steps.areDone() && !shownMenu(); }));
    settle();
  }
  [[nodiscard]] bool isEnabled(uint32_t id) const {
    for (const MenuEntry& entry : entries)
      if (entry.id == id) return entry.isEnabled;
    ADD_FAILURE() << "no entry " << id;
    return false;
  }
  void control(uint16_t letter) { keyWith(VK_CONTROL, letter); }
  void shift(uint16_t letter) { keyWith(VK_SHIFT, letter); }
};

} // namespace WindowTest
