#include "raw/RawString.h"

#include "TestText.h"

#include <gtest/gtest.h>

using namespace RawLayer;

namespace {

std::string some(int32_t count, char unit = 'x') {
  return std::string(static_cast<std::size_t>(count), unit);
}

// A text that owns exactly as much room as it has units.
RawString tight(const std::string& bytes) {
  RawString text = RawString::withCapacity(static_cast<int32_t>(bytes.size()));
  text.append(raw(bytes));
  return text;
}

bool isTerminated(const RawString& text) {
  return text.encoding() == EncodingWide ? text.wide()[text.length()] == 0
                                         : text.text()[text.length()] == 0;
}

// --- The growth rule

TEST(RawStringGrowth, LooksAtTheNeededLength) {
  RawString below = tight(some(198));
  below.appendChar(u'x');
  EXPECT_EQ(below.length(), 199);
  EXPECT_EQ(below.capacity(), 418);
  RawString above = tight(some(199));
  above.appendChar(u'x');
  EXPECT_EQ(above.length(), 200);
  EXPECT_EQ(above.capacity(), 500);
}

TEST(RawStringGrowth, AppendingTakesMoreOnlyWhenTheRoomIsUsedUp) {
  RawString text = RawString::withCapacity(3);
  text.append("abc"_text);
  EXPECT_EQ(text.capacity(), 3);
  text.append("d"_text);
  EXPECT_EQ(text.capacity(), 28);
}

TEST(RawStringGrowth, AnEmptyTextStartsWithTheRuleToo) {
  RawString text;
  text.appendChar(u'a');
  EXPECT_EQ(text.capacity(), 22);
}

TEST(RawStringGrowth, WritingASharedTextCopiesItByTheRuleAndThenLooksForRoom) {
  RawString text = tight(some(50));
  const RawString sharer = text;
  text.append(raw(some(30)));
  EXPECT_EQ(text.capacity(), 120) << "the room of the copy of 50 units is enough for 80";
  EXPECT_EQ(sharer.length(), 50);
  RawString other = sharer;
  other.append(raw(some(150)));
  EXPECT_EQ(other.capacity(), 500);
}

TEST(RawStringGrowth, OneConcatenationReservesOnce) {
  RawString text = tight("ab");
  text.append5("c"_text, raw(some(195)), "d"_text, "e"_text, ""_text);
  EXPECT_EQ(text.length(), 200);
  EXPECT_EQ(text.capacity(), 500);
}

TEST(RawStringGrowth, NumbersReserveExactly) {
  RawString text = tight("abc");
  text.appendInt64(1);
  EXPECT_EQ(text.capacity(), 70);
  RawString other = tight("abc");
  other.appendUInt64(1, 16);
  EXPECT_EQ(other.capacity(), 70);
  RawString digits = tight("abc");
  digits.appendDigits(1, 10, 4);
  EXPECT_EQ(digits.capacity(), 7);
  EXPECT_EQ(RawString::fromInt64(5).capacity(), 67);
  EXPECT_EQ(RawString::fromDigits(5, 10, 3).capacity(), 3);
}

TEST(RawStringGrowth, ReplacingReservesExactly) {
  RawString text = tight("abc");
  text.replaceRange({1, 2}, "12345"_text, {0, 5});
  EXPECT_EQ(text.capacity(), 7);
  EXPECT_EQ(bytesOf(text), "a12345c");
}

// --- Appending

TEST(RawStringAppend, CharIsTruncatedToTheUnit) {
  RawString text = raw("a");
  text.appendChar(0x1262);
  EXPECT_EQ(bytesOf(text), "ab");
  RawString wide = RawString::fromWide(u"a");
  wide.appendChar(0x1262);
  EXPECT_EQ(wide.at(1), 0x1262);
  EXPECT_TRUE(isTerminated(wide));
}

TEST(RawStringAppend, TakesTheClampedPart) {
  RawString text = raw("x");
  text.append(raw("abcdef"), {-3, 2});
  text.append(raw("abcdef"), {4, 60});
  EXPECT_EQ(bytesOf(text), "xabef");
  EXPECT_TRUE(isTerminated(text));
}

TEST(RawStringAppend, AnEmptyRangeDoesNothing) {
  RawString text = "abc"_text;
  text.append(raw("abc"), {2, 2});
  text.append(raw("abc"), {2, 1});
  text.append(raw("abc"), {3, 9});
  text.append(RawString());
  EXPECT_EQ(text.kind(), RawString::KindStatic) << "not even a copy is made";
  EXPECT_EQ(text, "abc"_text);
}

TEST(RawStringAppend, NothingIsConverted) {
  RawString text = raw("x");
  text.append(RawString::fromWide(u"aあ"));
  EXPECT_EQ(bytesOf(text), "xaB"); // U+3042
  RawString wide = RawString::fromWide(u"x");
  wide.append(raw("\xE3\x81"));
  ASSERT_EQ(wide.length(), 3);
  EXPECT_EQ(wide.at(1), 0xE3);
  EXPECT_EQ(wide.at(2), 0x81);
}

TEST(RawStringAppend, ItselfOnceAndAgain) {
  RawString text = raw("abc");
  text.append(text);
  EXPECT_EQ(bytesOf(text), "abcabc");
  text.append(text, {1, 3});
  EXPECT_EQ(bytesOf(text), "abcabcbc");
  RawString exact = tight("abcd");
  exact.append(exact); // has to move
  EXPECT_EQ(bytesOf(exact), "abcdabcd");
  const RawString sharer = exact;
  exact.append(sharer);
  EXPECT_EQ(exact.length(), 16);
  EXPECT_EQ(sharer.length(), 8);
}

TEST(RawStringAppend, LongPiecesOfEveryLengthArriveWhole) {
  std::string expected;
  RawString text;
  for (int32_t length = 0; length < 100; ++length) {
    const std::string piece = some(length, static_cast<char>('!' + length % 90)) + "|";
    text.append(raw(piece));
    expected += piece;
  }
  EXPECT_EQ(bytesOf(text), expected);
}

TEST(RawStringAppend, FiveInOrderAndEmptiesCostNothing) {
  RawString text = raw("0");
  text.append5("1"_text, ""_text, "23"_text, RawString::emptyStatic(), "4"_text);
  EXPECT_EQ(bytesOf(text), "01234");
  RawString nothing;
  nothing.append5(""_text, ""_text);
  EXPECT_EQ(nothing.kind(), RawString::KindEmpty);
}

TEST(RawStringAppend, FiveWithTheTextItselfAmongThem) {
  RawString text = tight("ab");
  text.append5("1"_text, text, "2"_text);
  EXPECT_EQ(bytesOf(text), "ab1ab12") << "each is appended in turn";
}

// --- Overwriting

TEST(RawStringAssignChars, KeepsTheOwnCode) {
  RawString text = RawString::fromWide(u"long text of old");
  text.assignChars(raw("new"));
  EXPECT_EQ(text.encoding(), EncodingWide);
  EXPECT_TRUE(text.equals("new"_text));
  EXPECT_TRUE(isTerminated(text));
  RawString narrow(EncodingShiftJis);
  narrow.assignChars(RawString::fromWide(u"abあ"));
  EXPECT_EQ(narrow.encoding(), EncodingShiftJis);
  EXPECT_EQ(bytesOf(narrow), "abB");
}

TEST(RawStringAssignChars, FollowsTheGrowthRule) {
  RawString text = tight("a");
  text.assignChars(raw(some(200)));
  EXPECT_EQ(text.capacity(), 500);
}

TEST(RawStringAssignChars, EmptySourceEmptiesTheText) {
  RawString text = raw("abc");
  text.assignChars(RawString());
  EXPECT_TRUE(text.isEmpty());
  EXPECT_TRUE(isTerminated(text));
  RawString empty;
  empty.assignChars(""_text);
  EXPECT_EQ(empty.kind(), RawString::KindEmpty);
}

TEST(RawStringAssignChars, LeavesSharersAloneAndTakesItself) {
  RawString text = raw("abc");
  const RawString sharer = text;
  text.assignChars(text);
  EXPECT_EQ(text, "abc"_text);
  text.assignChars("xyz!"_text);
  EXPECT_EQ(sharer, "abc"_text);
  RawString again = sharer;
  again.assignChars(sharer);
  EXPECT_EQ(again, "abc"_text);
  again.assignChars(RawString::viewOf(EncodingUtf8, again.text() + 1, 2));
  EXPECT_EQ(bytesOf(again), "bc");
}

// --- Gaps and ranges

TEST(RawStringGap, MovesTheTailWithItsTerminator) {
  RawString text = raw("abcd");
  text.insertGap(1, 2);
  EXPECT_EQ(text.length(), 6);
  EXPECT_EQ(text.at(0), u'a');
  EXPECT_EQ(text.at(3), u'b');
  EXPECT_EQ(text.at(5), u'd');
  EXPECT_TRUE(isTerminated(text));
}

TEST(RawStringGap, WideUnitsMoveWhole) {
  RawString text = RawString::fromWide(u"abcd");
  text.insertGap(4, 1);
  EXPECT_EQ(text.length(), 5);
  EXPECT_TRUE(isTerminated(text));
  text.insertGap(0, 3);
  EXPECT_EQ(text.at(3), u'a');
  EXPECT_EQ(text.at(6), u'd');
}

TEST(RawStringGap, PlacesOutsideAreClampedAndRoomIsMade) {
  RawString text = tight("ab");
  text.insertGap(99, 1);
  EXPECT_EQ(text.length(), 3);
  EXPECT_EQ(text.at(1), u'b');
  text.insertGap(-5, 1);
  EXPECT_EQ(text.at(1), u'a');
  text.insertGap(0, 0);
  text.insertGap(0, -3);
  EXPECT_EQ(text.length(), 4);
}

TEST(RawStringRemove, ClosesTheRange) {
  RawString text = raw("abcdef");
  text.removeRange(1, 3);
  EXPECT_EQ(bytesOf(text), "aef");
  EXPECT_TRUE(isTerminated(text));
  text.removeRange(2, 100);
  EXPECT_EQ(bytesOf(text), "ae");
  text.removeRange(-1, 2);
  EXPECT_EQ(bytesOf(text), "e");
  text.removeRange(0, INT32_MAX);
  EXPECT_EQ(bytesOf(text), "");
  EXPECT_TRUE(isTerminated(text));
}

TEST(RawStringRemove, NothingToRemoveLeavesTheTextAsItIs) {
  RawString text = "abc"_text;
  text.removeRange(3, 1);
  text.removeRange(1, 0);
  text.removeRange(1, -1);
  text.removeRange(INT32_MAX, INT32_MAX);
  text.removeRange(INT32_MIN, INT32_MAX);
  text.removeRange(-3, 3);
  EXPECT_EQ(text, "abc"_text);
  RawString wide = RawString::fromWide(u"abc");
  wide.removeRange(0, 1);
  EXPECT_TRUE(wide.equals("bc"_text));
  EXPECT_TRUE(isTerminated(wide));
}

TEST(RawStringRemove, SharersKeepTheirText) {
  RawString text = raw("abc");
  const RawString sharer = text;
  text.removeRange(0, 2);
  EXPECT_EQ(bytesOf(sharer), "abc");
  EXPECT_EQ(bytesOf(text), "c");
}

TEST(RawStringReplace, ShrinksInPlace) {
  RawString text = raw("abcdef");
  const char* const bytes = text.text();
  text.replaceRange({1, 5}, raw("XYZ"), {1, 2});
  EXPECT_EQ(bytesOf(text), "aYf");
  EXPECT_EQ(text.text(), bytes);
  EXPECT_TRUE(isTerminated(text));
}

TEST(RawStringReplace, BothRangesAreClamped) {
  RawString text = raw("abc");
  text.replaceRange({2, 99}, raw("XYZ"), {-2, 2});
  EXPECT_EQ(bytesOf(text), "abXY");
  text.replaceRange({50, 60}, raw("!"), {0, 9});
  EXPECT_EQ(bytesOf(text), "abXY!");
  text.replaceRange({-4, 0}, raw("?"), {0, 1});
  EXPECT_EQ(bytesOf(text), "?abXY!");
  text.replaceRange({3, 1}, raw("-"), {0, 1});
  EXPECT_EQ(bytesOf(text), "?ab-XY!") << "an empty range is a place";
}

TEST(RawStringReplace, ByNothingRemoves) {
  RawString text = raw("abc");
  text.replaceRange({0, 3}, RawString(), {});
  EXPECT_TRUE(text.isEmpty());
  EXPECT_TRUE(isTerminated(text));
  RawString literal = "abc"_text;
  literal.replaceRange({1, 1}, RawString(), {});
  EXPECT_EQ(literal, "abc"_text);
}

TEST(RawStringReplace, WithItselfAsSource) {
  RawString text = raw("abcdef");
  text.replaceRange({1, 3}, text, {0, 6});
  EXPECT_EQ(bytesOf(text), "aabcdefdef");
  RawString sharing = raw("abcdef");
  const RawString sharer = sharing;
  sharing.replaceRange({0, 2}, sharer, {4, 6});
  EXPECT_EQ(bytesOf(sharing), "efcdef");
  EXPECT_EQ(bytesOf(sharer), "abcdef");
}

TEST(RawStringReplace, UnitsAreCopiedAsTheyStand) {
  RawString text = raw("ab");
  text.replaceRange({1, 1}, RawString::fromWide(u"あ"), {0, 1});
  EXPECT_EQ(bytesOf(text), "aBb");
  RawString wide = RawString::fromWide(u"ab");
  wide.replaceRange({0, 1}, raw("\xFF"), {0, 1});
  EXPECT_EQ(wide.at(0), 0xFF);
}

TEST(RawStringUnderscore, IsInsertedUpToTheEnd) {
  RawString text = raw("abc");
  text.insertUnderscore(1);
  EXPECT_EQ(bytesOf(text), "a_bc");
  text.insertUnderscore(4);
  EXPECT_EQ(bytesOf(text), "a_bc_");
  text.insertUnderscore(6);
  EXPECT_EQ(bytesOf(text), "a_bc_") << "past the length";
  text.insertUnderscore(-1);
  EXPECT_EQ(bytesOf(text), "_a_bc_");
  EXPECT_TRUE(isTerminated(text));
}

TEST(RawStringUnderscore, FollowsTheGrowthRule) {
  RawString text = tight(some(199));
  text.insertUnderscore(0);
  EXPECT_EQ(text.capacity(), 500);
  RawString empty(EncodingWide);
  empty.insertUnderscore(0);
  EXPECT_TRUE(empty.equals("_"_text));
  EXPECT_EQ(empty.capacity(), 22);
}

// --- Numbers

TEST(RawStringNumbers, DecimalWithSign) {
  EXPECT_EQ(RawString::fromInt64(0), "0"_text);
  EXPECT_EQ(RawString::fromInt64(1234567890), "1234567890"_text);
  EXPECT_EQ(RawString::fromInt64(-7), "-7"_text);
  EXPECT_EQ(RawString::fromInt64(INT64_MAX), "9223372036854775807"_text);
  EXPECT_EQ(RawString::fromInt64(INT64_MIN), "-9223372036854775808"_text);
}

TEST(RawStringNumbers, AppendToWhatIsThere) {
  RawString text = raw("n=");
  text.appendUInt64(255, 16);
  EXPECT_EQ(bytesOf(text), "n=0xFF");
  text.appendInt64(-3);
  EXPECT_EQ(bytesOf(text), "n=0xFF-3");
  text.appendDigits(5, 10, 2);
  EXPECT_EQ(bytesOf(text), "n=0xFF-305");
  EXPECT_TRUE(isTerminated(text));
  RawString wide = RawString::fromWide(u"n=");
  wide.appendInt64(42);
  wide.appendDigits(7, 10, 3);
  EXPECT_TRUE(wide.equals("n=42007"_text));
  EXPECT_TRUE(isTerminated(wide));
}

TEST(RawStringNumbers, PrefixesOfBases) {
  EXPECT_EQ(RawString::fromUInt64(5, 2), "0b101"_text);
  EXPECT_EQ(RawString::fromUInt64(0, 2), "0b0"_text);
  EXPECT_EQ(RawString::fromUInt64(0, 16), "0x0"_text);
  EXPECT_EQ(RawString::fromUInt64(0xABCDEF, 16), "0xABCDEF"_text);
  EXPECT_EQ(RawString::fromUInt64(8, 8), "10"_text);
  EXPECT_EQ(RawString::fromUInt64(35, 36), "Z"_text);
  EXPECT_EQ(RawString::fromUInt64(UINT64_MAX, 2), raw("0b" + some(64, '1')));
  EXPECT_EQ(RawString::fromUInt64(UINT64_MAX, 10), "18446744073709551615"_text);
}

TEST(RawStringNumbers, WildBases) {
  EXPECT_EQ(RawString::fromUInt64(36, 37), "?"_text);
  EXPECT_EQ(RawString::fromUInt64(37 * 2 + 36, 37), "2?"_text);
  EXPECT_EQ(RawString::fromUInt64(12, 1), "12"_text) << "a base below 2 counts as 10";
  EXPECT_EQ(RawString::fromUInt64(12, 0), "12"_text);
  EXPECT_EQ(RawString::fromUInt64(12, -16), "12"_text);
  EXPECT_EQ(RawString::fromDigits(12, 0, 3), "012"_text);
}

TEST(RawStringNumbers, DigitsOfAWidth) {
  EXPECT_EQ(RawString::fromDigits(255, 16, 8), "000000FF"_text);
  EXPECT_EQ(RawString::fromDigits(12345, 10, 3), "345"_text);
  EXPECT_EQ(RawString::fromDigits(0, 10, 2), "00"_text);
  EXPECT_EQ(RawString::fromDigits(36, 40, 2), "0?"_text);
  EXPECT_EQ(RawString::fromDigits(5, 10, 0).kind(), RawString::KindEmpty);
  EXPECT_EQ(RawString::fromDigits(5, 10, -3), ""_text);
  EXPECT_EQ(RawString::fromDigits(1, 10, 70).length(), 70);
}

// --- Escapes

TEST(RawStringEscape, LineEndsAndTabs) {
  EXPECT_EQ(RawString::escapeControls("a\r\nb\rc\nd\te"_text), "a\\nb\\nc\\nd\\te"_text);
  EXPECT_EQ(RawString::escapeControls("\r\n"_text), "\\n"_text);
  EXPECT_EQ(RawString::escapeControls("\n\r"_text), "\\n\\n"_text);
  EXPECT_EQ(RawString::escapeControls("\r\r\n\n"_text), "\\n\\n\\n"_text);
  EXPECT_EQ(RawString::escapeControls("\r"_text), "\\n"_text);
}

TEST(RawStringEscape, AllElseIsCopied) {
  EXPECT_EQ(RawString::escapeControls("\\n \x01\x7F \"\xE3\x81\x82\""_text),
            "\\n \x01\x7F \"\xE3\x81\x82\""_text);
  EXPECT_TRUE(RawString::escapeControls(RawString()).isEmpty());
}

TEST(RawStringEscape, TheResultIsUtf8) {
  const RawString fromWide = RawString::escapeControls(RawString::fromWide(u"あ\t"));
  EXPECT_EQ(fromWide.encoding(), EncodingUtf8);
  EXPECT_EQ(bytesOf(fromWide), "\xE3\x81\x82\\t");
  const RawString empty = RawString::escapeControls(RawString(EncodingWide));
  EXPECT_EQ(empty.encoding(), EncodingUtf8);
}

} // namespace
