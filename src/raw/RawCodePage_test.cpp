#include "raw/RawCodePage.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace RawLayer;

namespace {

constexpr uint32_t ansi = 0;
constexpr uint32_t shiftJis = 932;
constexpr uint32_t utf7 = 65000;
constexpr uint32_t utf8 = 65001;

std::u16string toWide(uint32_t page, const std::string& bytes) {
  std::u16string units(bytes.size() * 2 + 1, u'#');
  const RawConversion result = rawToWide(page, bytes.data(), static_cast<int32_t>(bytes.size()),
                                         units.data(), static_cast<int32_t>(units.size()));
  EXPECT_EQ(result.error, 0U);
  units.resize(static_cast<std::size_t>(result.count));
  return units;
}

std::string fromWide(uint32_t page, const std::u16string& units) {
  std::string bytes(units.size() * 8 + 1, '#');
  const RawConversion result = rawFromWide(page, units.data(), static_cast<int32_t>(units.size()),
                                           bytes.data(), static_cast<int32_t>(bytes.size()));
  EXPECT_EQ(result.error, 0U);
  bytes.resize(static_cast<std::size_t>(result.count));
  return bytes;
}

TEST(RawCodePage, WithoutRoomTheCountIsAsked) {
  EXPECT_EQ(rawToWide(utf8, "a\xE3\x81\x82", 4, nullptr, 0).count, 2);
  EXPECT_EQ(rawFromWide(utf8, u"aあ", 2, nullptr, 0).count, 4);
  EXPECT_EQ(rawFromWide(shiftJis, u"aあ", 2, nullptr, 0).count, 3);
  EXPECT_EQ(rawFromWide(utf7, u"あ", 1, nullptr, 0).count, 5);
}

TEST(RawCodePage, TooLittleRoomIsError122) {
  char16_t units[1];
  EXPECT_EQ(rawToWide(utf8, "ab", 2, units, 1).error, RawConversionNoRoom);
  EXPECT_EQ(rawToWide(shiftJis, "ab", 2, units, 1).error, RawConversionNoRoom);
  EXPECT_EQ(rawToWide(utf7, "ab", 2, units, 1).error, RawConversionNoRoom);
  char bytes[2];
  EXPECT_EQ(rawFromWide(utf8, u"あ", 1, bytes, 2).error, RawConversionNoRoom);
  EXPECT_EQ(rawFromWide(shiftJis, u"aあ", 2, bytes, 2).error, RawConversionNoRoom);
  EXPECT_EQ(rawFromWide(utf7, u"あ", 1, bytes, 2).error, RawConversionNoRoom);
}

TEST(RawCodePage, NothingIsNothingAndNoError) {
  for (const uint32_t page : {ansi, shiftJis, utf7, utf8}) {
    EXPECT_EQ(rawToWide(page, "", 0, nullptr, 0).count, 0);
    EXPECT_EQ(rawToWide(page, "", 0, nullptr, 0).error, 0U);
    EXPECT_EQ(rawFromWide(page, u"", 0, nullptr, 0).error, 0U);
    EXPECT_EQ(rawToWide(page, "abc", -1, nullptr, 0).count, 0);
  }
}

TEST(RawCodePage, UnknownPagesFail) {
  EXPECT_NE(rawToWide(12345, "a", 1, nullptr, 0).error, 0U);
  EXPECT_EQ(rawToWide(12345, "a", 1, nullptr, 0).count, 0);
  EXPECT_NE(rawFromWide(12345, u"a", 1, nullptr, 0).error, 0U);
}

TEST(RawCodePage, Utf8FaultsBecomeReplacementCharacters) {
  EXPECT_EQ(toWide(utf8, "a\x80z"), u"a\xFFFDz");
  EXPECT_EQ(toWide(utf8, "\xC0\xAF"), u"\xFFFD\xFFFD");
  EXPECT_EQ(toWide(utf8, "\xE3\x81z"), u"\xFFFDz");
  EXPECT_EQ(toWide(utf8, "\xE3"), u"\xFFFD");
  EXPECT_EQ(toWide(utf8, "\xE3z"), u"\xFFFD") << "what would belong to the character goes with it";
  EXPECT_EQ(toWide(utf8, "\xE3zz"), u"\xFFFDzz");
  EXPECT_EQ(toWide(utf8, "\xED\xA0\x80"), u"\xFFFD\xFFFD");
  EXPECT_EQ(toWide(utf8, "\xF4\x90\x80\x80"), u"\xFFFD\xFFFD\xFFFD");
  EXPECT_EQ(toWide(utf8, "\xF0\x9F\x98\x80"), u"\xD83D\xDE00");
  EXPECT_EQ(fromWide(utf8, u"\xDE00\xD83D"), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(RawCodePage, ShiftJisFaultsBecomeTheMiddleDot) {
  EXPECT_EQ(toWide(shiftJis, "\x82\xA0"), u"あ");
  EXPECT_EQ(toWide(shiftJis, "\x82\x39z"), u"\x30FBz");
  EXPECT_EQ(toWide(shiftJis, "\x82"), u"\x30FB");
  EXPECT_EQ(toWide(shiftJis, std::string("\x82\0z", 3)), std::u16string(u"\x30FB\0z", 3));
  EXPECT_EQ(toWide(shiftJis, "\x80\xA0\xFD\xFF"), u"\x0080\xF8F0\xF8F1\xF8F3");
  EXPECT_EQ(toWide(shiftJis, "\\~"), u"\\~");
}

TEST(RawCodePage, CharactersOutsideThePageBecomeLookAlikesOrQuestionMarks) {
  EXPECT_EQ(fromWide(shiftJis, u"あ\x0E01é"), "\x82\xA0?e");
  EXPECT_EQ(fromWide(shiftJis, u"\xD83D\xDE00"), "??");
  EXPECT_EQ(fromWide(shiftJis, u"\x00A5"), "\\");
}

TEST(RawCodePage, Utf7ShiftsInAndOut) {
  EXPECT_EQ(fromWide(utf7, u"A\x2262\x0391."), "A+ImIDkQ-.");
  EXPECT_EQ(toWide(utf7, "A+ImIDkQ."), u"A\x2262\x0391.");
  EXPECT_EQ(toWide(utf7, "Hi Mom +Jjo-!"), u"Hi Mom \x263A!");
  EXPECT_EQ(fromWide(utf7, u"あ+あ"), "+MEI-+-+MEI-");
  EXPECT_EQ(toWide(utf7, "a+"), u"a");
  EXPECT_EQ(toWide(utf7, "a\xE9"), u"aé");
  EXPECT_EQ(rawToWide(utf7, "+", 1, nullptr, 0).error, 0U) << "a shift alone is an empty text";
}

// --- Builds agree: sums over the results of the platform's own conversion

class Sum {
 public:
  void add(uint32_t number) { value_ = (value_ ^ number) * 1099511628211U; }
  [[nodiscard]] uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 14695981039346656037U;
};

uint64_t sumOfPairs(uint32_t page) {
  Sum sum;
  for (uint32_t code = 0; code < 0x10000; ++code) {
    const char bytes[] = {static_cast<char>(code >> 8), static_cast<char>(code)};
    char16_t units[4];
    const RawConversion wide = rawToWide(page, bytes, 2, units, 4);
    sum.add(static_cast<uint32_t>(wide.count));
    for (int32_t i = 0; i < wide.count; ++i) sum.add(units[i]);
    const char16_t unit = static_cast<char16_t>(code);
    char back[8];
    const RawConversion narrow = rawFromWide(page, &unit, 1, back, 8);
    sum.add(static_cast<uint32_t>(narrow.count));
    for (int32_t i = 0; i < narrow.count; ++i) sum.add(static_cast<uint8_t>(back[i]));
  }
  return sum.value();
}

TEST(RawCodePage, AllPairsOfBytesAndAllUnitsOfEachPage) {
  EXPECT_EQ(sumOfPairs(shiftJis), 5823699755354929296U);
  EXPECT_EQ(sumOfPairs(utf7), 5061078166189165275U);
  EXPECT_EQ(sumOfPairs(utf8), 12084446787148700005U);
}

// Bytes out of those that matter to the page, in runs of up to a dozen.
uint64_t sumOfRuns(uint32_t page, const std::vector<uint8_t>& bytes) {
  std::minstd_rand random(page);
  Sum sum;
  for (int round = 0; round < 20000; ++round) {
    char run[12];
    char16_t units[24];
    const auto size = static_cast<int32_t>(1 + random() % 12);
    for (int32_t i = 0; i < size; ++i) run[i] = static_cast<char>(bytes[random() % bytes.size()]);
    const auto room = static_cast<int32_t>(random() % 24);
    const RawConversion result = rawToWide(page, run, size, units, room);
    sum.add(static_cast<uint32_t>(result.count));
    sum.add(result.error);
    for (int32_t i = 0; i < result.count && room > 0; ++i) sum.add(units[i]);
  }
  return sum.value();
}

TEST(RawCodePage, RunsOfWholeAndBrokenCharacters) {
  EXPECT_EQ(sumOfRuns(utf8, {0xE3, 0x81, 0x82, 0xF0, 0x9F, 0x98, 0x80, 0xED, 0xA0, 0xF4, 0x90,
                             0x8F, 0xC2, 0xC1, 0xC0, 0xE0, 0xF5, 0xFF, 0xBF, 0x41, 0xF8, 0x00}),
            4403861672653340640U);
  EXPECT_EQ(sumOfRuns(shiftJis, {0x81, 0x40, 0x5C, 0x82, 0xA0, 0x39, 0xFC, 0xFD, 0xEF, 0x80, 0x00,
                                 0x41, 0x9F, 0xDF, 0x7F}),
            8926580629392428339U);
  EXPECT_EQ(sumOfRuns(utf7, {'+', '-', 'A', 'a', 'Z', '0', '9', '/', ' ', '!', '=', 0x80, 0xE3,
                             '\n', '~', '\\', 0x00}),
            1731470969085377286U);
}

} // namespace
