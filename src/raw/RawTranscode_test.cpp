#include "raw/RawTranscode.h"

#include "raw/RawCodePage.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <thread>
#include <vector>

using namespace RawLayer;
using std::string;
using std::u16string;

namespace {

constexpr uint32_t codePage932 = 932;
constexpr uint32_t codePageUtf8 = 65001;

int32_t sizeOf(const string& bytes) {
  return static_cast<int32_t>(bytes.size());
}

// "?" alone when the bytes are left to the platform. Exact memory shows what is touched outside.
u16string wideOf(const string& bytes) {
  const std::vector<uint8_t> from(bytes.begin(), bytes.end());
  std::vector<char16_t> to(bytes.size());
  const int32_t count = rawShiftJisToWide(from.data(), sizeOf(bytes), to.data());
  return count < 0 ? u"?" : u16string(to.data(), static_cast<std::size_t>(count));
}
u16string platformWideOf(const string& bytes) {
  u16string to(bytes.size() + 1, u'\0');
  const int32_t room = static_cast<int32_t>(to.size());
  to.resize(static_cast<std::size_t>(
      rawToWide(codePage932, bytes.data(), sizeOf(bytes), to.data(), room).count));
  return to;
}
string utf8Of(const u16string& units) {
  const std::vector<char16_t> from(units.begin(), units.end());
  std::vector<uint8_t> to(units.size() * 3);
  const int32_t size = rawWideToUtf8(from.data(), static_cast<int32_t>(units.size()), to.data());
  return {reinterpret_cast<const char*>(to.data()), static_cast<std::size_t>(size)};
}
string platformUtf8Of(const u16string& units) {
  string to(units.size() * 3 + 1, '\0');
  to.resize(static_cast<std::size_t>(rawFromWide(codePageUtf8, units.data(),
                                                 static_cast<int32_t>(units.size()), to.data(),
                                                 static_cast<int32_t>(to.size()))
                                         .count));
  return to;
}

} // namespace

// First, while nothing has been learnt yet.
TEST(RawTranscode, ThreadsMayLearnAtTheSameTime) {
  string bytes;
  for (int lead = 0x88; lead <= 0x97; ++lead) bytes += {static_cast<char>(lead), '\xA0'};
  const u16string expected = platformWideOf(bytes);
  std::vector<u16string> results(4);
  std::vector<std::thread> threads;
  for (u16string& result : results) threads.emplace_back([&] { result = wideOf(bytes); });
  for (std::thread& thread : threads) thread.join();
  for (const u16string& result : results) EXPECT_EQ(result, expected);
}

TEST(RawTranscode, ShiftJisBecomesUnits) {
  EXPECT_EQ(wideOf("\x82\xA0"), u"\u3042");
  EXPECT_EQ(wideOf("a\xB1\x95\\z"), u"a\uFF71\u8868z");
  EXPECT_EQ(wideOf(""), u"");
}

TEST(RawTranscode, OddBytesAreLeftToThePlatform) {
  for (const char* bytes :
       {"\x80", "\xA0", "\xFD", "\xFE", "\xFF", "a\x82", "\x82 ", "\x82\x7F", "\x82\xFD"})
    EXPECT_EQ(wideOf(bytes), u"?") << bytes;
}

TEST(RawTranscode, EveryPairIsWhatThePlatformSays) {
  for (int lead = 0; lead < 256; ++lead)
    for (int trail = 0; trail < 256; ++trail) {
      const string bytes{'a', static_cast<char>(lead), static_cast<char>(trail)};
      const u16string units = wideOf(bytes);
      if (units == u"?") continue;
      ASSERT_EQ(units, platformWideOf(bytes)) << lead << " " << trail;
    }
}

TEST(RawTranscode, ShiftJisRunsAreWhatThePlatformSays) {
  std::mt19937 random(3);
  const std::vector<string> parts{"a",
                                  "=",
                                  "\r\n",
                                  "\\",
                                  "~",
                                  "\xB1",
                                  "\x82\xA0",
                                  "\x83\\",
                                  "\xFA\xB1",
                                  string("\0", 1),
                                  "0123456789abcdef"};
  for (int round = 0; round < 5000; ++round) {
    string bytes;
    for (auto count = random() % 40; count > 0; --count) bytes += parts[random() % parts.size()];
    ASSERT_EQ(wideOf(bytes), platformWideOf(bytes));
  }
}

TEST(RawTranscode, UnitsBecomeUtf8) {
  EXPECT_EQ(utf8Of(u""), "");
  EXPECT_EQ(utf8Of(u"a\u007F\u0080\u07FF\u0800\uFFFF"),
            "a\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF");
  EXPECT_EQ(utf8Of(u"\U00010000\U0010FFFF"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(RawTranscode, LoneSurrogatesAreReplaced) {
  const string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(utf8Of({0xD800}), replacement);
  EXPECT_EQ(utf8Of({0xDC00, u'a'}), replacement + "a");
  EXPECT_EQ(utf8Of({0xD800, 0xD800, 0xDC00}), replacement + "\xF0\x90\x80\x80");
  EXPECT_EQ(utf8Of({0xDC00, 0xD800}), replacement + replacement);
}

TEST(RawTranscode, UnitsAreWhatThePlatformSays) {
  std::mt19937 random(4);
  const std::vector<u16string> parts{u"a",
                                     u"0123456789",
                                     u"\u00E4",
                                     u"\u3042",
                                     u"\uFFFD",
                                     u"\U0001F600",
                                     u16string(1, 0xD812),
                                     u16string(1, 0xDE12),
                                     u16string(1, 0)};
  for (int round = 0; round < 5000; ++round) {
    u16string units;
    for (auto count = random() % 40; count > 0; --count) units += parts[random() % parts.size()];
    ASSERT_EQ(utf8Of(units), platformUtf8Of(units));
  }
}
