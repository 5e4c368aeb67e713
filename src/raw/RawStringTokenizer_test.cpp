#include "raw/RawStringTokenizer.h"

#include "TestText.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

using namespace RawLayer;

namespace RawLayer {
static void PrintTo(const RawRange& range, std::ostream* stream) {
  *stream << range.start << ".." << range.end;
}
} // namespace RawLayer

namespace {

using Texts = std::vector<std::string>;
using Tokenizer = RawStringTokenizer;

std::string partOf(const RawString& text, RawRange range) {
  return bytesOf(RawString::fromRange(text.encoding(), text, range));
}

Texts tokensOf(Tokenizer& tokenizer) {
  Texts tokens;
  while (!(tokenizer.flags & Tokenizer::Finished) && tokens.size() < 50)
    tokens.push_back(partOf(tokenizer.source, tokenizer.next()));
  return tokens;
}

Texts quotedTokens(const std::string& text) {
  Tokenizer tokenizer(raw(text));
  tokenizer.flags |= Tokenizer::ProtectQuoted;
  return tokensOf(tokenizer);
}

Texts nestedTokens(const std::string& text, uint16_t flags = 0) {
  Tokenizer tokenizer(raw(text));
  tokenizer.flags |= flags;
  tokenizer.open = "$("_text;
  tokenizer.close = ")"_text;
  return tokensOf(tokenizer);
}

} // namespace

TEST(RawStringTokenizer, TakesOneTokenAtATime) {
  Tokenizer tokenizer("ab,,c"_text);
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 2}));
  EXPECT_EQ(tokenizer.position, 3);
  EXPECT_EQ(tokenizer.next(), (RawRange{3, 3}));
  EXPECT_EQ(tokenizer.flags & Tokenizer::Finished, 0);
  EXPECT_EQ(tokenizer.next(), (RawRange{4, 5}));
  EXPECT_NE(tokenizer.flags & Tokenizer::Finished, 0);
  EXPECT_EQ(tokenizer.next(), (RawRange{5, 5})) << "nothing is left";
}

TEST(RawStringTokenizer, ATrailingCommaHasAnEmptyTokenBehindIt) {
  Tokenizer tokenizer("a,"_text);
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 1}));
  EXPECT_EQ(tokenizer.flags & Tokenizer::Finished, 0);
  EXPECT_EQ(tokenizer.next(), (RawRange{2, 2}));
  EXPECT_NE(tokenizer.flags & Tokenizer::Finished, 0);
}

TEST(RawStringTokenizer, AnEmptyRangeIsFinishedAtOnce) {
  EXPECT_EQ(Tokenizer(RawString()).flags, Tokenizer::Finished);
  EXPECT_EQ(Tokenizer("a,b"_text, {2, 2}).flags, Tokenizer::Finished);
  EXPECT_EQ(Tokenizer("a,b"_text, {3, 9}).flags, Tokenizer::Finished);
}

TEST(RawStringTokenizer, ClampsItsRange) {
  Tokenizer tokenizer("a,b"_text, {-3, 99});
  EXPECT_EQ(tokenizer.position, 0);
  EXPECT_EQ(tokenizer.end, 3);
  EXPECT_EQ(tokensOf(tokenizer), (Texts{"a", "b"}));
  Tokenizer part("a,b,c,d"_text, {2, 5});
  EXPECT_EQ(tokensOf(part), (Texts{"b", "c"}));
}

TEST(RawStringTokenizer, AWildEndIsClampedAtTheNextToken) {
  Tokenizer tokenizer("a,b"_text);
  tokenizer.end = 1000;
  EXPECT_EQ(tokensOf(tokenizer), (Texts{"a", "b"}));
  tokenizer.end = -1;
  tokenizer.position = 77;
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 0}));
}

TEST(RawStringTokenizer, QuotesProtectCommasOnlyWhenAsked) {
  Tokenizer plain(raw("\"a,b\",c"));
  EXPECT_EQ(tokensOf(plain), (Texts{"\"a", "b\"", "c"}));
  EXPECT_EQ(quotedTokens("\"a,b\",c"), (Texts{"\"a,b\"", "c"}));
  EXPECT_EQ(quotedTokens("x\"a,b\"y,c"), (Texts{"x\"a,b\"y", "c"}));
  EXPECT_EQ(quotedTokens("\"a,b"), (Texts{"\"a,b"})) << "a quote without its partner";
}

TEST(RawStringTokenizer, ATerminatorThatEndsATokenIsNotConsumed) {
  Tokenizer tokenizer("a:b,c"_text);
  tokenizer.terminator = ':';
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 3})) << "the plain scan looks for commas alone";
  tokenizer.position = 0;
  tokenizer.stopsAtTerminator = true;
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 1}));
  EXPECT_EQ(tokenizer.position, 1);
  EXPECT_EQ(tokenizer.next(), (RawRange{1, 1}));
  EXPECT_EQ(tokenizer.position, 1);
  ++tokenizer.position;
  EXPECT_EQ(tokenizer.next(), (RawRange{2, 3}));
  EXPECT_EQ(tokenizer.position, 4);
}

TEST(RawStringTokenizer, ACommaMayBeTheTerminator) {
  Tokenizer tokenizer("a,b"_text);
  tokenizer.terminator = ',';
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 1}));
  EXPECT_EQ(tokenizer.position, 1);
}

TEST(RawStringTokenizer, ATerminatorInsideQuotesIsPassedOver) {
  Tokenizer tokenizer(raw("\"a:b\":c"));
  tokenizer.flags |= Tokenizer::ProtectQuoted;
  tokenizer.terminator = ':';
  tokenizer.stopsAtTerminator = true;
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 5}));
}

TEST(RawStringTokenizer, WithoutATerminatorAZeroUnitIsAnyUnit) {
  Tokenizer tokenizer(raw(std::string("a\0b", 3)));
  tokenizer.stopsAtTerminator = true;
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 3}));
}

TEST(RawStringTokenizer, LastTokenStopsBehindTheNextOne) {
  Tokenizer tokenizer("a,b,c"_text);
  tokenizer.flags |= Tokenizer::LastToken;
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 1}));
  EXPECT_EQ(tokenizer.position, 5);
  EXPECT_NE(tokenizer.flags & Tokenizer::Finished, 0);
}

TEST(RawStringTokenizer, NestingMarksProtectCommas) {
  EXPECT_EQ(nestedTokens("$(a,b),c"), (Texts{"$(a,b)", "c"}));
  EXPECT_EQ(nestedTokens("x$(a,$(b,c),d)y,e"), (Texts{"x$(a,$(b,c),d)y", "e"}));
  EXPECT_EQ(nestedTokens("a),b"), (Texts{"a)", "b"})) << "a closing mark alone is plain text";
  EXPECT_EQ(nestedTokens("$(a,b"), (Texts{"$(a,b"})) << "an open pair takes the rest";
  EXPECT_EQ(nestedTokens("$(a)$(b,c),d"), (Texts{"$(a)$(b,c)", "d"}));
}

TEST(RawStringTokenizer, NestingMarksInsideQuotesArePlain) {
  EXPECT_EQ(nestedTokens("\"$(\",b", Tokenizer::ProtectQuoted), (Texts{"\"$(\"", "b"}));
  EXPECT_EQ(nestedTokens("$(\"),b\"", Tokenizer::ProtectQuoted), (Texts{"$(\")", "b\""}))
      << "inside a pair quotes mean nothing";
}

TEST(RawStringTokenizer, SpaceIsTrimmedFromATokenWhenSet) {
  Tokenizer plain(" a , b"_text);
  EXPECT_EQ(tokensOf(plain), (Texts{" a ", " b"}));
  Tokenizer trimming(" a , b"_text);
  trimming.space = RawString::whiteSpace();
  EXPECT_EQ(tokensOf(trimming), (Texts{"a", "b"}));
}

TEST(RawStringTokenizer, StepsOverTheTrailBytesOfAnOpeningMark) {
  // The second byte of this Shift-JIS character is 0x5B, "[".
  const RawString text = RawString::fromBytes(EncodingShiftJis, "\x83\x5B,a]", 5);
  Tokenizer tokenizer(text);
  tokenizer.open = "["_text;
  tokenizer.close = "]"_text;
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 2}));
}

TEST(RawStringTokenizer, ACharacterCutByTheEndStopsThere) {
  const RawString text = raw("\xE3\x81");
  Tokenizer tokenizer(text);
  EXPECT_EQ(tokenizer.next(), (RawRange{0, 2}));
  EXPECT_EQ(tokenizer.skipNested({0, 1}, "("_text, ")"_text), 1);
}

TEST(RawStringTokenizer, SkipNestedFindsThePartner) {
  const Tokenizer tokenizer("((a)b)c"_text);
  const RawString& open = "("_text;
  const RawString& close = ")"_text;
  EXPECT_EQ(tokenizer.skipNested({0, 7}, open, close), 6);
  EXPECT_EQ(tokenizer.skipNested({1, 7}, open, close), 4);
  EXPECT_EQ(tokenizer.skipNested({0, 5}, open, close), 5) << "no partner: the end of the range";
  EXPECT_EQ(tokenizer.skipNested({2, 7}, open, close), 4) << "a depth below 0 ends it too";
  EXPECT_EQ(tokenizer.skipNested({-4, 70}, open, close), 6);
  EXPECT_EQ(tokenizer.skipNested({6, 7}, open, close), 7);
}

TEST(RawStringTokenizer, SkipNestedWithLongOrEqualOrEmptyMarks) {
  const Tokenizer tokenizer("{{a}}b"_text);
  EXPECT_EQ(tokenizer.skipNested({0, 6}, "{{"_text, "}}"_text), 5);
  EXPECT_EQ(tokenizer.skipNested({0, 4}, "{{"_text, "}}"_text), 4) << "half a mark is none";
  EXPECT_EQ(tokenizer.skipNested({0, 6}, "a"_text, "a"_text), 6) << "it only ever opens";
  EXPECT_EQ(tokenizer.skipNested({0, 6}, RawString(), RawString()), 6);
}

TEST(RawStringTokenizer, UnquoteCutsOneQuoteAtEachEnd) {
  const auto unquoted = [](const std::string& text, bool leading) {
    Tokenizer tokenizer(raw(text));
    tokenizer.flags |= leading ? 0 : Tokenizer::HadQuotes; // must change
    const RawRange range = tokenizer.unquote(tokenizer.source.all());
    EXPECT_EQ((tokenizer.flags & Tokenizer::HadQuotes) != 0, leading) << text;
    return partOf(tokenizer.source, range);
  };
  EXPECT_EQ(unquoted("\"a b\"", true), "a b");
  EXPECT_EQ(unquoted("\"a", true), "a");
  EXPECT_EQ(unquoted("a\"", false), "a");
  EXPECT_EQ(unquoted("a", false), "a");
  EXPECT_EQ(unquoted("\"\"", true), "");
  EXPECT_EQ(unquoted("\"", true), "");
  EXPECT_EQ(unquoted("\"\"a\"\"", true), "\"a\"");
  EXPECT_EQ(unquoted("", false), "");
}

TEST(RawStringTokenizer, UnquoteOfALoneQuoteStopsBehindIt) {
  Tokenizer tokenizer(raw("x\"y"));
  EXPECT_EQ(tokenizer.unquote({1, 2}), (RawRange{2, 2}));
}
