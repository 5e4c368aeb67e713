#include "TestText.h"
#include "raw/RawGui.h"
#include "raw/RawOwner.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <shlobj.h>

#include <cstring>
#include <vector>

using namespace RawLayer;

namespace {

struct MenuCloser {
  using Handle = HMENU;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DestroyMenu(handle); }
};
struct ContextCloser {
  using Handle = HDC;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { DeleteDC(handle); }
};
struct MemoryCloser {
  using Handle = HGLOBAL;
  static Handle none() { return nullptr; }
  static void close(Handle handle) { GlobalFree(handle); }
};

std::wstring captionAt(HMENU menu, UINT position) {
  wchar_t buffer[100] = L"";
  GetMenuStringW(menu, position, buffer, 100, MF_BYPOSITION);
  return buffer;
}

// What a drop of these files gives.
RawOwner<MemoryCloser> dropOf(const std::wstring& names) {
  const std::size_t bytes = sizeof(DROPFILES) + (names.size() + 1) * sizeof(wchar_t);
  RawOwner<MemoryCloser> memory(GlobalAlloc(GHND, bytes));
  auto* drop = static_cast<DROPFILES*>(GlobalLock(memory.get()));
  drop->pFiles = sizeof(DROPFILES);
  drop->fWide = TRUE;
  std::memcpy(drop + 1, names.data(), names.size() * sizeof(wchar_t));
  GlobalUnlock(memory.get());
  return memory;
}

// Distance from the start of the text to the end of its first `count` units, by another call.
int32_t widthOf(HDC context, const wchar_t* text, int count) {
  SIZE size{};
  GetTextExtentPoint32W(context, text, count, &size);
  return size.cx;
}

class RawTextExtent : public testing::Test {
 protected:
  // Measures and gives the distances.
  std::vector<int32_t> measure(const RawString& text, RawRange range, int32_t width) {
    std::vector<int32_t> positions(static_cast<std::size_t>(range.clamped(text.length()).size()),
                                   -1);
    EXPECT_TRUE(textExtent(context_.get(), text, range, width, fit_, positions.data()));
    return positions;
  }

  RawOwner<ContextCloser> context_{CreateCompatibleDC(nullptr)};
  int32_t fit_ = -1;
};

constexpr int32_t Wide = 10000;

} // namespace

TEST(RawGuiWin, MenuEntriesGoInFrontOfTheirPosition) {
  const RawOwner<MenuCloser> menu(CreatePopupMenu());
  EXPECT_TRUE(insertMenu(menu.get(), 0, MF_BYPOSITION, 7, raw("second")));
  EXPECT_TRUE(insertMenu(menu.get(), 0, MF_BYPOSITION, 8, raw("first \xE3\x82\xBD")));
  EXPECT_TRUE(insertMenu(menu.get(), 0xFFFFFFFF, MF_BYPOSITION, 9, RawString::fromWide(u"last")));
  EXPECT_TRUE(insertMenu(menu.get(), 7, MF_BYCOMMAND, 10, raw("between")));
  ASSERT_EQ(GetMenuItemCount(menu.get()), 4);
  EXPECT_EQ(captionAt(menu.get(), 0), L"first \u30BD");
  EXPECT_EQ(captionAt(menu.get(), 1), L"between");
  EXPECT_EQ(captionAt(menu.get(), 2), L"second");
  EXPECT_EQ(captionAt(menu.get(), 3), L"last");
  EXPECT_EQ(GetMenuItemID(menu.get(), 3), 9u);
}

TEST(RawGuiWin, ASubmenuIsAnEntryToo) {
  const RawOwner<MenuCloser> menu(CreatePopupMenu());
  RawOwner<MenuCloser> inner(CreatePopupMenu());
  EXPECT_TRUE(insertMenu(menu.get(), 0, MF_BYPOSITION | MF_POPUP,
                         reinterpret_cast<uintptr_t>(inner.get()), raw("more")));
  EXPECT_EQ(GetSubMenu(menu.get(), 0), inner.get());
  (void)inner.detach(); // goes with the menu
}

TEST(RawGuiWin, AnEntryOfNoMenuFails) {
  EXPECT_FALSE(insertMenu(nullptr, 0, MF_BYPOSITION, 1, raw("x")));
}

TEST(RawGuiWin, DroppedFilesHaveTheirPaths) {
  const auto drop = dropOf(std::wstring(L"c:\\one.txt\0c:\\\u30BD.txt\0", 20));
  EXPECT_EQ(dropFileCount(drop.get()), 2u);
  EXPECT_EQ(dropFile(drop.get(), 0), raw("c:\\one.txt"));
  EXPECT_EQ(dropFile(drop.get(), 1), raw("c:\\\xE3\x82\xBD.txt"));
  EXPECT_EQ(dropFile(drop.get(), 0, EncodingAnsi), raw("c:\\one.txt"));
  EXPECT_EQ(dropFile(drop.get(), 0, EncodingAnsi).encoding(), EncodingAnsi);
  EXPECT_EQ(dropFile(drop.get(), 1, EncodingWide), RawString::fromWide(u"c:\\\u30BD.txt"));
  EXPECT_TRUE(dropFile(drop.get(), 2).isEmpty());
  EXPECT_TRUE(dropFile(drop.get(), 0xFFFFFFFF).isEmpty());
}

TEST(RawGuiWin, APathThatIsTooLongIsNotCutDown) {
  const std::wstring fits = L"c:\\" + std::wstring(257, L'x');
  const auto drop = dropOf(fits + L'\0' + fits + L'y' + L'\0');
  EXPECT_EQ(dropFile(drop.get(), 0).length(), 260);
  EXPECT_TRUE(dropFile(drop.get(), 1).isEmpty());
}

TEST_F(RawTextExtent, PlainTextIsMeasuredUnitByUnit) {
  const auto positions = measure(raw("iWi"), {0, 3}, Wide);
  EXPECT_EQ(fit_, 3);
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(positions[static_cast<std::size_t>(i)], widthOf(context_.get(), L"iWi", i + 1));
}

TEST_F(RawTextExtent, WideTextIsMeasuredAsItStands) {
  const auto positions = measure(RawString::fromWide(u"xi\u00E9W"), {1, 4}, Wide);
  EXPECT_EQ(fit_, 3);
  ASSERT_EQ(positions.size(), 3u);
  EXPECT_EQ(positions[2], widthOf(context_.get(), L"i\u00E9W", 3));
}

TEST_F(RawTextExtent, BytesOfACharacterShareItsPosition) {
  const auto positions = measure(raw("i\xC3\xA9W"), {0, 4}, Wide);
  EXPECT_EQ(fit_, 4);
  EXPECT_EQ(positions[0], widthOf(context_.get(), L"i", 1));
  EXPECT_EQ(positions[1], widthOf(context_.get(), L"i\u00E9", 2));
  EXPECT_EQ(positions[2], positions[1]);
  EXPECT_EQ(positions[3], widthOf(context_.get(), L"i\u00E9W", 3));
}

TEST_F(RawTextExtent, WhatFitsIsCountedInTheTextsOwnUnits) {
  const int32_t two = widthOf(context_.get(), L"W\u00E9", 2);
  measure(raw("W\xC3\xA9W"), {0, 4}, two);
  EXPECT_EQ(fit_, 3);
  measure(raw("W\xC3\xA9W"), {0, 4}, two - 1);
  EXPECT_EQ(fit_, 1);
  measure(raw("WWW"), {0, 3}, widthOf(context_.get(), L"WW", 2));
  EXPECT_EQ(fit_, 2);
}

TEST_F(RawTextExtent, EmptyRangesFit) {
  measure(raw(""), {0, 0}, Wide);
  EXPECT_EQ(fit_, 0);
  measure(raw("abc"), {2, 2}, Wide);
  EXPECT_EQ(fit_, 0);
}

TEST_F(RawTextExtent, OtherEncodingsCannotBeMeasured) {
  const RawString text = RawString::fromBytes(EncodingUtf16Le, "a\0b", 4);
  int32_t positions[4];
  EXPECT_FALSE(textExtent(context_.get(), text, text.all(), Wide, fit_, positions));
  EXPECT_EQ(fit_, 0);
}

TEST_F(RawTextExtent, PositionsNeedNotBeAskedFor) {
  EXPECT_TRUE(textExtent(context_.get(), raw("abc"), {0, 3}, Wide, fit_, nullptr));
  EXPECT_EQ(fit_, 3);
  EXPECT_TRUE(textExtent(context_.get(), raw("a\xC3\xA9"), {0, 3}, Wide, fit_, nullptr));
  EXPECT_EQ(fit_, 3);
}
