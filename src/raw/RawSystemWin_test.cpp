#include "TestText.h"
#include "raw/RawLock.h"
#include "raw/RawProcess.h"
#include "raw/RawSystem.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <thread>

using namespace RawLayer;

namespace {

constexpr int32_t LeftShift = 0xA0;
constexpr int32_t UnusedKey = VK_F24;

HWND waitForWindow(const RawString& title) {
  for (int i = 0; i < 1000; ++i) {
    const RawString number = findWindow(raw("#32770"), title);
    if (!number.isEmpty())
      return reinterpret_cast<HWND>(static_cast<uintptr_t>(std::stoull(bytesOf(number))));
    rawSleep(10);
  }
  return nullptr;
}

// Shows the box, reads its text from outside and closes it.
std::wstring shownText(const RawString& caption, const RawString& text) {
  std::wstring shown = L"no box";
  std::thread reader([&] {
    const HWND box = waitForWindow(caption.shareAs(EncodingUtf8));
    if (box == nullptr) return;
    EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
    EXPECT_NE(GetDlgItem(box, IDOK), nullptr);
    EXPECT_EQ(GetDlgItem(box, IDCANCEL), nullptr);
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
      wchar_t buffer[260];
      if (GetWindowTextW(child, buffer, 260) > 5) shown = buffer;
    }
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  messageBox(caption, text);
  reader.join();
  return shown;
}

void press(WORD key, DWORD flags) {
  INPUT input{};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

} // namespace

TEST(RawSystemWin, AMessageBoxShowsCaptionAndText) {
  EXPECT_EQ(shownText(raw("RawSystem plain box"), raw("plain text")), L"plain text");
}

TEST(RawSystemWin, AMessageBoxShowsForeignLetters) {
  EXPECT_EQ(shownText(raw("RawSystem box \xE3\x82\xBD"), raw("text with \xC3\xA9")),
            L"text with \u00E9");
  EXPECT_EQ(shownText(RawString::fromWide(u"RawSystem wide box"), raw("plain text")),
            L"plain text");
}

TEST(RawSystemWin, AHeldKeyIsSeenInTheThreadsState) {
  BYTE keys[256] = {};
  BYTE before[256];
  ASSERT_TRUE(GetKeyboardState(before));
  keys[LeftShift] = 0x80;
  ASSERT_TRUE(SetKeyboardState(keys));
  EXPECT_TRUE(isKeyDown(LeftShift));
  // A key that is only switched on is not held.
  keys[LeftShift] = 0x01;
  ASSERT_TRUE(SetKeyboardState(keys));
  EXPECT_FALSE(isKeyDown(LeftShift));
  SetKeyboardState(before);
}

TEST(RawSystemWin, AHeldKeyIsSeenAtOnce) {
  EXPECT_FALSE(isKeyDownNow(UnusedKey));
  press(UnusedKey, 0);
  EXPECT_TRUE(isKeyDownNow(UnusedKey));
  press(UnusedKey, KEYEVENTF_KEYUP);
  EXPECT_FALSE(isKeyDownNow(UnusedKey));
}

TEST(RawSystemWin, NamesAreThePlatforms) {
  wchar_t buffer[261];
  ASSERT_NE(GetModuleFileNameW(nullptr, buffer, 261), 0u);
  EXPECT_EQ(moduleName(EncodingWide),
            RawString::fromWide(reinterpret_cast<const char16_t*>(buffer)));
  EXPECT_EQ(userLanguage(), GetUserDefaultUILanguage());
  EXPECT_EQ(currentProcessId(), GetCurrentProcessId());
}
