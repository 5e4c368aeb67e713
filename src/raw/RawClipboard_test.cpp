#include "raw/RawClipboard.h"

#include "TestText.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "host/HostClipboard.h"
#include "host/HostFaults.h"
#endif

using namespace RawLayer;

namespace {

RawString afterSetting(const RawString& text, RawRange range, int32_t limit = 65535) {
  EXPECT_TRUE(setClipboard(text, range));
  const RawString result = getClipboard(limit);
  EXPECT_EQ(result.encoding(), EncodingWide);
  return result;
}
RawString afterSetting(const RawString& text, int32_t limit = 65535) {
  return afterSetting(text, text.all(), limit);
}

} // namespace

TEST(RawClipboard, ATextComesBackAsWideText) {
  EXPECT_EQ(afterSetting(raw("plain")), RawString::fromWide(u"plain"));
  EXPECT_EQ(afterSetting(raw("\xC3\xA9\xE3\x82\xBD")), RawString::fromWide(u"\u00E9\u30BD"));
  EXPECT_EQ(afterSetting(RawString::fromWide(u"\u30BD")), RawString::fromWide(u"\u30BD"));
  EXPECT_EQ(afterSetting(raw("two\r\nlines")), RawString::fromWide(u"two\r\nlines"));
}

TEST(RawClipboard, OnlyTheRangeGoesOut) {
  EXPECT_EQ(afterSetting(raw("abcdef"), {2, 4}), RawString::fromWide(u"cd"));
  EXPECT_EQ(afterSetting(raw("\xC3\xA9"
                             "abc"),
                         {2, 100}),
            RawString::fromWide(u"abc"));
  EXPECT_EQ(afterSetting(RawString::fromWide(u"a\u30BDb"), {1, 2}), RawString::fromWide(u"\u30BD"));
  EXPECT_EQ(afterSetting(raw("abc"), {2, 2}), RawString::fromWide(u""));
}

TEST(RawClipboard, TheCopyStopsAtTheFirstZero) {
  EXPECT_EQ(afterSetting(raw(std::string("ab\0cd", 5))), RawString::fromWide(u"ab"));
  EXPECT_EQ(afterSetting(RawString::fromWide(u"\u30BD\0x", 3)), RawString::fromWide(u"\u30BD"));
  EXPECT_EQ(afterSetting(raw(std::string("\xC3\xA9\0x", 4))), RawString::fromWide(u"\u00E9"));
}

TEST(RawClipboard, AnEmptyTextIsATextToo) {
  EXPECT_EQ(afterSetting(raw("")), RawString::fromWide(u""));
  EXPECT_EQ(afterSetting(RawString(EncodingWide)), RawString::fromWide(u""));
}

TEST(RawClipboard, ALongTextIsCutAtTheLimit) {
  EXPECT_EQ(afterSetting(raw("abcdef"), 3), RawString::fromWide(u"abc"));
  EXPECT_EQ(afterSetting(raw("abcdef"), 6), RawString::fromWide(u"abcdef"));
  EXPECT_EQ(afterSetting(raw("abcdef"), 0), RawString::fromWide(u""));
  EXPECT_EQ(afterSetting(raw("abcdef"), -1), RawString::fromWide(u""));
  EXPECT_EQ(afterSetting(raw(std::string(100000, 'x'))).length(), 65535);
}

TEST(RawClipboard, AViewIsCopied) {
  const char bytes[] = {'a', 'b', 'c', 'd'};
  EXPECT_EQ(afterSetting(RawString::viewOf(EncodingUtf8, bytes, 3)), RawString::fromWide(u"abc"));
}

#ifndef _WIN32

TEST(RawClipboard, TheFormatFollowsTheText) {
  HostClipboard::Scope clipboard;
  const auto formatOf = [&](const RawString& text) {
    EXPECT_TRUE(setClipboard(text, text.all()));
    return clipboard.format();
  };
  EXPECT_EQ(formatOf(raw("plain")), 1u);
  EXPECT_EQ(clipboard.bytes(), std::string("plain\0", 6));
  EXPECT_EQ(formatOf(raw("")), 1u);
  EXPECT_EQ(clipboard.bytes(), std::string("\0", 1));
  EXPECT_EQ(formatOf(RawString(EncodingWide)), 1u);
  EXPECT_EQ(formatOf(RawString::fromBytes(EncodingAnsi, "\xE9", 1)), 1u);
  EXPECT_EQ(clipboard.bytes(), std::string("\xE9\0", 2));
  EXPECT_EQ(formatOf(RawString::fromBytes(EncodingShiftJis, "\x83\x5C", 2)), 1u);
  EXPECT_EQ(clipboard.bytes(), std::string("\x83\x5C\0", 3));
  EXPECT_EQ(formatOf(raw("\xC3\xA9")), 13u);
  EXPECT_EQ(clipboard.bytes(), std::string("\xE9\0\0\0", 4));
  EXPECT_EQ(formatOf(RawString::fromWide(u"plain")), 13u);
  EXPECT_EQ(clipboard.bytes().size(), 12u);
}

TEST(RawClipboard, AClipboardThatCannotBeOpenedFails) {
  HostClipboard::Scope clipboard;
  EXPECT_TRUE(setClipboard(raw("before"), {0, 6}));
  clipboard.hold(true);
  EXPECT_FALSE(setClipboard(raw("after"), {0, 5}));
  EXPECT_TRUE(getClipboard(10).isEmpty());
  EXPECT_EQ(getClipboard(10).encoding(), EncodingWide);
  clipboard.hold(false);
  EXPECT_EQ(getClipboard(10), RawString::fromWide(u"before"));
  HostFaults::Scope faults;
  faults.failAll(HostFaults::Clipboard);
  EXPECT_FALSE(setClipboard(raw("after"), {0, 5}));
  EXPECT_TRUE(getClipboard(10).isEmpty());
}

TEST(RawClipboard, AClipboardWithoutTextIsEmpty) {
  const HostClipboard::Scope clipboard;
  EXPECT_TRUE(getClipboard(10).isEmpty());
  EXPECT_EQ(getClipboard(10).encoding(), EncodingWide);
}

#endif
