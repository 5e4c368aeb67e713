#include "raw/RawGui.h"

#include "TestText.h"

#include <gtest/gtest.h>

#include <vector>

using namespace RawLayer;

namespace {

// A font in which every 16-bit unit is 10 pixels wide, the first `fit` of which fit.
struct Spread {
  int32_t fit;
  std::vector<int32_t> positions;
};
Spread spread(const RawString& text, RawRange range, int32_t wideFit) {
  const RawRange part = range.clamped(text.length());
  const RawString wide = RawString::fromRange(EncodingWide, text, part);
  std::vector<int32_t> widePositions;
  for (int32_t i = 1; i <= wide.length(); ++i) widePositions.push_back(i * 10);
  Spread result{0, std::vector<int32_t>(static_cast<std::size_t>(part.size()), -1)};
  result.fit =
      spreadTextExtent(text, range, wide, wideFit, widePositions.data(), result.positions.data());
  return result;
}
Spread spread(const char* text, int32_t wideFit) {
  return spread(raw(text), raw(text).all(), wideFit);
}

using Positions = std::vector<int32_t>;

} // namespace

TEST(RawGui, PlainUnitsKeepTheirPositions) {
  const Spread result = spread("abc", 2);
  EXPECT_EQ(result.positions, (Positions{10, 20, 30}));
  EXPECT_EQ(result.fit, 2);
}

TEST(RawGui, AllBytesOfACharacterHaveItsPosition) {
  const Spread result = spread("a\xC3\xA9\xE3\x82\xBD"
                               "b",
                               3);
  EXPECT_EQ(result.positions, (Positions{10, 20, 20, 30, 30, 30, 40}));
  EXPECT_EQ(result.fit, 6);
  EXPECT_EQ(spread("a\xC3\xA9\xE3\x82\xBD"
                   "b",
                   2)
                .fit,
            3);
  EXPECT_EQ(spread("a\xC3\xA9\xE3\x82\xBD"
                   "b",
                   4)
                .fit,
            7);
  EXPECT_EQ(spread("a\xC3\xA9", 0).fit, 0);
}

TEST(RawGui, ASurrogatePairIsTwoUnitsOfOneCharacter) {
  const Spread result = spread("a\xF0\x9F\x98\x80"
                               "b",
                               3);
  EXPECT_EQ(result.positions, (Positions{10, 30, 30, 30, 30, 40}));
  EXPECT_EQ(result.fit, 5);
  // Half of a pair is not there.
  EXPECT_EQ(spread("a\xF0\x9F\x98\x80"
                   "b",
                   2)
                .fit,
            1);
}

TEST(RawGui, TheRangeStartsAtPositionNull) {
  const Spread result = spread(raw("abc\xC3\xA9x"), {3, 6}, 1);
  EXPECT_EQ(result.positions, (Positions{10, 10, 20}));
  EXPECT_EQ(result.fit, 2);
}

TEST(RawGui, BytesThatAreNoUtf8StayInside) {
  // A lone trail byte and a lead without its trail.
  const Spread lone = spread("\x80"
                             "a",
                             9);
  EXPECT_EQ(lone.fit, 2);
  EXPECT_EQ(lone.positions.size(), 2u);
  const Spread cut = spread("a\xE3", 9);
  EXPECT_EQ(cut.fit, 2);
  EXPECT_EQ(cut.positions[0], 10);
  for (const char* text : {"\xFF\xFE", "\xC0\x80", "\xF8\x88\x80\x80\x80", "\xED\xA0\x80x"})
    for (const int32_t position : spread(text, 1).positions) EXPECT_GE(position, 0);
}

TEST(RawGui, PositionsNeedNotBeAskedFor) {
  const RawString text = raw("a\xC3\xA9"
                             "b");
  const RawString wide = text.shareAs(EncodingWide);
  EXPECT_EQ(spreadTextExtent(text, text.all(), wide, 2, nullptr, nullptr), 3);
}

TEST(RawGui, AnEmptyRangeFits) {
  EXPECT_EQ(spread(raw("abc"), {2, 1}, 0).fit, 0);
}
