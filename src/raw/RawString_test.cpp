#include "raw/RawString.h"

#include "TestText.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <thread>
#include <vector>

using namespace RawLayer;

namespace {

RawString ownedOf(int32_t length) {
  return raw(std::string(static_cast<std::size_t>(length), 'x'));
}

// --- Making texts

TEST(RawString, DefaultIsEmptyUtf8WithoutMemoryOfItsOwn) {
  const RawString text;
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(text.encoding(), EncodingUtf8);
  EXPECT_EQ(text.kind(), RawString::KindEmpty);
  EXPECT_EQ(text.capacity(), 0);
  EXPECT_EQ(text.references(), 0);
  EXPECT_EQ(*text.text(), '\0');
}

TEST(RawString, EmptyTextsOfEachCodeKeepTheirCodeAndAreNeverCounted) {
  for (int32_t code = EncodingAnsi; code <= EncodingBinary; ++code) {
    const RawString text(code);
    const RawString copy = text;
    EXPECT_EQ(copy.encoding(), code);
    EXPECT_EQ(copy.kind(), RawString::KindEmpty);
    EXPECT_EQ(text.references(), 0);
    EXPECT_EQ(*text.wide(), u'\0');
  }
}

TEST(RawString, CapacityIsReservedExactly) {
  const RawString text(EncodingShiftJis, 37);
  EXPECT_EQ(text.encoding(), EncodingShiftJis);
  EXPECT_EQ(text.length(), 0);
  EXPECT_EQ(text.capacity(), 37);
  EXPECT_EQ(text.kind(), RawString::KindOwned);
  EXPECT_EQ(RawString::withCapacity(5).capacity(), 5);
  EXPECT_EQ(RawString::withCapacity(5).encoding(), EncodingUtf8);
  EXPECT_EQ(RawString::withCapacity(0).kind(), RawString::KindEmpty);
}

TEST(RawString, EmptyStaticIsOneObject) {
  EXPECT_EQ(&RawString::emptyStatic(), &RawString::emptyStatic());
  EXPECT_TRUE(RawString::emptyStatic().isEmpty());
  EXPECT_EQ(RawString::emptyStatic().encoding(), EncodingUtf8);
}

TEST(RawString, FromCharsCopiesItsSource) {
  char buffer[] = "abc";
  const RawString whole = RawString::fromChars(buffer);
  const RawString part = RawString::fromChars(buffer, 2);
  buffer[0] = 'X';
  EXPECT_EQ(bytesOf(whole), "abc");
  EXPECT_EQ(bytesOf(part), "ab");
  EXPECT_EQ(whole.kind(), RawString::KindOwned);
  EXPECT_EQ(whole.encoding(), EncodingUtf8);
  EXPECT_EQ(part.text()[2], '\0');
}

TEST(RawString, CopiesOfCharsFollowTheGrowthRule) {
  EXPECT_EQ(ownedOf(3).capacity(), 26);
  EXPECT_EQ(ownedOf(199).capacity(), 418);
  EXPECT_EQ(ownedOf(200).capacity(), 500);
}

TEST(RawString, NothingGivesAnEmptyText) {
  EXPECT_EQ(RawString::fromChars(nullptr).kind(), RawString::KindEmpty);
  EXPECT_EQ(RawString::fromChars("").kind(), RawString::KindEmpty);
  EXPECT_EQ(RawString::fromChars(nullptr, 4).length(), 0);
  EXPECT_EQ(RawString::fromChars("abc", -1).length(), 0);
  EXPECT_EQ(RawString::fromWide(nullptr).length(), 0);
  EXPECT_EQ(RawString::fromWide(u"").encoding(), EncodingWide);
  EXPECT_EQ(RawString::fromBytes(EncodingShiftJis, nullptr, 3).length(), 0);
  EXPECT_EQ(RawString::fromBytes(EncodingShiftJis, "", 0).encoding(), EncodingShiftJis);
}

TEST(RawString, CountedCharsMayHoldZeros) {
  const RawString text = RawString::fromChars("a\0b", 3);
  EXPECT_EQ(text.length(), 3);
  EXPECT_EQ(text.at(2), u'b');
}

TEST(RawString, FromWideCountsUnitsAndEndsInAWideZero) {
  const RawString text = RawString::fromWide(u"aé漢");
  EXPECT_EQ(text.encoding(), EncodingWide);
  EXPECT_EQ(text.length(), 3);
  EXPECT_EQ(text.at(2), u'漢');
  EXPECT_EQ(text.wide()[3], u'\0');
  EXPECT_EQ(text.capacity(), 26);
  EXPECT_EQ(RawString::fromWide(u"abcdef", 4).length(), 4);
}

TEST(RawString, FromBytesTakesAnyCode) {
  const RawString text = RawString::fromBytes(EncodingUtf16Be, "\0a\0b", 4);
  EXPECT_EQ(text.encoding(), EncodingUtf16Be);
  EXPECT_EQ(text.length(), 4);
  EXPECT_EQ(text.at(1), u'a');
  EXPECT_EQ(RawString::fromBytes(99, "abc", 3).encoding(), EncodingBinary);
}

TEST(RawString, FromRangeTakesTheClampedPart) {
  const RawString text = raw("abcdef");
  EXPECT_EQ(bytesOf(RawString::fromRange(EncodingUtf8, text, {1, 3})), "bc");
  EXPECT_EQ(bytesOf(RawString::fromRange(EncodingUtf8, text, {-5, 2})), "ab");
  EXPECT_EQ(bytesOf(RawString::fromRange(EncodingUtf8, text, {4, 99})), "ef");
  const RawString none = RawString::fromRange(EncodingShiftJis, text, {3, 3});
  EXPECT_EQ(none.kind(), RawString::KindEmpty);
  EXPECT_EQ(none.encoding(), EncodingShiftJis);
  EXPECT_EQ(RawString::fromRange(EncodingUtf8, text, {5, 2}).length(), 0);
  EXPECT_EQ(RawString::fromRange(EncodingUtf8, text, {9, 12}).length(), 0);
}

TEST(RawString, FromRangeIsACopyAlsoOfTheWhole) {
  const RawString text = raw("abc");
  const RawString copy = RawString::fromRange(EncodingUtf8, text, text.all());
  EXPECT_NE(copy.text(), text.text());
  EXPECT_EQ(copy.capacity(), 26);
}

TEST(RawString, FromRangeConvertsWhenTheCodesDiffer) {
  const RawString text = raw("x\xC3\xA9y");
  const RawString part = RawString::fromRange(EncodingWide, text, {1, 4});
  EXPECT_EQ(part.encoding(), EncodingWide);
  EXPECT_TRUE(part.equals(RawString::fromWide(u"éy")));
}

TEST(RawString, ConcatHasTheCodeOfTheFirst) {
  const RawString a = RawString::fromWide(u"a");
  const RawString joined = RawString::concat(a, "b"_text, "c"_text, "d"_text, "e"_text);
  EXPECT_EQ(joined.encoding(), EncodingWide);
  EXPECT_EQ(joined, "abcde"_text);
  EXPECT_EQ(joined.capacity(), 30);
  EXPECT_EQ(RawString::concat("b"_text, a).encoding(), EncodingUtf8);
  EXPECT_EQ(RawString::concat(""_text, ""_text).kind(), RawString::KindEmpty);
}

TEST(RawString, KeywordsOfTruth) {
  EXPECT_EQ(RawString::fromBool(true), "True"_text);
  EXPECT_EQ(RawString::fromBool(false), "False"_text);
}

TEST(RawString, LiteralsAreStaticUtf8) {
  const RawString& literal = "caf\xC3\xA9"_text;
  EXPECT_EQ(literal.kind(), RawString::KindStatic);
  EXPECT_EQ(literal.encoding(), EncodingUtf8);
  EXPECT_EQ(literal.length(), 5);
  EXPECT_EQ(literal.capacity(), 5);
  EXPECT_EQ(literal.text()[5], '\0');
  EXPECT_EQ(literal, raw("caf\xC3\xA9"));
  EXPECT_EQ(""_text.kind(), RawString::KindStatic);
  EXPECT_TRUE(""_text.isEmpty());
}

TEST(RawString, ALiteralIsOneObject) {
  const auto literal = []() -> const RawString& { return "the same"_text; };
  EXPECT_EQ(&literal(), &literal());
}

// --- Reading

TEST(RawString, AtIsZeroOutsideTheText) {
  const RawString text = raw("ab");
  EXPECT_EQ(text.at(-1), 0);
  EXPECT_EQ(text.at(0), u'a');
  EXPECT_EQ(text.at(1), u'b');
  EXPECT_EQ(text.at(2), 0);
  EXPECT_EQ(text.at(INT32_MAX), 0);
  EXPECT_EQ(text.at(INT32_MIN), 0);
  EXPECT_EQ(RawString().at(0), 0);
}

TEST(RawString, AtWidensBytesWithoutASign) {
  EXPECT_EQ(raw("\xFF").at(0), 0xFF);
  EXPECT_EQ(RawString::fromWide(u"\xFFFE").at(0), 0xFFFE);
}

// --- Sharing

TEST(RawString, CopiesShareOneBody) {
  const RawString text = raw("abc");
  EXPECT_EQ(text.references(), 0);
  {
    const RawString second = text;
    const RawString third = second;
    EXPECT_EQ(second.text(), text.text());
    EXPECT_EQ(text.references(), 2);
  }
  EXPECT_EQ(text.references(), 0);
}

TEST(RawString, StaticTextsAreSharedLikeOwnedOnes) {
  static const char bytes[] = "static";
  const RawString text = RawString::fromStatic(bytes, 6);
  const RawString copy = text;
  EXPECT_EQ(copy.text(), bytes);
  EXPECT_EQ(copy.kind(), RawString::KindStatic);
  EXPECT_EQ(text.references(), 1);
}

TEST(RawString, MovingTakesTheBodyAndLeavesAnEmptyText) {
  RawString text = raw("abc");
  const char* const bytes = text.text();
  RawString taken = std::move(text);
  EXPECT_EQ(taken.text(), bytes);
  EXPECT_EQ(taken.references(), 0);
  EXPECT_TRUE(text.isEmpty()); // NOLINT: a moved text is empty by contract
  EXPECT_EQ(text.encoding(), EncodingUtf8);
  text = std::move(taken);
  EXPECT_EQ(text.text(), bytes);
  EXPECT_TRUE(taken.isEmpty()); // NOLINT
}

TEST(RawString, MovingAViewKeepsItAView) {
  const char buffer[] = "abc";
  RawString view = RawString::viewOf(EncodingUtf8, buffer, 3);
  const RawString moved = std::move(view);
  EXPECT_EQ(moved.kind(), RawString::KindView);
  EXPECT_EQ(moved.text(), buffer);
}

TEST(RawString, MovingToItselfChangesNothing) {
  RawString text = raw("abc");
  RawString& same = text;
  text = std::move(same);
  EXPECT_EQ(text, "abc"_text);
}

TEST(RawString, ShareAsTheSameCodeGivesTheSameBody) {
  const RawString text = raw("abc");
  EXPECT_EQ(text.shareAs(EncodingUtf8).text(), text.text());
  EXPECT_EQ("abc"_text.shareAs(EncodingUtf8).text(), "abc"_text.text());
}

TEST(RawString, SharingAViewCopiesIt) {
  auto buffer = std::make_unique<char[]>(3);
  std::memcpy(buffer.get(), "abc", 3);
  RawString view = RawString::viewOf(EncodingUtf8, buffer.get(), 3);
  EXPECT_EQ(view.kind(), RawString::KindView);
  EXPECT_EQ(view.text(), buffer.get());
  EXPECT_EQ(view.capacity(), 3);
  const RawString shared = view.shareAs(EncodingUtf8);
  const RawString copied = view;
  RawString assigned;
  assigned = view;
  view.release();
  buffer.reset();
  for (const RawString* each : {&shared, &copied, static_cast<const RawString*>(&assigned)}) {
    EXPECT_EQ(bytesOf(*each), "abc");
    EXPECT_EQ(each->kind(), RawString::KindOwned);
    EXPECT_EQ(each->capacity(), 26);
    EXPECT_EQ(each->references(), 0);
  }
}

TEST(RawString, SharingAnEmptyViewGivesAnEmptyTextOfItsCode) {
  const RawString view = RawString::viewOf(EncodingShiftJis, "abc", 0);
  EXPECT_EQ(view.kind(), RawString::KindView);
  const RawString copy = view;
  EXPECT_EQ(copy.kind(), RawString::KindEmpty);
  EXPECT_EQ(copy.encoding(), EncodingShiftJis);
}

TEST(RawString, AViewOfNothingIsEmpty) {
  EXPECT_EQ(RawString::viewOf(EncodingUtf8, nullptr, 7).length(), 0);
  EXPECT_EQ(RawString::viewOf(EncodingUtf8, "abc", -7).length(), 0);
  EXPECT_EQ(*RawString::viewOf(EncodingWide, nullptr, 7).wide(), u'\0');
}

TEST(RawString, AssignReplacesTheCode) {
  RawString text = RawString::fromWide(u"wide");
  text.assign("narrow"_text);
  EXPECT_EQ(text.encoding(), EncodingUtf8);
  EXPECT_EQ(text, "narrow"_text);
}

TEST(RawString, AssigningItselfChangesNothing) {
  RawString text = raw("abc");
  const RawString copy = text;
  const RawString& same = text;
  text.assign(same);
  text = same;
  EXPECT_EQ(text.text(), copy.text());
  EXPECT_EQ(text.references(), 1);
}

TEST(RawString, AssigningASharerOfTheSameBodyKeepsTheCount) {
  RawString text = raw("abc");
  const RawString sharer = text;
  text.assign(sharer);
  EXPECT_EQ(text.references(), 1);
}

TEST(RawString, AssigningAViewIntoItsOwnTextCopiesFirst) {
  RawString text = raw("a long text that is freed when it is replaced");
  const RawString view = RawString::viewOf(EncodingUtf8, text.text() + 2, 4);
  text.assign(view);
  EXPECT_EQ(bytesOf(text), "long");
}

TEST(RawString, AssignConvertedConvertsOthersAndItself) {
  RawString text = raw("caf\xC3\xA9");
  text.assignConverted(EncodingWide, text);
  EXPECT_EQ(text.encoding(), EncodingWide);
  EXPECT_TRUE(text.equals(RawString::fromWide(u"café")));
  text.assignConverted(EncodingWide, text);
  EXPECT_EQ(text.references(), 0);
  text.assignConverted(EncodingUtf8, RawString::fromWide(u"é"));
  EXPECT_EQ(bytesOf(text), "\xC3\xA9");
}

TEST(RawString, ReleaseLeavesAnEmptyText) {
  RawString text = RawString::fromWide(u"abc");
  const RawString copy = text;
  text.release();
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(text.encoding(), EncodingUtf8);
  EXPECT_EQ(copy.references(), 0);
  EXPECT_EQ(copy, "abc"_text);
}

// --- Views that are used again and again

TEST(RawString, AssignViewWrapsWithoutCopying) {
  const char buffer[] = "first second";
  RawString text = raw("something else");
  text.assignView(EncodingShiftJis, buffer, 5);
  EXPECT_EQ(text.kind(), RawString::KindView);
  EXPECT_EQ(text.encoding(), EncodingShiftJis);
  EXPECT_EQ(text.text(), buffer);
  EXPECT_EQ(bytesOf(text), "first");
  text.assignView(EncodingUtf8, buffer + 6, 6);
  EXPECT_EQ(bytesOf(text), "second");
  EXPECT_EQ(text.encoding(), EncodingUtf8);
  text.assignView(EncodingWide, nullptr, 3);
  EXPECT_EQ(text.length(), 0);
  EXPECT_EQ(text.encoding(), EncodingWide);
}

TEST(RawString, AssignViewLeavesSharersAlone) {
  RawString text = raw("shared");
  const RawString sharer = text;
  text.assignView(EncodingUtf8, "view", 4);
  EXPECT_EQ(sharer, "shared"_text);
  EXPECT_EQ(sharer.references(), 0);
  RawString fromLiteral = "literal"_text;
  fromLiteral.assignView(EncodingUtf8, "view", 4);
  EXPECT_EQ("literal"_text.kind(), RawString::KindStatic);
  EXPECT_EQ(bytesOf(fromLiteral), "view");
}

TEST(RawString, AViewWrittenToBecomesACopy) {
  char buffer[] = "abc";
  RawString text = RawString::viewOf(EncodingUtf8, buffer, 3);
  text.appendChar(u'd');
  EXPECT_EQ(text.kind(), RawString::KindOwned);
  EXPECT_EQ(bytesOf(text), "abcd");
  EXPECT_STREQ(buffer, "abc");
  text.assignView(EncodingUtf8, buffer, 2);
  EXPECT_EQ(bytesOf(text), "ab");
}

// --- Copying on write

TEST(RawString, UnshareLeavesASoleOwnerAlone) {
  RawString text = raw("abc");
  const char* const bytes = text.text();
  text.unshare();
  EXPECT_EQ(text.text(), bytes);
  RawString empty;
  empty.unshare();
  EXPECT_EQ(empty.kind(), RawString::KindEmpty);
}

TEST(RawString, UnshareCopiesASharedTextUnderTheGrowthRule) {
  RawString text = RawString(EncodingShiftJis, 7);
  text.append("abc"_text);
  const RawString sharer = text;
  text.unshare();
  EXPECT_NE(text.text(), sharer.text());
  EXPECT_EQ(text.capacity(), 26);
  EXPECT_EQ(text.encoding(), EncodingShiftJis);
  EXPECT_EQ(sharer.capacity(), 7);
  EXPECT_EQ(sharer.references(), 0);
  EXPECT_EQ(text.references(), 0);
}

TEST(RawString, UnshareCopiesStaticTextsAndViewsUnderTheGrowthRule) {
  static const std::string bytes(200, 's');
  RawString text = RawString::fromStatic(bytes.data(), 200);
  text.unshare();
  EXPECT_EQ(text.kind(), RawString::KindOwned);
  EXPECT_EQ(text.capacity(), 500);
  RawString view = RawString::viewOf(EncodingUtf8, bytes.data(), 199);
  view.unshare();
  EXPECT_EQ(view.kind(), RawString::KindOwned);
  EXPECT_EQ(view.capacity(), 418);
}

TEST(RawString, UnshareOfAnEmptyForeignTextTakesNoMemory) {
  RawString text = ""_text;
  text.unshare();
  EXPECT_EQ(text.kind(), RawString::KindEmpty);
}

TEST(RawString, ReserveSetsTheCapacityAndKeepsTheText) {
  RawString text = raw("abc");
  text.reserve(1000);
  EXPECT_EQ(text.capacity(), 1000);
  EXPECT_EQ(bytesOf(text), "abc");
  text.reserve(10);
  EXPECT_EQ(text.capacity(), 10);
  EXPECT_EQ(text.text()[3], '\0');
  text.reserve(1);
  EXPECT_EQ(text.capacity(), 3) << "what is there stays";
  EXPECT_EQ(bytesOf(text), "abc");
}

TEST(RawString, ReserveMakesEveryKindOwned) {
  RawString empty;
  empty.reserve(4);
  EXPECT_EQ(empty.kind(), RawString::KindOwned);
  EXPECT_EQ(empty.length(), 0);
  RawString literal = "abc"_text;
  literal.reserve(4);
  EXPECT_EQ(literal.kind(), RawString::KindOwned);
  EXPECT_EQ(literal, "abc"_text);
  RawString view = RawString::viewOf(EncodingWide, u"abc", 3);
  view.reserve(4);
  EXPECT_EQ(view.kind(), RawString::KindOwned);
  EXPECT_EQ(view.wide()[3], u'\0');
}

TEST(RawString, ReserveOnASharedTextLeavesTheSharersAlone) {
  RawString text = raw("abc");
  const RawString sharer = text;
  text.reserve(100);
  text.appendChar(u'd');
  EXPECT_EQ(sharer, "abc"_text);
  EXPECT_EQ(sharer.references(), 0);
}

// --- Buffers for the platform

TEST(RawString, SyncLengthStopsAtTheFirstZero) {
  RawString text = RawString::withCapacity(20);
  std::memcpy(text.mutableText(), "hello\0world", 12);
  text.syncLength();
  EXPECT_EQ(bytesOf(text), "hello");
  EXPECT_EQ(text.capacity(), 20);
  RawString wide(EncodingWide, 20);
  std::memcpy(wide.mutableWide(), u"wide\0rest", sizeof u"wide\0rest");
  wide.syncLength();
  EXPECT_TRUE(wide.equals("wide"_text));
}

TEST(RawString, SyncLengthEndsAtTheCapacity) {
  RawString text = RawString::withCapacity(4);
  std::memcpy(text.mutableText(), "abcdX", 5);
  text.syncLength();
  EXPECT_EQ(bytesOf(text), "abcd");
  EXPECT_EQ(text.text()[4], '\0');
  RawString empty;
  empty.syncLength();
  EXPECT_EQ(empty.length(), 0);
}

TEST(RawString, SetLengthCutsAndEnds) {
  RawString text = raw("abcdef");
  text.setLength(3);
  EXPECT_EQ(bytesOf(text), "abc");
  EXPECT_EQ(text.text()[3], '\0');
  RawString wide = RawString::fromWide(u"abcdef");
  wide.setLength(2);
  EXPECT_EQ(wide.wide()[2], u'\0');
  EXPECT_TRUE(wide.equals("ab"_text));
}

TEST(RawString, SetLengthUnsharesFirst) {
  RawString text = raw("abcdef");
  const RawString sharer = text;
  text.setLength(2);
  EXPECT_EQ(bytesOf(sharer), "abcdef");
  RawString literal = "abcdef"_text;
  literal.setLength(2);
  EXPECT_EQ(bytesOf(literal), "ab");
  EXPECT_EQ("abcdef"_text.length(), 6);
}

TEST(RawString, SetLengthStaysInsideTheMemory) {
  RawString text = raw("abc");
  text.setLength(-4);
  EXPECT_EQ(text.length(), 0);
  text.setLength(1000);
  EXPECT_EQ(text.length(), text.capacity());
  RawString empty;
  empty.setLength(3);
  EXPECT_EQ(empty.length(), 0);
}

// --- Threads

TEST(RawString, ManyThreadsShareAndWriteCopiesOfOneText) {
  const RawString text = raw("shared by all");
  std::vector<std::thread> threads;
  std::vector<int> good(4, 0);
  for (std::size_t number = 0; number < good.size(); ++number)
    threads.emplace_back([own = text, number, &good]() mutable {
      for (int i = 0; i < 2000; ++i) {
        RawString copy = own;
        RawString again = copy;
        again.appendChar(u'!');
        copy.release();
        own = again;
        own.setLength(own.length() - 1);
        good[number] += own.equals("shared by all"_text) ? 1 : 0;
      }
    });
  for (std::thread& each : threads) each.join();
  EXPECT_EQ(good, std::vector<int>(4, 2000));
  EXPECT_EQ(text.references(), 0);
  EXPECT_EQ(text, "shared by all"_text);
}

} // namespace
