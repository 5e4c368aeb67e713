#include "TestText.h"
#include "raw/RawPattern.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

// The wildcards' texts, each behind a bar; "-" when the pattern does not match.
std::string captured(const std::string& pattern, const std::string& text, bool fold = false) {
  RawRangeList ranges;
  const RawString subject = raw(text);
  if (!RawPattern(raw(pattern)).capture(subject, subject.all(), fold, ranges)) {
    EXPECT_EQ(ranges.count(), 0);
    return "-";
  }
  std::string result;
  for (const RawRange& range : ranges.elements())
    result += "|" + bytesOf(RawString::fromRange(EncodingUtf8, subject, range));
  return result;
}

} // namespace

TEST(RawPatternCapture, EachWildcardHasItsRange) {
  EXPECT_EQ(captured("a*c", "abbc"), "|bb");
  EXPECT_EQ(captured("a*c", "ac"), "|");
  EXPECT_EQ(captured("?b?", "abc"), "|a|c");
  EXPECT_EQ(captured("*.*", "name.txt"), "|name|txt");
  EXPECT_EQ(captured("abc", "abc"), "");
  EXPECT_EQ(captured("", ""), "");
  EXPECT_EQ(captured("*", ""), "|");
}

TEST(RawPatternCapture, AStarTakesTheLongestRun) {
  EXPECT_EQ(captured("*.*", "a.b.c"), "|a.b|c");
  EXPECT_EQ(captured("*a*", "aaa"), "|aa|");
  EXPECT_EQ(captured("**", "abc"), "|abc|");
  EXPECT_EQ(captured("*?*", "abc"), "|ab|c|");
  EXPECT_EQ(captured("a*b*c", "abxbyc"), "|bx|y");
  EXPECT_EQ(captured("*ab*b", "ababb"), "|ab|");
}

TEST(RawPatternCapture, TheWholeTextMustMatch) {
  EXPECT_EQ(captured("a", "ab"), "-");
  EXPECT_EQ(captured("a*", "ba"), "-");
  EXPECT_EQ(captured("*a", "ab"), "-");
  EXPECT_EQ(captured("a?", "a"), "-");
  EXPECT_EQ(captured("ab*bc", "abc"), "-");
  EXPECT_EQ(captured("", "a"), "-");
}

TEST(RawPatternCapture, FoldingIsForPlainUnits) {
  EXPECT_EQ(captured("A*C", "abc", true), "|b");
  EXPECT_EQ(captured("A*C", "abc"), "-");
  EXPECT_EQ(captured("%x*", "X1", true), "-");
}

TEST(RawPatternCapture, TheFirstUnitChoosesNoKind) {
  EXPECT_EQ(captured("<*>", "<b>"), "|b");
  EXPECT_EQ(captured(">*", ">b"), "|b");
  EXPECT_EQ(captured("@[*", "@[b"), "|b");
}

TEST(RawPatternCapture, EscapesAreThoseOfWildcardsAndTwoMore) {
  EXPECT_EQ(captured("%Kb%J*%K", "<b>x<"), "|x");
  EXPECT_EQ(captured("%s*%c", " x;"), "|x");
  EXPECT_EQ(captured("%*%?", "*?"), "");
  EXPECT_EQ(captured("a%", "a%"), "-");
  EXPECT_EQ(captured("%", ""), "-");
}

TEST(RawPatternCapture, ALineEndMayHaveTwoUnits) {
  EXPECT_EQ(captured("a%nb", "a\nb"), "");
  EXPECT_EQ(captured("a%nb", "a\r\nb"), "");
  EXPECT_EQ(captured("a%nb", "a\rb"), "-");
  EXPECT_EQ(captured("a%r%nb", "a\r\nb"), "");
  EXPECT_EQ(captured("a%n", "a\r"), "-");
  EXPECT_EQ(captured("%n*%n", "\r\nx\r\n"), "|x\r");
  EXPECT_EQ(captured("*%nb*", "a\r\nbc"), "|a\r|c");
  EXPECT_EQ(captured("a?%n", "a\r\n"), "|\r");
}

TEST(RawPatternCapture, RangesCountFromTheStartOfTheText) {
  RawRangeList ranges;
  RawPattern pattern(raw("b*"));
  ASSERT_TRUE(pattern.capture(raw("abcd"), {1, 3}, false, ranges));
  ASSERT_EQ(ranges.count(), 1);
  EXPECT_EQ(*RawRangeList::element(ranges.first()), (RawRange{2, 3}));
  EXPECT_EQ(pattern.matchStart, 1);
  EXPECT_EQ(pattern.matchEnd, 3);
  // A list of before is emptied first.
  EXPECT_FALSE(pattern.capture(raw("abcd"), {0, 100}, false, ranges));
  EXPECT_EQ(ranges.count(), 0);
  EXPECT_EQ(pattern.matchEnd, 0);
}

TEST(RawPatternCapture, HostilePatternsEnd) {
  std::string stars;
  for (int i = 0; i < 300; ++i) stars += "*a";
  EXPECT_EQ(captured(stars + "b", std::string(3000, 'a')), "-");
  EXPECT_NE(captured(stars, std::string(3000, 'a')), "-");
}
