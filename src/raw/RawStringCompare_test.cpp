#include "raw/RawString.h"

#include "PlainText.h"
#include "TestText.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace RawLayer;

namespace {

RawString shiftJis(const std::string& bytes) {
  return RawString::fromBytes(EncodingShiftJis, bytes.data(), static_cast<int32_t>(bytes.size()));
}

RawString bytesIn(int32_t encoding, const std::string& bytes) {
  return RawString::fromBytes(encoding, bytes.data(), static_cast<int32_t>(bytes.size()));
}

// --- Comparing

TEST(RawStringCompare, EqualsComparesWholeTexts) {
  EXPECT_TRUE(raw("abc").equals("abc"_text));
  EXPECT_FALSE(raw("abc").equals("abcd"_text));
  EXPECT_FALSE(raw("abc").equals("abC"_text));
  EXPECT_TRUE(RawString().equals(""_text));
  EXPECT_FALSE(RawString().equals("a"_text));
}

TEST(RawStringCompare, AsciiIsEqualAcrossEncodings) {
  EXPECT_TRUE(raw("abc").equals(RawString::fromWide(u"abc")));
  EXPECT_TRUE(RawString::fromWide(u"abc").equals(shiftJis("abc")));
  EXPECT_FALSE(raw("\xC3\xA9").equals(RawString::fromWide(u"é")));
  EXPECT_TRUE(raw("\xE9").equals(RawString::fromWide(u"é")))
      << "units are compared, not characters";
}

TEST(RawStringCompare, NoCaseFoldsAsciiOnly) {
  EXPECT_TRUE(raw("HeLLo").equalsNoCase("hEllO"_text));
  EXPECT_TRUE(raw("az").equalsNoCase(RawString::fromWide(u"AZ")));
  EXPECT_FALSE(raw("`").equalsNoCase("@"_text));
  EXPECT_FALSE(raw("{").equalsNoCase("["_text));
  EXPECT_FALSE(RawString::fromWide(u"é").equalsNoCase(RawString::fromWide(u"É")));
  EXPECT_TRUE(shiftJis("\x83\x61").equalsNoCase(shiftJis("\x83\x41")))
      << "the second byte of a character folds too";
}

TEST(RawStringCompare, RangesAreClampedBeforeTheyAreCompared) {
  const RawString text = raw("abcdef");
  EXPECT_TRUE(text.rangeEquals({2, 4}, "xcdx"_text, {1, 3}));
  EXPECT_FALSE(text.rangeEquals({2, 4}, "xcdx"_text, {1, 4}));
  EXPECT_TRUE(text.rangeEquals({4, 99}, "ef"_text, {-7, 99}));
  EXPECT_TRUE(text.rangeEquals({3, 3}, "x"_text, {9, 12})) << "two empty parts are equal";
  EXPECT_FALSE(text.rangeEquals({0, 2}, "AB"_text, {0, 2}));
  EXPECT_TRUE(text.rangeEqualsNoCase({0, 2}, "AB"_text, {0, 2}));
  EXPECT_FALSE(text.rangeEqualsNoCase({0, 2}, "ABC"_text, {0, 3}));
}

TEST(RawStringCompare, RangeEqualsComparesRawUnits) {
  const RawString text = shiftJis("\x83\x5C"); // the second byte is a backslash by itself
  EXPECT_TRUE(text.rangeEquals({1, 2}, "\\"_text, {0, 1}));
}

TEST(RawStringCompare, EqualsAtComparesSoManyUnitsFromEachPlace) {
  const RawString text = raw("abcdef");
  EXPECT_TRUE(text.equalsAt(2, "xxcdyy"_text, 2, 2));
  EXPECT_FALSE(text.equalsAt(2, "xxcdyy"_text, 2, 3));
  EXPECT_FALSE(text.equalsAt(4, "ef!"_text, 0, 3)) << "one part is shorter";
  EXPECT_TRUE(text.equalsAt(4, "ef"_text, 0, 3)) << "both end there";
  EXPECT_TRUE(text.equalsAt(4, "ef"_text, 0, INT32_MAX));
  EXPECT_TRUE(text.equalsAt(-1, "ax"_text, -1, 2)) << "a part begins with the text";
  EXPECT_TRUE(text.equalsAt(INT32_MIN, "x"_text, INT32_MIN, INT32_MIN)) << "both are empty";
}

TEST(RawStringCompare, StartsWithAtFolds) {
  const RawString text = raw("C:\\Folder");
  EXPECT_TRUE(text.startsWithAt(3, "FOLDER and more"_text, 6));
  EXPECT_FALSE(text.startsWithAt(3, "FOLDER and more"_text, 7));
  EXPECT_TRUE(text.startsWithAt(0, "c:"_text, 2));
  EXPECT_FALSE(text.startsWithAt(1, "c:"_text, 2));
}

TEST(RawStringCompare, OrderIsByTheFirstUnitThatDiffers) {
  EXPECT_EQ(raw("abc").compare("abd"_text), -1);
  EXPECT_EQ(raw("abd").compare("abc"_text), 1);
  EXPECT_EQ(raw("abc").compare("abc"_text), 0);
  EXPECT_EQ(raw("ab").compare("abc"_text), -1);
  EXPECT_EQ(raw("abc").compare("ab"_text), 1);
  EXPECT_EQ(RawString().compare("a"_text), -1);
  EXPECT_EQ(RawString().compare(RawString(EncodingWide)), 0);
}

TEST(RawStringCompare, OrderIsByUnsignedValues) {
  EXPECT_EQ(raw("\x7F").compare(raw("\x80")), -1);
  EXPECT_EQ(raw("\xFF").compare(raw("a")), 1);
  EXPECT_EQ(raw("\xFF").compare(RawString::fromWide(u"\x0100")), -1);
  EXPECT_EQ(RawString::fromWide(u"\xFFFF").compare(RawString::fromWide(u"\x7FFF")), 1);
}

TEST(RawStringCompare, OrderWithoutCaseFoldsBothSides) {
  EXPECT_EQ(raw("abc").compareNoCase("ABD"_text), -1);
  EXPECT_EQ(raw("ABC").compareNoCase("abc"_text), 0);
  EXPECT_EQ(raw("a").compareNoCase("["_text), -1) << "a folds to 0x41, below 0x5B";
  EXPECT_EQ(raw("a").compare("["_text), 1);
  EXPECT_EQ(raw("AB").compareNoCase("abc"_text), -1);
}

TEST(RawStringCompare, LongTextsDifferAtEveryPlace) {
  for (std::size_t length = 1; length < 140; ++length)
    for (std::size_t place = 0; place < length; ++place) {
      std::string bytes(length, 'm');
      const RawString plain = raw(bytes);
      bytes[place] = 'n';
      const RawString above = raw(bytes);
      bytes[place] = 'M';
      const RawString capital = raw(bytes);
      ASSERT_FALSE(plain.equals(above));
      ASSERT_EQ(plain.compare(above), -1);
      ASSERT_EQ(above.compareNoCase(plain), 1);
      ASSERT_TRUE(plain.equalsNoCase(capital));
      ASSERT_EQ(plain.compare(capital), 1);
    }
}

// --- Characters

TEST(RawStringCharacters, WideTextsPairSurrogates) {
  const RawString text = RawString::fromWide(u"\xD7FF\xD800\xDBFF\xDC00\xE000");
  const int32_t expected[] = {0, 1, 1, 0, 0};
  for (int32_t i = 0; i < 5; ++i) EXPECT_EQ(text.extraUnits(i), expected[i]) << i;
}

TEST(RawStringCharacters, ShiftJisLeadBytes) {
  for (int32_t byte = 0; byte < 256; ++byte) {
    const bool lead = (byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xEF);
    EXPECT_EQ(shiftJis(std::string(1, static_cast<char>(byte))).extraUnits(0), lead ? 1 : 0)
        << byte;
  }
}

TEST(RawStringCharacters, Utf8LeadBytes) {
  for (int32_t byte = 0; byte < 256; ++byte) {
    int32_t expected = 0;
    if ((byte & 0xE0) == 0xC0) expected = byte > 0xC1 ? 1 : 0;
    if ((byte & 0xF0) == 0xE0) expected = 2;
    if ((byte & 0xF8) == 0xF0) expected = 3;
    if ((byte & 0xFC) == 0xF8) expected = 4;
    if ((byte & 0xFE) == 0xFC) expected = 5;
    EXPECT_EQ(raw(std::string(1, static_cast<char>(byte))).extraUnits(0), expected) << byte;
  }
}

TEST(RawStringCharacters, Utf16BytesGoInPairs) {
  const RawString little = bytesIn(EncodingUtf16Le, std::string("a\0\x3D\xD8\x00\xDE", 6));
  const int32_t expected[] = {1, 0, 3, 0, 1, 0};
  for (int32_t i = 0; i < 6; ++i) EXPECT_EQ(little.extraUnits(i), expected[i]) << i;
  const RawString big = bytesIn(EncodingUtf16Be, std::string("\0a\xD8\x3D\xDE\0", 6));
  for (int32_t i = 0; i < 6; ++i) EXPECT_EQ(big.extraUnits(i), expected[i]) << i;
}

TEST(RawStringCharacters, OtherCodesHaveNone) {
  for (const int32_t code : {EncodingAnsi, EncodingUtf7, EncodingMac, EncodingBinary})
    EXPECT_EQ(bytesIn(code, "\xE3\x81\x82").extraUnits(0), 0) << code;
}

TEST(RawStringCharacters, NothingOutsideTheText) {
  EXPECT_EQ(raw("\xE3").extraUnits(-1), 0);
  EXPECT_EQ(raw("\xE3").extraUnits(1), 0);
  EXPECT_EQ(bytesIn(EncodingUtf16Le, "").extraUnits(0), 0);
}

// --- Scanning

TEST(RawStringScan, IsOneOfLooksAtOneUnit) {
  const RawString text = raw("a b");
  EXPECT_TRUE(text.isOneOf(1, RawString::whiteSpace()));
  EXPECT_FALSE(text.isOneOf(0, RawString::whiteSpace()));
  EXPECT_FALSE(text.isOneOf(-1, raw(std::string("\0", 1))));
  EXPECT_FALSE(text.isOneOf(3, raw(std::string("\0", 1))));
  EXPECT_FALSE(text.isOneOf(0, RawString()));
}

TEST(RawStringScan, Sets) {
  EXPECT_EQ(RawString::whiteSpace(), " \t"_text);
  EXPECT_EQ(RawString::lineSpace(), " \t\r\n"_text);
}

TEST(RawStringScan, FindCharGivesTheFirstPlaceOrTheClampedEnd) {
  const RawString text = raw("abcabc");
  EXPECT_EQ(text.findChar({0, 6}, u'b'), 1);
  EXPECT_EQ(text.findChar({2, 6}, u'b'), 4);
  EXPECT_EQ(text.findChar({2, 4}, u'b'), 4);
  EXPECT_EQ(text.findChar({0, 99}, u'x'), 6);
  EXPECT_EQ(text.findChar({-9, 99}, u'a'), 0);
  EXPECT_EQ(text.findChar({3, 1}, u'a'), 3);
  EXPECT_EQ(text.findChar({9, 12}, u'a'), 6);
  EXPECT_EQ(text.findCharFrom(3, u'a'), 3);
  EXPECT_EQ(text.findCharFrom(4, u'a'), 6);
  EXPECT_TRUE(text.containsChar(u'c'));
  EXPECT_FALSE(text.containsChar(u'd'));
  EXPECT_FALSE(text.containsChar(0x161)) << "no unit of bytes is above 0xFF";
}

TEST(RawStringScan, FindCharStepsByCharacters) {
  const RawString text = shiftJis("\x83\x5C=\\");
  EXPECT_EQ(text.findCharFrom(0, u'\\'), 3);
  EXPECT_EQ(text.findCharFrom(1, u'\\'), 1) << "begun inside the character";
  EXPECT_FALSE(shiftJis("\x83\x5C").containsChar(u'\\'));
  EXPECT_FALSE(RawString::fromWide(u"\xD83D\xDE00").containsChar(0xDE00));
  EXPECT_FALSE(raw("\xE3\x81=").containsChar(u'=')) << "a cut character takes what follows";
  EXPECT_TRUE(raw("\xE3\x81\x82=").containsChar(u'='));
}

TEST(RawStringScan, FindGivesTheFirstPlaceOrTheClampedEnd) {
  const RawString text = raw("one two one two");
  EXPECT_EQ(text.find("two"_text), 4);
  EXPECT_EQ(text.find({5, 15}, "two"_text, {0, 3}), 12);
  EXPECT_EQ(text.find({5, 14}, "two"_text, {0, 3}), 14) << "it must end inside the range";
  EXPECT_EQ(text.find({0, 99}, "a two b"_text, {2, 5}), 4);
  EXPECT_EQ(text.find("three"_text), 15);
  EXPECT_EQ(text.find("one two one two and more"_text), 15);
  EXPECT_EQ(text.find({3, 1}, "one"_text, {0, 3}), 3);
  EXPECT_EQ(text.find("w"_text), 5);
  EXPECT_EQ(text.find(text), 0);
}

TEST(RawStringScan, AnEmptyPatternGivesTheClampedEnd) {
  const RawString text = raw("abc");
  EXPECT_EQ(text.find(RawString()), 3);
  EXPECT_EQ(text.find({0, 2}, "abc"_text, {1, 1}), 2);
  EXPECT_EQ(text.find({0, 99}, "abc"_text, {5, 9}), 3);
}

TEST(RawStringScan, FindStepsByCharacters) {
  const RawString text = shiftJis("\x83\x5C\x41\x5C\x41");
  EXPECT_EQ(text.find("\\A"_text), 3);
  EXPECT_EQ(shiftJis("\x83\x5C\x41").find("\\A"_text), 3);
  EXPECT_EQ(raw("\xE3\x81\x82\xE3\x81\x84").find("\x81\x84"_text), 6) << "not inside a character";
  EXPECT_EQ(raw("\xE3\x81\x82\xE3\x81\x84").find("\xE3\x81\x84"_text), 3);
}

TEST(RawStringScan, FindAcrossEncodingsComparesUnits) {
  EXPECT_EQ(RawString::fromWide(u"one two").find("two"_text), 4);
  EXPECT_EQ(raw("one two").find(RawString::fromWide(u"two")), 4);
  EXPECT_EQ(raw("bB").find(RawString::fromWide(u"\x3042")), 2) << "0x3042 is no 0x42";
  EXPECT_EQ(raw("abcd").find(RawString::fromWide(u"b\x0163")), 4);
}

TEST(RawStringScan, FindLastOfStepsByCharacters) {
  EXPECT_EQ(raw("a;b,c").findLastOf({0, 5}, ";,"_text), 3);
  EXPECT_EQ(raw("a;b,c").findLastOf({0, 3}, ";,"_text), 1);
  EXPECT_EQ(raw("a;b,c").findLastOf({4, 99}, ";,"_text), 5);
  EXPECT_EQ(raw("abc").findLastOf({0, 2}, RawString()), 2);
  EXPECT_EQ(raw("C:\\a/b").findLastSeparator({0, 6}), 4);
  EXPECT_EQ(raw("C:\\a/b").findLastSeparator({0, 4}), 2);
  EXPECT_EQ(raw("name").findLastSeparator({0, 4}), 4);
  EXPECT_EQ(shiftJis("C:\\\x83\x5C").findLastSeparator({0, 5}), 2);
}

TEST(RawStringScan, SkipSetStepsByUnits) {
  EXPECT_EQ(raw("  \tx ").skipSet(0, RawString::whiteSpace()), 3);
  EXPECT_EQ(raw("  x").skipSet(-4, RawString::whiteSpace()), 2);
  EXPECT_EQ(raw("x  ").skipSet(1, RawString::whiteSpace()), 3);
  EXPECT_EQ(raw("abc").skipSet(7, RawString::whiteSpace()), 3);
  EXPECT_EQ(shiftJis("\x83\x5C").skipSet(0, shiftJis("\x83")), 1);
}

TEST(RawStringScan, FindSetStepsByCharacters) {
  EXPECT_EQ(raw("ab;c").findSet(0, ",;"_text), 2);
  EXPECT_EQ(raw("ab;c").findSet(3, ",;"_text), 4);
  EXPECT_EQ(raw("ab;c").findSet(-3, "a"_text), 0);
  EXPECT_EQ(raw("ab").findSet(9, "a"_text), 2);
  EXPECT_EQ(shiftJis("\x83\x5C\\").findSet(0, "\\"_text), 2);
  EXPECT_EQ(RawString::fromWide(u"aé漢").findSet(0, RawString::fromWide(u"字漢")), 2);
  EXPECT_EQ(RawString::fromWide(u"a\xC3").findSet(0, raw("\xC3")), 1);
}

TEST(RawStringScan, TrimRangeWorksFromBothEnds) {
  const RawString text = raw("  a b\t ");
  EXPECT_EQ(text.trimRange(text.all(), RawString::whiteSpace()), (RawRange{2, 5}));
  EXPECT_EQ(text.trimRange({3, 99}, RawString::whiteSpace()), (RawRange{4, 5}));
  const RawRange none = raw("   ").trimRange({0, 3}, RawString::whiteSpace());
  EXPECT_TRUE(none.isEmpty());
  EXPECT_EQ(raw("ab").trimRange({-2, 99}, RawString::whiteSpace()), (RawRange{0, 2}));
}

TEST(RawStringScan, PlatformClasses) {
  EXPECT_EQ(RawString().classifyForPlatform(), RawString::PlatformEither);
  EXPECT_EQ(RawString(EncodingWide).classifyForPlatform(), RawString::PlatformEither);
  EXPECT_EQ(RawString::fromWide(u"a").classifyForPlatform(), RawString::PlatformWide);
  EXPECT_EQ(bytesIn(EncodingAnsi, "\xE9").classifyForPlatform(), RawString::PlatformNarrow);
  EXPECT_EQ(shiftJis("\x83\x5C").classifyForPlatform(), RawString::PlatformNarrow);
  EXPECT_EQ(raw("plain ~").classifyForPlatform(), RawString::PlatformNarrow);
  EXPECT_EQ(raw("plain text with a \x7F").classifyForPlatform(), RawString::PlatformConvert);
  EXPECT_EQ(raw("\xC3\xA9").classifyForPlatform(), RawString::PlatformConvert);
  for (const int32_t code :
       {EncodingUtf7, EncodingMac, EncodingUtf16Be, EncodingUtf16Le, EncodingBinary})
    EXPECT_EQ(bytesIn(code, "a").classifyForPlatform(), RawString::PlatformConvert) << code;
}

TEST(RawStringScan, PlatformClassesOfSeveralTexts) {
  const auto combine = RawString::combinePlatformClasses;
  EXPECT_EQ(combine(0, 0, 0), 0);
  EXPECT_EQ(combine(0, 3, 3), 0);
  EXPECT_EQ(combine(3, 3, 3), 0);
  EXPECT_EQ(combine(1, 1, 3), 1);
  EXPECT_EQ(combine(3, 1, 1), 1);
  EXPECT_EQ(combine(0, 1, 3), 2);
  EXPECT_EQ(combine(1, 0, 0), 2);
  EXPECT_EQ(combine(2, 0, 0), 2);
  EXPECT_EQ(combine(3, 3, 2), 2);
  EXPECT_EQ(RawString::combinePlatformClasses(3, 1), 1);
  EXPECT_EQ(RawString::combinePlatformClasses(0, 3), 0);
}

// --- Against a plain reference, on texts of every code, most of them malformed

class RandomTexts {
 public:
  explicit RandomTexts(uint32_t seed) : random_(seed) {}

  int32_t number(uint32_t below) { return static_cast<int32_t>(random_() % below); }

  // Few different units, so that hits and broken characters abound.
  RawString text(int32_t encoding, int32_t length) {
    static const std::string bytes("ab=\\\x81\x82\x83\x5C\xC2\xE3\xE3\xF0\xF8\xFD\xD8\xDC\0", 17);
    static const char16_t units[] = {u'a', u'b', u'=', 0xD83D, 0xDE00, 0xD800, 0x83, 0x3042};
    RawString result(encoding);
    for (int32_t i = 0; i < length; ++i)
      result.appendChar(encoding == EncodingWide
                            ? units[random_() % std::size(units)]
                            : static_cast<uint8_t>(bytes[random_() % bytes.size()]));
    return result;
  }

  RawRange range(const RawString& text) {
    const auto size = static_cast<uint32_t>(text.length()) + 1;
    return RawRange{number(size), number(size)}.clamped(text.length());
  }

 private:
  std::minstd_rand random_;
};

TEST(RawStringScan, RandomTextsGiveThePlainAnswers) {
  RandomTexts random(1);
  for (int32_t round = 0; round < 40000; ++round) {
    const int32_t encoding = random.number(9);
    const RawString text = random.text(encoding, random.number(round % 10 == 0 ? 200 : 30));
    const RawRange range = random.number(2) == 0 ? text.all() : random.range(text);
    const RawString unit = random.text(encoding, 1);
    ASSERT_EQ(text.findChar(range, unit.at(0)), PlainText::findChar(text, range, unit.at(0)));

    // A piece of the text itself is found most often.
    const bool own = random.number(2) == 0;
    const RawString other = own ? text : random.text(random.number(9), 1 + random.number(4));
    RawRange part = random.range(other);
    if (part.size() > 5) part.end = part.start + 5;
    ASSERT_EQ(text.find(range, other, part), PlainText::find(text, range, other, part));

    const RawString set = random.text(random.number(9), random.number(4));
    ASSERT_EQ(text.findLastOf(range, set), PlainText::findLastOf(text, range, set));
    ASSERT_EQ(text.findSet(range.start, set), PlainText::findSet(text, range.start, set));

    ASSERT_EQ(text.compare(other), PlainText::compare(text, other, false));
    ASSERT_EQ(text.compareNoCase(other), PlainText::compare(text, other, true));
    ASSERT_EQ(text.equals(other), PlainText::compare(text, other, false) == 0);
  }
}

TEST(RawStringScan, RunsOfLeadBytesTakeNoMoreThanAWalk) {
  // Each place here could be inside a character that began at any place before it.
  const std::string leads(2000000, '\xE3');
  std::string bytes;
  for (int32_t i = 0; i < 500000; ++i) bytes += "\xE3\xE3=\xE3";
  EXPECT_EQ(raw(leads + "=").findCharFrom(0, u'='), 2000001);
  const RawString text = raw(bytes);
  EXPECT_EQ(text.findChar(text.all(), u'='), PlainText::findChar(text, text.all(), u'='));
  EXPECT_EQ(text.find("=\xE3"_text), PlainText::find(text, text.all(), "=\xE3"_text, {0, 2}));
}

} // namespace
