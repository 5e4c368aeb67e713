#include "TestText.h"
#include "raw/RawClipboard.h"
#include "raw/RawLock.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <thread>

using namespace RawLayer;

namespace {

// What the clipboard holds first: its format and its bytes up to the terminator of that format.
struct Content {
  UINT format = 0;
  std::string bytes;
};

Content content() {
  Content result;
  if (!OpenClipboard(nullptr)) return result;
  // The formats that the system makes from the one put there come behind it.
  result.format = EnumClipboardFormats(0);
  const HANDLE memory = GetClipboardData(result.format);
  if (const void* data = GlobalLock(memory)) {
    result.bytes = result.format == CF_UNICODETEXT
                       ? std::string(static_cast<const char*>(data),
                                     wcslen(static_cast<const wchar_t*>(data)) * sizeof(wchar_t))
                       : std::string(static_cast<const char*>(data));
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return result;
}

Content afterSetting(const RawString& text) {
  EXPECT_TRUE(setClipboard(text, text.all()));
  return content();
}

} // namespace

TEST(RawClipboardWin, AsciiGoesOutAsNarrowText) {
  const Content plain = afterSetting(raw("plain"));
  EXPECT_EQ(plain.format, static_cast<UINT>(CF_TEXT));
  EXPECT_EQ(plain.bytes, "plain");
  const Content empty = afterSetting(raw(""));
  EXPECT_EQ(empty.format, static_cast<UINT>(CF_TEXT));
  EXPECT_EQ(empty.bytes, "");
}

TEST(RawClipboardWin, AnsiGoesOutAsItStands) {
  const Content ansi = afterSetting(RawString::fromBytes(EncodingAnsi, "\xE9x", 2));
  EXPECT_EQ(ansi.format, static_cast<UINT>(CF_TEXT));
  EXPECT_EQ(ansi.bytes, "\xE9x");
}

TEST(RawClipboardWin, AllOtherTextGoesOutAsWideText) {
  const Content utf8 = afterSetting(raw("\xC3\xA9\xE3\x82\xBD"));
  EXPECT_EQ(utf8.format, static_cast<UINT>(CF_UNICODETEXT));
  EXPECT_EQ(utf8.bytes, std::string("\xE9\0\xBD\x30", 4));
  const Content wide = afterSetting(RawString::fromWide(u"plain"));
  EXPECT_EQ(wide.format, static_cast<UINT>(CF_UNICODETEXT));
  EXPECT_EQ(wide.bytes.size(), 10u);
}

TEST(RawClipboardWin, AClipboardHeldByAnotherFails) {
  ASSERT_TRUE(setClipboard(raw("before"), {0, 6}));
  std::atomic<int> step = 0;
  std::thread holder([&] {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const bool open = OpenClipboard(window) != 0;
    step = open ? 1 : -1;
    while (step == 1) rawSleep(1);
    if (open) CloseClipboard();
    DestroyWindow(window);
  });
  while (step == 0) rawSleep(1);
  EXPECT_EQ(step, 1);
  EXPECT_FALSE(setClipboard(raw("after"), {0, 5}));
  EXPECT_TRUE(getClipboard(100).isEmpty());
  EXPECT_EQ(getClipboard(100).encoding(), EncodingWide);
  step = 2;
  holder.join();
  EXPECT_EQ(getClipboard(100), RawString::fromWide(u"before"));
}

TEST(RawClipboardWin, AClipboardWithoutTextIsEmpty) {
  ASSERT_TRUE(OpenClipboard(nullptr));
  EmptyClipboard();
  CloseClipboard();
  EXPECT_TRUE(getClipboard(100).isEmpty());
  EXPECT_EQ(getClipboard(100).encoding(), EncodingWide);
}
