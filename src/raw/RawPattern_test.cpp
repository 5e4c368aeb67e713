#include "raw/RawPattern.h"

#include "TestText.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace RawLayer;

namespace {

bool exact(const std::string& pattern, const std::string& text) {
  return RawPattern(raw(pattern)).match(raw(text), false);
}
bool folded(const std::string& pattern, const std::string& text) {
  return RawPattern(raw(pattern)).match(raw(text), true);
}

} // namespace

TEST(RawPattern, AnEmptyPatternMatchesOnlyAnEmptyText) {
  EXPECT_TRUE(exact("", ""));
  EXPECT_FALSE(exact("", "a"));
}

TEST(RawPattern, TheWholeTextMustMatch) {
  EXPECT_TRUE(exact("abc", "abc"));
  EXPECT_FALSE(exact("abc", "abcd"));
  EXPECT_FALSE(exact("abc", "ab"));
  EXPECT_FALSE(exact("b", "abc"));
  EXPECT_TRUE(RawPattern().whole);
}

// --- Wildcards

TEST(RawPattern, AStarTakesAnyNumberOfUnits) {
  EXPECT_TRUE(exact("a*c", "abc"));
  EXPECT_TRUE(exact("a*c", "ac"));
  EXPECT_TRUE(exact("a*c", "abcbc"));
  EXPECT_FALSE(exact("a*c", "abcb"));
  EXPECT_TRUE(exact("*", ""));
  EXPECT_TRUE(exact("*", "anything\r\n"));
  EXPECT_TRUE(exact("**", ""));
  EXPECT_TRUE(exact("a**c", "abc"));
  EXPECT_TRUE(exact("*.txt", ".txt"));
  EXPECT_FALSE(exact("*.txt", "a.txt.bak"));
}

TEST(RawPattern, StarsShareTheTextWithWhatStandsBetweenThem) {
  EXPECT_TRUE(exact("*a*b*", "xxaxxbxx"));
  EXPECT_FALSE(exact("*a*b*", "xxbxxaxx"));
  EXPECT_TRUE(exact("a*aba*a", "aababaa"));
  // What the ends take is not there for the middle.
  EXPECT_FALSE(exact("ab*bc", "abc"));
  EXPECT_FALSE(exact("ab*b*bc", "abbc"));
  EXPECT_TRUE(exact("ab*b*bc", "abbbc"));
}

TEST(RawPattern, AQuestionMarkTakesOneUnitAndFailsAtTheEnd) {
  EXPECT_TRUE(exact("a?c", "abc"));
  EXPECT_TRUE(exact("?", "\n"));
  EXPECT_FALSE(exact("a?c", "ac"));
  EXPECT_FALSE(exact("abc?", "abc"));
  EXPECT_TRUE(exact("*?", "a"));
  EXPECT_FALSE(exact("*?", ""));
  EXPECT_TRUE(exact("?*?", "ab"));
  EXPECT_FALSE(exact("?*?", "a"));
}

TEST(RawPattern, UnitsAreCodeUnits) {
  // The letter has two bytes in UTF-8 and one unit in 16-bit text.
  EXPECT_FALSE(exact("?", "\xC3\xA9"));
  EXPECT_TRUE(exact("??", "\xC3\xA9"));
  EXPECT_TRUE(RawPattern(raw("?")).match(RawString::fromWide(u"\u00E9"), false));
  EXPECT_TRUE(exact("@[\xC3\xA9]+", "\xC3\xA9"));
  EXPECT_TRUE(exact("@..", "\xC3\xA9"));
}

TEST(RawPattern, EveryEscapeStandsForItsUnit) {
  const char* const escapes[][2] = {{"B", "["},  {"E", "]"},  {"O", "("}, {"C", ")"},  {"c", ";"},
                                    {"i", ";"},  {"e", "%"},  {"l", ":"}, {"m", ","},  {"n", "\n"},
                                    {"q", "\""}, {"r", "\r"}, {"s", " "}, {"t", "\t"}, {"v", "|"}};
  for (const auto& [letter, unit] : escapes) {
    const std::string escape = std::string("%") + letter;
    EXPECT_TRUE(exact("a" + escape + "b", std::string("a") + unit + "b")) << letter;
    EXPECT_TRUE(exact("@a" + escape + "b", std::string("a") + unit + "b")) << letter;
    EXPECT_TRUE(exact("@[x" + escape + "]", unit)) << letter;
    EXPECT_FALSE(exact(escape, letter)) << letter;
    EXPECT_FALSE(exact("@" + escape, letter)) << letter;
  }
}

TEST(RawPattern, ABlankIsAnEscapeInWildcards) {
  EXPECT_TRUE(exact("%s", " "));
  EXPECT_FALSE(exact("%s", "s"));
}

TEST(RawPattern, AnyOtherLetterBehindPercentStandsForItself) {
  EXPECT_TRUE(exact("%*", "*"));
  EXPECT_FALSE(exact("%*", "x"));
  EXPECT_TRUE(exact("%?", "?"));
  EXPECT_FALSE(exact("%?", "x"));
  EXPECT_TRUE(exact("%%", "%"));
  EXPECT_TRUE(exact("%x", "x"));
  EXPECT_TRUE(exact("%<*", "<x"));
  EXPECT_TRUE(exact("@%.", "."));
  EXPECT_FALSE(exact("@%.", "x"));
  EXPECT_TRUE(exact("@%[%]", "[]"));
  EXPECT_TRUE(exact("@a%*", "a*"));
  EXPECT_TRUE(exact("@%a*", "aaa"));
  // In the wildcard kind J and K are no escapes.
  EXPECT_TRUE(exact("%J%K", "JK"));
}

TEST(RawPattern, TheLetterBehindPercentHasExactCase) {
  EXPECT_FALSE(folded("%S", " "));
  EXPECT_TRUE(folded("%S", "S"));
  EXPECT_FALSE(folded("%S", "s"));
  EXPECT_FALSE(folded("%x", "X"));
  EXPECT_FALSE(folded("@%x", "X"));
  EXPECT_TRUE(folded("%b", "b"));
  EXPECT_TRUE(folded("%B", "["));
}

TEST(RawPattern, APercentAtTheEndMatchesNothing) {
  EXPECT_FALSE(exact("a%", "a"));
  EXPECT_FALSE(exact("a%", "a%"));
  EXPECT_FALSE(exact("%", ""));
  EXPECT_FALSE(exact("%", "%"));
  EXPECT_FALSE(exact("*%", "abc"));
  EXPECT_FALSE(exact("@%", ""));
  EXPECT_FALSE(exact("@%", "%"));
  EXPECT_FALSE(exact("@a%", "a%"));
  EXPECT_FALSE(exact("@[a%", "%"));
  EXPECT_TRUE(exact("@[a%", "a"));
  EXPECT_TRUE(exact("<%", "%"));
}

TEST(RawPattern, FoldingIsAsciiOnly) {
  EXPECT_TRUE(folded("ABC", "abc"));
  EXPECT_TRUE(folded("abc", "ABC"));
  EXPECT_TRUE(folded("*.TXT", "a.txt"));
  EXPECT_FALSE(exact("ABC", "abc"));
  EXPECT_FALSE(folded("[", "{"));
  EXPECT_FALSE(
      RawPattern(RawString::fromWide(u"\u00C9")).match(RawString::fromWide(u"\u00E9"), true));
}

TEST(RawPattern, FoldingReachesTheOtherKinds) {
  EXPECT_TRUE(folded("@ABC", "abc"));
  EXPECT_TRUE(folded("@A+", "aAa"));
  EXPECT_FALSE(folded("<ABC", "abc"));
  EXPECT_FALSE(folded("<@ABC", "abc"));
}

// --- Plain text

TEST(RawPattern, BehindGreaterStandsPlainText) {
  EXPECT_TRUE(exact(">a*c", "a*c"));
  EXPECT_FALSE(exact(">a*c", "abc"));
  EXPECT_TRUE(exact(">%s", "%s"));
  EXPECT_TRUE(exact(">", ""));
  EXPECT_FALSE(exact(">", "a"));
  EXPECT_TRUE(exact(">>", ">"));
  EXPECT_TRUE(exact(">@a", "@a"));
  EXPECT_FALSE(exact(">abc", "abcd"));
  EXPECT_FALSE(exact(">abcd", "abc"));
}

TEST(RawPattern, PlainTextHasExactCaseAlsoWithFolding) {
  EXPECT_TRUE(folded(">abc", "abc"));
  EXPECT_FALSE(folded(">ABC", "abc"));
}

// --- Negation

TEST(RawPattern, ANegationMatchesWhatTheRestDoesNot) {
  EXPECT_FALSE(exact("<abc", "abc"));
  EXPECT_TRUE(exact("<abc", "abd"));
  EXPECT_TRUE(exact("<abc", ""));
  EXPECT_FALSE(exact("<*.txt", "a.txt"));
  EXPECT_TRUE(exact("<*.txt", "a.md"));
  EXPECT_TRUE(exact("<", "a"));
  EXPECT_FALSE(exact("<", ""));
}

TEST(RawPattern, ANegationMayBeOfAnyKind) {
  EXPECT_FALSE(exact("<>a*", "a*"));
  EXPECT_TRUE(exact("<>a*", "ab"));
  EXPECT_FALSE(exact("<@[a-c]+", "abc"));
  EXPECT_TRUE(exact("<@[a-c]+", "abd"));
  EXPECT_TRUE(exact("<<abc", "abc"));
  EXPECT_FALSE(exact("<<abc", "abd"));
  EXPECT_FALSE(exact("<<<abc", "abc"));
}

TEST(RawPattern, OtherSignsMeanAKindOnlyInFront) {
  EXPECT_TRUE(exact("a<", "a<"));
  EXPECT_TRUE(exact("a>", "a>"));
  EXPECT_TRUE(exact("a@", "a@"));
  EXPECT_TRUE(exact("@@", "@"));
  EXPECT_TRUE(exact("@<", "<"));
  EXPECT_TRUE(exact("@>", ">"));
}

// --- Classes

TEST(RawPattern, ItemsMayRepeat) {
  EXPECT_TRUE(exact("@[a-c]+x", "abcx"));
  EXPECT_FALSE(exact("@[a-c]+x", "x"));
  EXPECT_TRUE(exact("@[a-c]*x", "x"));
  EXPECT_TRUE(exact("@ab*c", "ac"));
  EXPECT_TRUE(exact("@ab*c", "abbbc"));
  EXPECT_FALSE(exact("@ab+c", "ac"));
  EXPECT_TRUE(exact("@ab+c", "abc"));
  EXPECT_TRUE(exact("@.*", ""));
  EXPECT_TRUE(exact("@.+%.txt", "a.b.txt"));
  EXPECT_FALSE(exact("@.+%.txt", ".txt"));
  EXPECT_TRUE(exact("@%s*x", "  x"));
  EXPECT_TRUE(exact("@a*a", "aaa"));
  EXPECT_TRUE(exact("@a*a*a", "a"));
  EXPECT_TRUE(exact("@a+a", "aa"));
  EXPECT_FALSE(exact("@a+a", "a"));
}

TEST(RawPattern, AnEmptyClassPatternMatchesOnlyAnEmptyText) {
  EXPECT_TRUE(exact("@", ""));
  EXPECT_FALSE(exact("@", "a"));
}

TEST(RawPattern, ADotTakesAnyUnitButLineEnds) {
  EXPECT_TRUE(exact("@a.c", "abc"));
  EXPECT_FALSE(exact("@a.c", "a\nc"));
  EXPECT_FALSE(exact("@a.c", "a\rc"));
  EXPECT_FALSE(exact("@.*", "a\r\nb"));
  EXPECT_TRUE(exact("@.*%r%n.*", "a\r\nb"));
}

TEST(RawPattern, WildcardSignsArePlainInClasses) {
  EXPECT_TRUE(exact("@a?", "a?"));
  EXPECT_FALSE(exact("@a?", "ab"));
}

TEST(RawPattern, SignsWithoutAnItemInFrontArePlain) {
  EXPECT_TRUE(exact("@*", "*"));
  EXPECT_FALSE(exact("@*", ""));
  EXPECT_TRUE(exact("@+", "+"));
  EXPECT_TRUE(exact("@**", "***"));
  EXPECT_TRUE(exact("@+*", ""));
  EXPECT_TRUE(exact("@*a", "*a"));
  EXPECT_TRUE(exact("@a**", "aa*"));
  EXPECT_TRUE(exact("@a*+", "aa+"));
  EXPECT_TRUE(exact("@]", "]"));
  EXPECT_TRUE(exact("@^-", "^-"));
}

TEST(RawPattern, ASetTakesItsMembers) {
  EXPECT_TRUE(exact("@[abc]", "b"));
  EXPECT_FALSE(exact("@[abc]", "d"));
  EXPECT_FALSE(exact("@[abc]", ""));
  EXPECT_TRUE(exact("@[a-cx-z]+", "abyz"));
  EXPECT_FALSE(exact("@[a-c]", "-"));
  EXPECT_TRUE(exact("@[a^]", "^"));
  EXPECT_TRUE(exact("@[.*+?]+", ".*+?"));
  EXPECT_FALSE(exact("@[.]", "x"));
  EXPECT_TRUE(exact("@[[]", "["));
  EXPECT_TRUE(exact("@[%]]", "]"));
  EXPECT_TRUE(exact("@[%E%s]+", "] "));
  EXPECT_TRUE(exact("@[%s-~]", "x"));
  EXPECT_FALSE(exact("@[z-a]", "m"));
  EXPECT_TRUE(exact("@[\n]", "\n"));
}

TEST(RawPattern, AnEmptySetTakesNothing) {
  EXPECT_FALSE(exact("@[]", ""));
  EXPECT_FALSE(exact("@[]", "]"));
  EXPECT_TRUE(exact("@[]*x", "x"));
  EXPECT_FALSE(exact("@[]a]", "a]"));
}

TEST(RawPattern, AMinusAtTheEdgeOfASetIsPlain) {
  EXPECT_TRUE(exact("@[-a]+", "a-"));
  EXPECT_TRUE(exact("@[a-]+", "a-"));
  EXPECT_FALSE(exact("@[a-]", "b"));
  EXPECT_TRUE(exact("@[-]", "-"));
  EXPECT_TRUE(exact("@[a-c-e]+", "b-e"));
  EXPECT_FALSE(exact("@[a-c-e]", "d"));
  EXPECT_FALSE(exact("@[^-a]", "-"));
  EXPECT_TRUE(exact("@[^-a]", "b"));
  EXPECT_TRUE(exact("@[a-", "-"));
}

TEST(RawPattern, ANegatedSetTakesNoLineEnds) {
  EXPECT_TRUE(exact("@[^abc]+", "xyz"));
  EXPECT_FALSE(exact("@[^abc]", "a"));
  EXPECT_FALSE(exact("@[^abc]", "\n"));
  EXPECT_FALSE(exact("@[^abc]", "\r"));
  EXPECT_TRUE(exact("@[^]", "x"));
  EXPECT_FALSE(exact("@[^]", "\n"));
  EXPECT_TRUE(exact("@[^^]", "x"));
  EXPECT_FALSE(exact("@[^^]", "^"));
}

TEST(RawPattern, AnUnclosedSetRunsToTheEnd) {
  EXPECT_TRUE(exact("@x[abc", "xb"));
  EXPECT_TRUE(exact("@[a+", "+"));
  EXPECT_FALSE(exact("@[a+", "aa"));
  EXPECT_FALSE(exact("@[", "["));
  EXPECT_TRUE(exact("@[^", "x"));
  EXPECT_TRUE(exact("@[a%]", "]"));
}

TEST(RawPattern, FoldingPutsBothCasesInASet) {
  EXPECT_TRUE(folded("@[a-c]+", "AbC"));
  EXPECT_TRUE(folded("@[A-C]+", "aBc"));
  EXPECT_FALSE(folded("@[^a-c]", "B"));
  EXPECT_TRUE(folded("@[^a-c]", "D"));
  EXPECT_TRUE(folded("@[%x]", "X"));
  // "_" lies between the cases and has none.
  EXPECT_TRUE(folded("@[Z-a]", "_"));
  EXPECT_FALSE(folded("@[_]", "?"));
}

// --- Ranges and encodings

TEST(RawPattern, ThePartMatchedIsTheRange) {
  RawPattern pattern(raw("b*d"));
  EXPECT_TRUE(pattern.match(raw("abcde"), {1, 4}, false));
  EXPECT_EQ(pattern.matchStart, 1);
  EXPECT_EQ(pattern.matchEnd, 4);
  EXPECT_FALSE(pattern.match(raw("abcde"), {1, 5}, true));
  EXPECT_EQ(pattern.matchStart, 0);
  EXPECT_EQ(pattern.matchEnd, 0);
  EXPECT_TRUE(pattern.ignoreCase);
}

TEST(RawPattern, RangesAreClamped) {
  RawPattern pattern(raw("abc"));
  EXPECT_TRUE(pattern.match(raw("abc"), {-5, 100}, false));
  EXPECT_EQ(pattern.matchStart, 0);
  EXPECT_EQ(pattern.matchEnd, 3);
  EXPECT_TRUE(RawPattern(raw("")).match(raw("abc"), {2, 1}, false));
  EXPECT_TRUE(RawPattern(raw(">b")).match(raw("abc"), {1, 2}, false));
  EXPECT_TRUE(RawPattern(raw("@b+")).match(raw("abbc"), {1, 3}, false));
}

TEST(RawPattern, ANegationLeavesNoPartMatched) {
  RawPattern pattern(raw("<x"));
  EXPECT_TRUE(pattern.match(raw("abc"), {1, 2}, false));
  EXPECT_EQ(pattern.matchStart, 0);
  EXPECT_EQ(pattern.matchEnd, 0);
}

TEST(RawPattern, EncodingsMayDiffer) {
  const RawString wide = RawString::fromWide(u"Notepad.exe");
  for (const char* const pattern : {"note*", "@NOTE.+%.exe", ">Notepad.exe", "<x"})
    EXPECT_TRUE(RawPattern(raw(pattern)).match(wide, true)) << pattern;
  EXPECT_TRUE(RawPattern(RawString::fromWide(u"note*")).match(raw("notepad"), true));
  EXPECT_TRUE(RawPattern(RawString::fromWide(u"@[\u3040-\u30FF]+"))
                  .match(RawString::fromWide(u"\u30BD\u30BF"), false));
}

TEST(RawPattern, OnePatternServesManyTexts) {
  RawPattern pattern(raw("*.txt"));
  EXPECT_TRUE(pattern.match(raw("a.txt"), true));
  EXPECT_FALSE(pattern.match(raw("a.md"), true));
  EXPECT_TRUE(pattern.match(raw("A.TXT"), true));
}

TEST(RawPattern, HostilePatternsEnd) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  std::string stars;
  std::string classes = "@";
  for (int i = 0; i < 500; ++i) {
    stars += "*a";
    classes += "a*.*[a-z]*";
  }
  const std::string text(5000, 'a');
  EXPECT_FALSE(exact(stars + "b", text));
  EXPECT_TRUE(exact(stars, text));
  EXPECT_FALSE(exact(classes + "B", text));
  EXPECT_TRUE(exact(classes, text));
  EXPECT_LT(std::chrono::duration<double>(Clock::now() - start).count(), 20.0);
}

TEST(RawPattern, LongTextsNeedNoMoreThanMemory) {
  const std::string text(100000, 'x');
  EXPECT_TRUE(exact("@x+", text));
  EXPECT_FALSE(exact("@x+y", text));
  EXPECT_TRUE(exact("*x", text));
}
