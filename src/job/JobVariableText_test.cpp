#include "job/JobVariableText.h"

#include "JobExpansion.h"

using namespace JobLayer;

namespace {

// The text of a call whose arguments hold what a call cannot: they arrive through variables.
std::string called(JobExpansion& bed, const std::string& name, const std::string& text,
                   const std::string& rest = "") {
  bed.setVariable("text", text);
  return bed("$(" + name + ":$(text)" + rest + ")");
}

} // namespace

TEST(JobVariableText, LengthCountsCodeUnits) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Length:)"), "0");
  EXPECT_EQ(bed("$(Length:abc)"), "3");
  EXPECT_EQ(bed("$(Length:\xE3\x81\x82)"), "3") << "three bytes of one character";
  JobVariableExpander expander(JobExecutorPair::executor());
  const RawString wide = raw("$(Length:\xE3\x81\x82)").shareAs(RawLayer::EncodingWide);
  EXPECT_EQ(expander.expand(wide).text, "1"_text);
}

TEST(JobVariableText, PathPartsOfAFullPath) {
  JobExpansion bed;
  const std::string path = "c:\\folder.d\\name.tar.gz";
  EXPECT_EQ(called(bed, "Body", path), "name.tar");
  EXPECT_EQ(called(bed, "BodyEx", path), "name.tar.gz");
  EXPECT_EQ(called(bed, "Base", path), "c:\\folder.d");
  EXPECT_EQ(called(bed, "Extension", path), "gz");
}

TEST(JobVariableText, PathPartsOfAPathWithSlashes) {
  JobExpansion bed;
  EXPECT_EQ(called(bed, "Body", "a/b.c/d.e"), "d");
  EXPECT_EQ(called(bed, "BodyEx", "a/b.c/d.e"), "d.e");
  EXPECT_EQ(called(bed, "Base", "a/b.c/d.e"), "a/b.c");
  EXPECT_EQ(called(bed, "Extension", "a/b.c/d.e"), "e");
}

TEST(JobVariableText, PathPartsThatAreNotThere) {
  JobExpansion bed;
  EXPECT_EQ(called(bed, "Base", "name.txt"), "");
  EXPECT_EQ(called(bed, "Base", "\\name"), "");
  EXPECT_EQ(called(bed, "Body", "name"), "name");
  EXPECT_EQ(called(bed, "Extension", "name"), "");
  EXPECT_EQ(called(bed, "Extension", "c:\\a.b\\c"), "");
  EXPECT_EQ(called(bed, "Body", "c:\\a.b\\c"), "c");
  EXPECT_EQ(called(bed, "BodyEx", "c:\\a.b\\"), "");
  EXPECT_EQ(called(bed, "Body", "c:\\a.b\\"), "");
  EXPECT_EQ(called(bed, "Body", ".profile"), "");
  EXPECT_EQ(called(bed, "Extension", ".profile"), "profile");
  EXPECT_EQ(called(bed, "Extension", "name."), "");
  EXPECT_EQ(called(bed, "Body", "name."), "name");
  EXPECT_EQ(called(bed, "Body", ""), "");
}

TEST(JobVariableText, AColonWrittenInACallPartsTheArguments) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Extension:c:\\a.b\\c)"), "");
  EXPECT_EQ(bed("$(BodyEx:c:\\a.b\\c)"), "c") << "the path is just the drive letter";
}

TEST(JobVariableText, BeforeGivesTheFirstUnits) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Before:abc:0)"), "");
  EXPECT_EQ(bed("$(Before:abc:2)"), "ab");
  EXPECT_EQ(bed("$(Before:abc:3)"), "abc");
  EXPECT_EQ(bed("$(Before:abc:10)"), "abc");
  EXPECT_EQ(bed("$(Before:abc:9223372036854775807)"), "abc");
  EXPECT_EQ(bed("$(Before::5)"), "");
  EXPECT_EQ(bed("$(Before:\xE3\x81\x82:1)"), "\xE3");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableText, AfterGivesTheUnitsFromAPosition) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(After:abc:0)"), "abc");
  EXPECT_EQ(bed("$(After:abc:2)"), "c");
  EXPECT_EQ(bed("$(After:abc:3)"), "");
  EXPECT_EQ(bed("$(After:abc:10)"), "");
  EXPECT_EQ(bed("$(After:abc:9223372036854775807)"), "");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableText, ANegativePositionIsReported) {
  JobExpansion bed;
  for (const char* name : {"Before", "After"}) {
    const std::string call = std::string("$(") + name + ":abc:-1)";
    EXPECT_EQ(bed.results(call), (Texts{"Invalid ()"}));
    EXPECT_EQ(bed.takeReports(), (Texts{std::string("Number is out of range !\r\n  [variable] ") +
                                        name + "\r\n  [value] -1\r\n  [script] " + call}));
    bed(std::string("$(") + name + ":abc:x)");
    EXPECT_EQ(bed.takeReports().size(), 1U);
    bed(std::string("$(") + name + ":abc:)");
    EXPECT_EQ(bed.takeReports().size(), 1U);
  }
}

TEST(JobVariableText, TooFewArgumentsAreReported) {
  JobExpansion bed;
  for (const char* call :
       {"$(Length)", "$(Body)", "$(BodyEx)", "$(Base)", "$(Extension)", "$(Before:a)", "$(After:a)",
        "$(Code)", "$(StripQuote)", "$(Replace)", "$(Replace:a:b)"}) {
    EXPECT_EQ(bed.results(call), (Texts{"Invalid ()"})) << call;
    const Texts reports = bed.takeReports();
    ASSERT_FALSE(reports.empty()) << call;
    EXPECT_EQ(reports[0].rfind("Too few variable arguments !\r\n", 0), 0U) << reports[0];
  }
}

TEST(JobVariableText, CodeGivesACharacterInTheEncodingOfTheText) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Code:65)"), "A");
  EXPECT_EQ(bed("$(Code:10)"), "\n");
  EXPECT_EQ(bed("$(Code:12354)"), "\xE3\x81\x82");
  EXPECT_EQ(bed("$(Code:65535)"), "\xEF\xBF\xBF");
  EXPECT_EQ(bed("$(Code:65536)"), "\xF0\x90\x80\x80");
  EXPECT_EQ(bed("$(Code:128512)"), "\xF0\x9F\x98\x80");
  EXPECT_EQ(bed("$(Code:1114111)"), "\xF4\x8F\xBF\xBF");
  JobVariableExpander expander(JobExecutorPair::executor());
  const auto bytes = [&](int32_t encoding) {
    return expander.expand(raw("$(Code:12354)").shareAs(encoding)).text;
  };
  EXPECT_EQ(bytes(RawLayer::EncodingShiftJis),
            RawString::fromBytes(RawLayer::EncodingShiftJis, "\x82\xA0", 2));
  EXPECT_EQ(bytes(RawLayer::EncodingWide), RawString::fromWide(u"\x3042"));
}

TEST(JobVariableText, CodeGivesNothingForWhatIsNoCharacter) {
  JobExpansion bed;
  for (const char* number :
       {"0", "55296", "57343", "1114112", "4294967361", "9223372036854775807"}) {
    EXPECT_EQ(bed.results(std::string("$(Code:") + number + ")"), (Texts{"Success ()"})) << number;
  }
  EXPECT_EQ(bed("$(Code:55295)"), "\xED\x9F\xBF");
  EXPECT_EQ(bed("$(Code:57344)"), "\xEE\x80\x80");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableText, ANegativeCodeIsReported) {
  JobExpansion bed;
  EXPECT_EQ(bed.results("$(Code:-1)"), (Texts{"Invalid ()"}));
  EXPECT_EQ(bed.takeReports(), (Texts{"Number is out of range !\r\n"
                                      "  [variable] Code\r\n"
                                      "  [value] -1\r\n"
                                      "  [script] $(Code:-1)"}));
}

TEST(JobVariableText, CodeBringsInWhatTheSyntaxTakesForItself) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Length:a$(Code:58)b$(Code:41)c)"), "5");
  EXPECT_EQ(bed("a$(Code:58)b$(Code:41)c"), "a:b)c");
}

TEST(JobVariableText, StripQuoteTakesWholeRuns) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(StripQuote:\"abc\")"), "abc");
  EXPECT_EQ(bed("$(StripQuote:\"\"\"a\"b\"\")"), "a\"b");
  EXPECT_EQ(bed("$(StripQuote:abc)"), "abc");
  EXPECT_EQ(bed("$(StripQuote:\"abc)"), "abc");
  EXPECT_EQ(bed("$(StripQuote:abc\"\")"), "abc");
  EXPECT_EQ(bed("$(StripQuote: \"a\" )"), " \"a\" ");
  EXPECT_EQ(bed("$(StripQuote:\"\"\")"), "");
  EXPECT_EQ(bed("$(StripQuote:)"), "");
}

TEST(JobVariableText, ReplaceChangesEveryPlace) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Replace:a-b-c:-:+)"), "a+b+c");
  EXPECT_EQ(bed("$(Replace:a-b-c:-:)"), "abc");
  EXPECT_EQ(bed("$(Replace:one two:one:three)"), "three two");
  EXPECT_EQ(bed("$(Replace:aAa:a:b)"), "bAb") << "in exact case";
  EXPECT_EQ(bed("$(Replace:abc:x:y)"), "abc");
  EXPECT_EQ(bed("$(Replace::x:y)"), "");
  EXPECT_EQ(bed("$(Replace:abc:abc:)"), "");
}

TEST(JobVariableText, ReplaceOfNothingChangesNothing) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Replace:abc::x)"), "abc");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableText, ReplaceSearchesFromTheFrontEachTime) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Replace:aab:ab:b)"), "b") << "what was pasted in takes part in a new match";
  EXPECT_EQ(bed("$(Replace:aaaa:aa:a)"), "a");
  EXPECT_EQ(bed("$(Replace:xaabbx:ab:)"), "xx");
  EXPECT_EQ(bed("$(Replace:aab:ab:ba)"), "baa");
}

TEST(JobVariableText, ReplaceLeavesCharactersWhole) {
  JobVariableExpander expander(JobExecutorPair::executor());
  JobExpansion bed;
  // The second byte of 0x83 0x41 is an "A" by itself.
  const RawString source = RawString::fromBytes(RawLayer::EncodingShiftJis,
                                                "$(Replace:\x83"
                                                "AA:A:b)",
                                                18);
  EXPECT_EQ(expander.expand(source).text, RawString::fromBytes(RawLayer::EncodingShiftJis,
                                                               "\x83"
                                                               "Ab",
                                                               3));
}
