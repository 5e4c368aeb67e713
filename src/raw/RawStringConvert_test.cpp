#include "raw/RawCodePage.h"
#include "raw/RawString.h"

#include "TestText.h"

#ifndef _WIN32
#include "host/HostFaults.h"
#endif

#include <gtest/gtest.h>

#include <cstring>

using namespace RawLayer;

namespace {

RawString bytesIn(int32_t encoding, const std::string& bytes) {
  return RawString::fromBytes(encoding, bytes.data(), static_cast<int32_t>(bytes.size()));
}

// Letters, kana, a kanji and a character outside of the 16-bit range.
const char* const mixedUtf8 = "a\xC3\xA9\xE3\x81\x82\xE8\xA1\xA8\xF0\x9F\x98\x80";

TEST(RawStringConvert, Utf8GoesToWideAndBackWithoutLoss) {
  const RawString text = raw(mixedUtf8);
  const RawString wide = text.shareAs(EncodingWide);
  EXPECT_EQ(wide.encoding(), EncodingWide);
  EXPECT_TRUE(wide.equals(RawString::fromWide(u"aéあ表\xD83D\xDE00")));
  EXPECT_EQ(wide.wide()[wide.length()], u'\0');
  const RawString back = wide.shareAs(EncodingUtf8);
  EXPECT_EQ(back.encoding(), EncodingUtf8);
  EXPECT_EQ(bytesOf(back), mixedUtf8);
  EXPECT_EQ(back.text()[back.length()], '\0');
}

TEST(RawStringConvert, ResultsHaveExactlyTheRoomTheyNeed) {
  const RawString wide = raw(mixedUtf8).shareAs(EncodingWide);
  EXPECT_EQ(wide.kind(), RawString::KindOwned);
  EXPECT_EQ(wide.capacity(), wide.length());
  EXPECT_EQ(wide.references(), 0);
  const RawString back = wide.shareAs(EncodingShiftJis);
  EXPECT_EQ(back.capacity(), back.length());
  EXPECT_EQ(raw("plain").shareAs(EncodingWide).capacity(), 5);
  EXPECT_EQ(raw("plain").shareAs(EncodingShiftJis).capacity(), 5);
}

TEST(RawStringConvert, ShiftJisPassesThroughWide) {
  const RawString text = bytesIn(EncodingShiftJis, "\x95\x5C\x8E\xA6"); // 表示
  EXPECT_TRUE(text.shareAs(EncodingWide).equals(RawString::fromWide(u"表示")));
  EXPECT_EQ(bytesOf(text.shareAs(EncodingUtf8)), "\xE8\xA1\xA8\xE7\xA4\xBA");
  EXPECT_EQ(bytesOf(raw("\xE8\xA1\xA8\xE7\xA4\xBA").shareAs(EncodingShiftJis)), "\x95\x5C\x8E\xA6");
  EXPECT_EQ(bytesOf(raw("\xEF\xBD\xB1~\\").shareAs(EncodingShiftJis)), "\xB1~\\");
}

TEST(RawStringConvert, Utf16BytesHoldTwoBytesForAUnit) {
  const RawString wide = RawString::fromWide(u"aあ");
  const RawString little = wide.shareAs(EncodingUtf16Le);
  const RawString big = wide.shareAs(EncodingUtf16Be);
  EXPECT_EQ(little.length(), 4);
  EXPECT_EQ(little.capacity(), 4);
  EXPECT_EQ(bytesOf(little), std::string("a\0\x42\x30", 4));
  EXPECT_EQ(bytesOf(big), std::string("\0a\x30\x42", 4));
  EXPECT_TRUE(little.shareAs(EncodingWide).equals(wide));
  EXPECT_TRUE(big.shareAs(EncodingWide).equals(wide));
  EXPECT_TRUE(big.shareAs(EncodingUtf16Le).equals(little));
  EXPECT_EQ(bytesOf(big.shareAs(EncodingUtf8)), "a\xE3\x81\x82");
}

TEST(RawStringConvert, AnOddByteIsDropped) {
  EXPECT_TRUE(
      bytesIn(EncodingUtf16Le, std::string("a\0b", 3)).shareAs(EncodingWide).equals("a"_text));
  const RawString none = bytesIn(EncodingUtf16Be, "x").shareAs(EncodingWide);
  EXPECT_EQ(none.kind(), RawString::KindEmpty);
  EXPECT_EQ(none.encoding(), EncodingWide);
  EXPECT_TRUE(bytesIn(EncodingUtf16Be, "x").shareAs(EncodingUtf8).isEmpty());
}

TEST(RawStringConvert, HalfPairsPassThroughUtf16Bytes) {
  const RawString lone = RawString::fromWide(u"\xD83D!");
  EXPECT_TRUE(lone.shareAs(EncodingUtf16Be).shareAs(EncodingWide).equals(lone));
}

TEST(RawStringConvert, NativeOrderIsThatOfTheMachine) {
  const char16_t unit = 0x0102;
  char bytes[2];
  std::memcpy(bytes, &unit, 2);
  EXPECT_EQ(rawNativeUtf16(), bytes[0] == 1 ? EncodingUtf16Be : EncodingUtf16Le);
}

TEST(RawStringConvert, Utf7IsReadAndWritten) {
  EXPECT_EQ(bytesOf(RawString::fromWide(u"a+あ").shareAs(EncodingUtf7)), "a+-+MEI-");
  EXPECT_EQ(bytesOf(bytesIn(EncodingUtf7, "a+-+MEI-").shareAs(EncodingUtf8)), "a+\xE3\x81\x82");
  EXPECT_EQ(bytesOf(raw("x~y").shareAs(EncodingUtf7)), "x+AH4-y");
}

TEST(RawStringConvert, AnsiIsTheActiveCodePage) {
  EXPECT_EQ(bytesOf(RawString::fromWide(u"plain").shareAs(EncodingAnsi)), "plain");
  EXPECT_EQ(bytesOf(bytesIn(EncodingAnsi, "plain").shareAs(EncodingUtf8)), "plain");
}

TEST(RawStringConvert, BinaryIsReadAsTheActiveCodePage) {
  EXPECT_EQ(bytesOf(bytesIn(EncodingBinary, "plain\x01").shareAs(EncodingUtf8)), "plain\x01");
  EXPECT_EQ(raw("plain").shareAs(EncodingBinary).encoding(), EncodingBinary);
}

TEST(RawStringConvert, EmptyTextsStayEmptyAndTakeTheCode) {
  for (int32_t from = EncodingAnsi; from <= EncodingBinary; ++from)
    for (int32_t to = EncodingAnsi; to <= EncodingBinary; ++to) {
      const RawString result = RawString(from).shareAs(to);
      EXPECT_EQ(result.encoding(), to);
      EXPECT_EQ(result.length(), 0);
      EXPECT_EQ(result.kind(), RawString::KindEmpty);
    }
  EXPECT_EQ(""_text.shareAs(EncodingWide).encoding(), EncodingWide);
  EXPECT_EQ(RawString::withCapacity(9).shareAs(EncodingWide).kind(), RawString::KindEmpty);
}

TEST(RawStringConvert, AsciiIsTheSameInEveryByteEncoding) {
  const std::string ascii = "The quick brown fox, 0123456789 jumps over the lazy dogs";
  for (const int32_t from : {EncodingAnsi, EncodingShiftJis, EncodingUtf8, EncodingUtf7})
    for (const int32_t to : {EncodingAnsi, EncodingShiftJis, EncodingUtf8, EncodingUtf7}) {
      const RawString result = bytesIn(from, ascii).shareAs(to);
      EXPECT_EQ(result.encoding(), to);
      EXPECT_EQ(bytesOf(result), ascii);
    }
}

TEST(RawStringConvert, AForeignByteAnywhereIsConverted) {
  for (std::size_t place = 0; place < 40; ++place) {
    std::string bytes(40, 'x');
    bytes.replace(place, 1, "\xC3\xA9");
    const RawString wide = raw(bytes).shareAs(EncodingWide);
    ASSERT_EQ(wide.length(), 40);
    ASSERT_EQ(wide.at(static_cast<int32_t>(place)), u'é');
    ASSERT_EQ(bytesOf(wide.shareAs(EncodingUtf8)), bytes);
  }
}

TEST(RawStringConvert, ZerosInsideAreConvertedToo) {
  const RawString text = RawString::fromChars("a\0\xC3\xA9", 4);
  EXPECT_EQ(text.shareAs(EncodingWide).length(), 3);
  EXPECT_EQ(text.shareAs(EncodingWide).at(1), 0);
}

TEST(RawStringConvert, SourceStaysAsItIs) {
  const RawString text = raw(mixedUtf8);
  const char* const bytes = text.text();
  EXPECT_EQ(text.shareAs(EncodingShiftJis).encoding(), EncodingShiftJis);
  EXPECT_EQ(text.text(), bytes);
  EXPECT_EQ(text.references(), 0);
  EXPECT_EQ(text.encoding(), EncodingUtf8);
}

TEST(RawStringConvert, ViewsAndStaticTextsAreConverted) {
  const RawString view = RawString::viewOf(EncodingUtf8, "\xC3\xA9rest", 2);
  EXPECT_TRUE(view.shareAs(EncodingWide).equals(RawString::fromWide(u"é")));
  EXPECT_TRUE("\xC3\xA9"_text.shareAs(EncodingWide).equals(RawString::fromWide(u"é")));
}

TEST(RawStringConvert, FaultyTextsKeepTheirGoodParts) {
  EXPECT_TRUE(raw("a\xFF\x62").shareAs(EncodingWide).equals(RawString::fromWide(u"a\xFFFD\x62")));
  EXPECT_EQ(bytesOf(RawString::fromWide(u"a\x4E01\xE000\x0E01z").shareAs(EncodingShiftJis)),
            "a\x92\x9A\xF0\x40?z");
  EXPECT_EQ(bytesOf(RawString::fromWide(u"a\xD800z").shareAs(EncodingUtf8)), "a\xEF\xBF\xBDz");
}

#ifndef _WIN32
TEST(RawStringConvert, AFailureGivesAnEmptyText) {
  const RawString text = raw(mixedUtf8);
  const RawString wide = text.shareAs(EncodingWide);
  HostFaults::Scope faults;
  // Each conversion asks for the size and then fills the memory: either may fail.
  for (int32_t call = 1; call <= 2; ++call) {
    faults.failNth(call, HostFaults::Conversion);
    const RawString failed = text.shareAs(EncodingWide);
    EXPECT_EQ(failed.kind(), RawString::KindEmpty) << call;
    EXPECT_EQ(failed.encoding(), EncodingWide);
    faults.failNth(call, HostFaults::Conversion);
    const RawString back = wide.shareAs(EncodingShiftJis);
    EXPECT_EQ(back.kind(), RawString::KindEmpty) << call;
    EXPECT_EQ(back.encoding(), EncodingShiftJis);
  }
  for (int32_t call = 1; call <= 4; ++call) {
    faults.failNth(call, HostFaults::Conversion);
    EXPECT_TRUE(text.shareAs(EncodingShiftJis).isEmpty()) << call;
  }
  faults.failNone();
  EXPECT_EQ(text.shareAs(EncodingWide).length(), wide.length());
}
#endif

TEST(RawStringConvert, CodePagesOfTheCodes) {
  const uint32_t expected[] = {0, 932, 65001, 65000, 2, 0, 0, 0, 0};
  for (int32_t code = 0; code < 9; ++code) EXPECT_EQ(rawCodePageOf(code), expected[code]) << code;
  EXPECT_EQ(rawCodePageOf(-1), 0U);
  EXPECT_EQ(rawCodePageOf(9), 0U);
}

} // namespace
