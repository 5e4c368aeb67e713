#include "raw/RawParameterList.h"

#include "TestText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace RawLayer;

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs pairsOf(const RawParameterList& list) {
  Pairs pairs;
  for (const RawParameterUnit& unit : list.elements())
    pairs.emplace_back(bytesOf(unit.key), bytesOf(unit.value));
  return pairs;
}

Pairs parsedLine(const std::string& line, const RawString& trimSet = RawString()) {
  RawParameterList list;
  const RawString text = raw(line);
  list.parseLine(text, text.all(), trimSet);
  return pairsOf(list);
}

Pairs parsedCommand(const std::string& text) {
  RawStringList flags;
  flags.caseSensitive = true;
  flags.add("h"_text);
  RawParameterList list;
  list.fromCommandLine(raw(text), flags);
  EXPECT_TRUE(list.caseSensitive);
  return pairsOf(list);
}

} // namespace

TEST(RawParameterList, LooksKeysUpWithoutCaseAtFirst) {
  RawParameterList list;
  list.add("Key"_text)->value = "1"_text;
  EXPECT_TRUE(list.contains("kEY"_text));
  EXPECT_FALSE(list.contains("Ke"_text));
  EXPECT_EQ(list.valueOf("KEY"_text), "1"_text);
  list.caseSensitive = true;
  EXPECT_FALSE(list.contains("KEY"_text));
  EXPECT_EQ(list.find("KEY"_text), nullptr);
  EXPECT_TRUE(list.contains("Key"_text));
}

TEST(RawParameterList, ContainsAlsoLooksForAUnit) {
  RawParameterList list;
  RawParameterUnit* unit = list.add("a"_text);
  const RawParameterUnit stranger;
  EXPECT_TRUE(list.contains(unit));
  EXPECT_FALSE(list.contains(&stranger));
}

TEST(RawParameterList, AddNeverLooksForAnOlderUnit) {
  RawParameterList list;
  RawParameterUnit* first = list.add("a"_text);
  EXPECT_EQ(first->number, 0);
  EXPECT_TRUE(first->value.isEmpty());
  first->value = "1"_text;
  list.add("a"_text)->value = "2"_text;
  EXPECT_EQ(pairsOf(list), (Pairs{{"a", "1"}, {"a", "2"}}));
  EXPECT_EQ(list.find("a"_text), first);
}

TEST(RawParameterList, InsertBeforeANode) {
  RawParameterList list;
  list.add("b"_text);
  RawParameterUnit* unit = list.insertBefore(list.first(), "a"_text);
  EXPECT_EQ(RawParameterList::element(list.first()), unit);
  EXPECT_EQ(pairsOf(list), (Pairs{{"a", ""}, {"b", ""}}));
}

TEST(RawParameterList, SetReplacesTheFirstOrAdds) {
  RawParameterList list;
  list.add("a"_text);
  list.add("A"_text);
  list.set("a"_text, "1"_text);
  list.set("b"_text, "2"_text);
  EXPECT_EQ(pairsOf(list), (Pairs{{"a", "1"}, {"A", ""}, {"b", "2"}}));
  list.set("B"_text, "3"_text);
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.valueOf("b"_text), "3"_text);
}

TEST(RawParameterList, SetUnsignedWritesTheNumber) {
  RawParameterList list;
  list.setUnsigned("a"_text, 18446744073709551615u);
  EXPECT_EQ(list.valueOf("a"_text), "18446744073709551615"_text);
  list.setUnsigned("a"_text, 255, 16);
  EXPECT_EQ(pairsOf(list), (Pairs{{"a", "0xFF"}}));
}

TEST(RawParameterList, SetIntMakesTheValueDecimal) {
  RawParameterUnit unit;
  unit.value = "old"_text;
  unit.setInt(-42);
  EXPECT_EQ(unit.value, "-42"_text);
  unit.setInt(0);
  EXPECT_EQ(unit.value, "0"_text);
}

TEST(RawParameterList, ValueOfAMissingKeyIsTheFallback) {
  const RawParameterList list;
  EXPECT_TRUE(list.valueOf("a"_text).isEmpty());
  EXPECT_EQ(list.valueOf("a"_text, "x"_text), "x"_text);
}

TEST(RawParameterList, MergeAddsEveryUnit) {
  RawParameterList target;
  target.set("a"_text, "1"_text);
  RawParameterList other;
  other.add("a"_text)->value = raw("2");
  other.add("b"_text)->number = 7;
  target.merge(other);
  EXPECT_EQ(pairsOf(target), (Pairs{{"a", "1"}, {"a", "2"}, {"b", ""}}));
  EXPECT_EQ(other.find("a"_text)->value.references(), 1) << "values are shared";
  EXPECT_EQ(other.count(), 2);
}

TEST(RawParameterList, MergingAListWithItselfDoublesIt) {
  RawParameterList list;
  list.set("a"_text, "1"_text);
  list.set("b"_text, "2"_text);
  list.merge(list);
  EXPECT_EQ(pairsOf(list), (Pairs{{"a", "1"}, {"b", "2"}, {"a", "1"}, {"b", "2"}}));
}

TEST(RawParameterList, RenewLeavesASharedRingToTheOthers) {
  RawParameterList list;
  list.add("a"_text);
  RawParameterList sharer = list;
  sharer.renew();
  EXPECT_EQ(sharer.count(), 0);
  EXPECT_EQ(list.count(), 1);
  EXPECT_EQ(list.references(), 0);
}

TEST(RawParameterList, ParseNumbersReadsEachValue) {
  RawParameterList list;
  for (const char* value : {"12", "-3", "0x10", "7x", "", "word"})
    list.add("k"_text)->value = RawString::fromChars(value);
  list.parseNumbers();
  std::vector<int32_t> numbers;
  for (const RawParameterUnit& unit : list.elements()) numbers.push_back(unit.number);
  EXPECT_EQ(numbers, (std::vector<int32_t>{12, -3, 16, 7, 0, 0}));
}

TEST(RawParameterList, SortsByKeysInExactCase) {
  RawParameterList list;
  for (const char* key : {"b", "a", "B"}) list.add(RawString::fromChars(key));
  RawParameterListSort(list).sortAll();
  EXPECT_EQ(pairsOf(list), (Pairs{{"B", ""}, {"a", ""}, {"b", ""}}));
}

TEST(RawParameterListLine, TheFirstEqualsSignSplits) {
  EXPECT_EQ(parsedLine("a=b=c"), (Pairs{{"a", "b=c"}}));
  EXPECT_EQ(parsedLine("key="), (Pairs{{"key", ""}}));
  EXPECT_EQ(parsedLine("=value"), (Pairs{{"", "value"}}));
  EXPECT_EQ(parsedLine("="), (Pairs{{"", ""}}));
  EXPECT_EQ(parsedLine("key"), (Pairs{{"key", ""}}));
  EXPECT_EQ(parsedLine(" [x]"), (Pairs{{" [x]", ""}}));
}

TEST(RawParameterListLine, TrimsOnlyWithASet) {
  EXPECT_EQ(parsedLine("a = b "), (Pairs{{"a ", " b "}}));
  EXPECT_EQ(parsedLine("\ta = b c ", RawString::whiteSpace()), (Pairs{{"a", "b c"}}));
  EXPECT_EQ(parsedLine(" = ", RawString::whiteSpace()), (Pairs{{"", ""}}));
}

TEST(RawParameterListLine, ZeroUnitsCutItems) {
  EXPECT_EQ(parsedLine(std::string("a=1\0b=2\0c", 9)), (Pairs{{"a", "1"}, {"b", "2"}, {"c", ""}}));
  EXPECT_EQ(parsedLine(std::string("\0a=1\0\0b\0\0", 9)), (Pairs{{"a", "1"}, {"b", ""}}))
      << "empty items have no effect";
}

TEST(RawParameterListLine, AnEmptyLineHasNoEffect) {
  EXPECT_EQ(parsedLine(""), Pairs{});
}

TEST(RawParameterListLine, TakesThePartAndAddsToTheList) {
  RawParameterList list;
  list.add("old"_text);
  list.parseLine("xx a=1 yy"_text, {3, 6}, RawString());
  list.parseLine("b=2"_text, {-2, 50}, RawString());
  list.parseLine("b=2"_text, {2, 2}, RawString());
  EXPECT_EQ(pairsOf(list), (Pairs{{"old", ""}, {"a", "1"}, {"b", "2"}}));
}

TEST(RawParameterListLine, CopiesWhatAViewShows) {
  char buffer[] = "a=1";
  RawParameterList list;
  const RawString view = RawString::viewOf(EncodingUtf8, buffer, 3);
  list.parseLine(view, view.all(), RawString());
  buffer[0] = buffer[2] = 'X';
  EXPECT_EQ(pairsOf(list), (Pairs{{"a", "1"}}));
}

TEST(RawParameterListLine, KeepsTheEncodingOfTheLine) {
  const RawString line = RawString::fromWide(u"\u3042=\u3044");
  RawParameterList list;
  list.parseLine(line, line.all(), RawString());
  const RawParameterUnit* unit = RawParameterList::element(list.first());
  EXPECT_EQ(unit->key, RawString::fromWide(u"\u3042"));
  EXPECT_EQ(unit->value, RawString::fromWide(u"\u3044"));
  EXPECT_EQ(unit->value.encoding(), EncodingWide);
}

TEST(RawParameterListCommandLine, SwitchesTakeTheNextToken) {
  EXPECT_EQ(parsedCommand("-p \"a b\" c"), (Pairs{{"p", "a b"}, {"NoTag_1", "c"}}));
  EXPECT_EQ(parsedCommand("-a Hello -l World"), (Pairs{{"a", "Hello"}, {"l", "World"}}));
  EXPECT_EQ(parsedCommand(""), Pairs{});
  EXPECT_EQ(parsedCommand(" \t\r\n"), Pairs{});
  EXPECT_EQ(parsedCommand(" \t-a\r\nx "), (Pairs{{"a", "x"}}));
}

TEST(RawParameterListCommandLine, ASwitchAtTheEndHasAnEmptyValue) {
  EXPECT_EQ(parsedCommand("-a"), (Pairs{{"a", ""}}));
  EXPECT_EQ(parsedCommand("-a "), (Pairs{{"a", ""}}));
}

TEST(RawParameterListCommandLine, ASwitchIsNeverAnotherOnesValue) {
  EXPECT_EQ(parsedCommand("-p -a x"), (Pairs{{"p", ""}, {"a", "x"}}));
}

TEST(RawParameterListCommandLine, AQuotedValueMayBeginWithADash) {
  EXPECT_EQ(parsedCommand("-p \"-a\" x"), (Pairs{{"p", "-a"}, {"NoTag_1", "x"}}));
}

TEST(RawParameterListCommandLine, FlagsTakeNoValue) {
  EXPECT_EQ(parsedCommand("-h x"), (Pairs{{"h", ""}, {"NoTag_1", "x"}}));
  EXPECT_EQ(parsedCommand("-H x"), (Pairs{{"H", "x"}})) << "the flags were given with exact case";
  RawStringList anyCase;
  anyCase.add("h"_text);
  RawParameterList list;
  list.fromCommandLine("-H x"_text, anyCase);
  EXPECT_EQ(pairsOf(list), (Pairs{{"H", ""}, {"NoTag_1", "x"}}));
}

TEST(RawParameterListCommandLine, CaseTellsSwitchesApart) {
  RawParameterList list;
  list.fromCommandLine("-P a"_text, RawStringList());
  EXPECT_FALSE(list.contains("p"_text));
  EXPECT_EQ(list.valueOf("P"_text), "a"_text);
}

TEST(RawParameterListCommandLine, BareTokensAreNumbered) {
  EXPECT_EQ(parsedCommand("a \"b c\" -x y d"),
            (Pairs{{"NoTag_1", "a"}, {"NoTag_2", "b c"}, {"x", "y"}, {"NoTag_3", "d"}}));
}

TEST(RawParameterListCommandLine, ALoneDashIsAnEmptyKey) {
  EXPECT_EQ(parsedCommand("-"), (Pairs{{"", ""}}));
  EXPECT_EQ(parsedCommand("- x"), (Pairs{{"", ""}, {"NoTag_1", "x"}}));
  EXPECT_EQ(parsedCommand("-a - x"), (Pairs{{"a", ""}, {"", ""}, {"NoTag_1", "x"}}));
}

TEST(RawParameterListCommandLine, ASecondDashStartsAnotherSwitch) {
  EXPECT_EQ(parsedCommand("--a x"), (Pairs{{"", ""}, {"a", "x"}}));
  EXPECT_EQ(parsedCommand("---"), (Pairs{{"", ""}, {"", ""}, {"", ""}}));
}

TEST(RawParameterListCommandLine, DashesInsideATokenArePlain) {
  EXPECT_EQ(parsedCommand("-a-b c-d"), (Pairs{{"a-b", "c-d"}}));
  EXPECT_EQ(parsedCommand("a-b"), (Pairs{{"NoTag_1", "a-b"}}));
}

TEST(RawParameterListCommandLine, QuotesCountAtATokensStartOnly) {
  EXPECT_EQ(parsedCommand("a\"b c\""), (Pairs{{"NoTag_1", "a\"b"}, {"NoTag_2", "c\""}}));
  EXPECT_EQ(parsedCommand("\"a b\"c"), (Pairs{{"NoTag_1", "a b"}, {"NoTag_2", "c"}}));
  EXPECT_EQ(parsedCommand("-\"a b\" c"), (Pairs{{"a b", "c"}})) << "a key may be quoted";
}

TEST(RawParameterListCommandLine, AQuoteWithoutItsPartnerRunsToTheEnd) {
  EXPECT_EQ(parsedCommand("-a \"b c "), (Pairs{{"a", "b c "}}));
  EXPECT_EQ(parsedCommand("\""), (Pairs{{"NoTag_1", ""}}));
}

TEST(RawParameterListCommandLine, AnEmptyQuotedValueIsAValue) {
  EXPECT_EQ(parsedCommand("-p \"\" x"), (Pairs{{"p", ""}, {"NoTag_1", "x"}}));
  EXPECT_EQ(parsedCommand("-\"\" x"), (Pairs{{"", ""}, {"NoTag_1", "x"}}));
}

TEST(RawParameterListCommandLine, BackslashesEscapeNothing) {
  EXPECT_EQ(parsedCommand(R"(-p "c:\a\" b)"), (Pairs{{"p", R"(c:\a\)"}, {"NoTag_1", "b"}}));
}

TEST(RawParameterListCommandLine, ARepeatedSwitchIsKeptTwice) {
  EXPECT_EQ(parsedCommand("-a x -a y"), (Pairs{{"a", "x"}, {"a", "y"}}));
}
