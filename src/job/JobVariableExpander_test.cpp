#include "job/JobVariableExpander.h"

#include "JobExpansion.h"

using namespace JobLayer;

namespace {

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::string nested(int depth) {
  return repeated("$(Not:", depth) + "True" + repeated(")", depth);
}

} // namespace

TEST(JobVariableExpander, TextWithoutCallsStaysAsItIs) {
  JobExpansion bed;
  for (const char* text :
       {"", "plain", "$", "$x", "a$", "$ (x)", "$$", "(x)", "a)b:c", "${x}", "%x%", "\\$"}) {
    EXPECT_EQ(bed(text), text);
    EXPECT_EQ(bed.state, VariableSuccess) << text;
  }
  EXPECT_TRUE(bed.takeReports().empty());
  EXPECT_TRUE(bed.diary().empty());
}

TEST(JobVariableExpander, PutsAValueInThePlaceOfItsCall) {
  JobExpansion bed;
  bed.setVariable("x", "value");
  EXPECT_EQ(bed("$(x)"), "value");
  EXPECT_EQ(bed("a$(x)b"), "avalueb");
  EXPECT_EQ(bed("$(x)$(x) $(x)"), "valuevalue value");
  EXPECT_EQ(bed("$$(x)$"), "$value$");
  EXPECT_EQ(bed.state, VariableSuccess);
}

TEST(JobVariableExpander, LeavesItsSourceAlone) {
  JobExpansion bed;
  bed.setVariable("x", "value");
  const RawString source = raw("a $(x)");
  const RawString share = source;
  JobVariableExpander(JobExecutorPair::executor()).expand(source);
  EXPECT_EQ(source, "a $(x)"_text);
  EXPECT_EQ(share, "a $(x)"_text);
}

TEST(JobVariableExpander, ScansAResultAgain) {
  JobExpansion bed;
  bed.setVariable("x", "<$(y)>");
  bed.setVariable("y", "deep");
  EXPECT_EQ(bed("$(x) $(y)"), "<deep> deep");
}

TEST(JobVariableExpander, ScansFromTheStartOfTheChangedText) {
  JobExpansion bed;
  bed.setVariable("open", "(");
  bed.setVariable("dollar", "$");
  bed.setVariable("x", "value");
  EXPECT_EQ(bed("$$(open)x)"), "value");
  EXPECT_EQ(bed("a$$(open)x)b"), "avalueb");
  EXPECT_EQ(bed("$(dollar)(x)"), "value");
  EXPECT_EQ(bed("$(dollar)$(open)x)"), "value");
  EXPECT_EQ(bed("$$$(open)x)"), "$value");
}

TEST(JobVariableExpander, FindsVariablesByIndirection) {
  JobExpansion bed;
  bed.setVariable("name", "x");
  bed.setVariable("x", "value");
  bed.setVariable("Kind", "Equal");
  EXPECT_EQ(bed("$($(name))"), "value");
  EXPECT_EQ(bed("$($(Kind):a:a)"), "True");
  EXPECT_EQ(bed("$(Is$(suffix)File:?)"), "False");
}

TEST(JobVariableExpander, SplitsACallBeforeAnythingIsPastedIn) {
  JobExpansion bed;
  bed.setVariable("colon", "a:b");
  bed.setVariable("bracket", "a)b");
  bed.setVariable("call", "Not:False");
  EXPECT_EQ(bed("$(Length:$(colon))"), "3");
  EXPECT_EQ(bed("$(Length:$(bracket))"), "3");
  EXPECT_EQ(bed("$(Equal:$(colon):b)"), "False");
  EXPECT_EQ(bed("$($(call))"), "") << "a name is not split again";
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableExpander, OnlyDollarBracketOpens) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Length:(ab)"), "3");
  EXPECT_EQ(bed("$(Calc:(1+2)*3)"), "*3)");
  EXPECT_EQ(bed("$(Length:$ab)"), "3");
  EXPECT_EQ(bed("$(Length:a$)"), "2");
}

TEST(JobVariableExpander, QuotesProtectNothing) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Length:\"a:b\")"), "2");
  EXPECT_EQ(bed("$(Length:\"a)\""), "2\"");
}

TEST(JobVariableExpander, AColonInAnInnerCallBelongsToIt) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Equal:$(Before:abc:2):ab)"), "True");
  EXPECT_EQ(bed("$(Cond:$(Equal:a:$(Before:ab:1)):$(Length:abc):$(Length:abcd))"), "3");
}

TEST(JobVariableExpander, KeepsBlanksAndEmptyArguments) {
  JobExpansion bed;
  bed.setVariable(" x ", "blank");
  EXPECT_EQ(bed("$( x )"), "blank");
  EXPECT_EQ(bed("$(Length: a )"), "3");
  EXPECT_EQ(bed("$(Equal::)"), "True");
  EXPECT_EQ(bed("$(Length:)"), "0");
}

TEST(JobVariableExpander, AMissingNameIsAFault) {
  JobExpansion bed;
  EXPECT_EQ(bed("$()"), "$()");
  EXPECT_EQ(bed.state, VariableInvalid);
  EXPECT_EQ(bed.takeReports(), (Texts{"Variable name is missing !\r\n  [value] $()"}));
  bed.setVariable("nothing", "");
  bed.setVariable("x", "1");
  EXPECT_EQ(bed("a$(x)b$($(nothing):$(x))c$(x)"), "a1b$($(nothing):$(x))c$(x)");
  EXPECT_EQ(bed.state, VariableInvalid);
  EXPECT_EQ(bed.takeReports(),
            (Texts{"Variable name is missing !\r\n  [value] $($(nothing):$(x))"}));
}

TEST(JobVariableExpander, AnUnknownNameIsEmptyWithoutAMessage) {
  JobExpansion bed;
  EXPECT_EQ(bed("[$(NoSuchName)]"), "[]");
  EXPECT_EQ(bed.state, VariableSuccess);
  EXPECT_EQ(bed.results("$(NoSuchName)"), (Texts{"Unknown ()"}));
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableExpander, AnUnknownNameReadsNoArgument) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(NoSuchName:$(Path:Bad))"), "");
  EXPECT_TRUE(bed.takeReports().empty());
  EXPECT_EQ(bed.results("$(NoSuchName:$(Path:Bad))"), (Texts{"Unknown ()"}));
}

TEST(JobVariableExpander, ACallWithoutEndIsAFault) {
  JobExpansion bed;
  bed.setVariable("x", "1");
  EXPECT_EQ(bed("$(x)a$(Equal:b:c"), "1a$(Equal:b:c");
  EXPECT_EQ(bed.state, VariableInvalid);
  EXPECT_EQ(bed.takeReports(), (Texts{"Unbalanced variable block !\r\n"
                                      "  [variable] Equal\r\n"
                                      "  [value] $(Equal:b:c"}));
}

TEST(JobVariableExpander, ACallWithoutEndAndColonShowsAllOfItAsItsName) {
  JobExpansion bed;
  EXPECT_EQ(bed("a$(x y"), "a$(x y");
  EXPECT_EQ(bed.takeReports(), (Texts{"Unbalanced variable block !\r\n"
                                      "  [variable] x y\r\n"
                                      "  [value] $(x y"}));
  bed("$($(b:c)");
  EXPECT_EQ(bed.takeReports(), (Texts{"Unbalanced variable block !\r\n"
                                      "  [variable] $(b:c)\r\n"
                                      "  [value] $($(b:c)"}));
  bed("$(");
  EXPECT_EQ(bed.takeReports(), (Texts{"Unbalanced variable block !\r\n  [value] $("}));
}

TEST(JobVariableExpander, AnInnerCallWithoutEndIsFoundWithTheOuter) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(a:$(b)"), "$(a:$(b)");
  EXPECT_EQ(bed.state, VariableInvalid);
  EXPECT_EQ(bed.takeReports(), (Texts{"Unbalanced variable block !\r\n"
                                      "  [variable] a\r\n"
                                      "  [value] $(a:$(b)"}));
}

TEST(JobVariableExpander, AValueWithAnOpenCallIsAFault) {
  JobExpansion bed;
  bed.setVariable("x", "<$(y");
  EXPECT_EQ(bed("$(x)"), "<$(y");
  EXPECT_EQ(bed.state, VariableInvalid);
  EXPECT_EQ(bed("$(x))"), "<") << "the closing bracket may stand behind the call";
  EXPECT_EQ(bed.state, VariableSuccess);
}

TEST(JobVariableExpander, AVariableThatIsItselfOverflows) {
  JobExpansion bed;
  bed.setVariable("x", "$(x)");
  EXPECT_EQ(bed("$(x)"), "");
  EXPECT_EQ(bed.state, VariableOverflow);
  EXPECT_EQ(bed.takeReports(), (Texts{"Too many variable expansions !\r\n  [value] $(x)"}));
}

TEST(JobVariableExpander, NinetyNineReplacementsAreAllowed) {
  JobExpansion bed;
  bed.setVariable("x", "y");
  EXPECT_EQ(bed(repeated("$(x)", 99)), std::string(99, 'y'));
  EXPECT_EQ(bed.state, VariableSuccess);
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableExpander, TheHundredthReplacementIsRefused) {
  JobExpansion bed;
  bed.setVariable("x", "y");
  EXPECT_EQ(bed(repeated("$(x)", 100) + "$(never)"), "");
  EXPECT_EQ(bed.state, VariableOverflow);
  EXPECT_EQ(bed.takeReports(), (Texts{"Too many variable expansions !\r\n  [value] " +
                                      std::string(100, 'y') + "$(never)"}));
  EXPECT_EQ(bed("$(x)"), "y") << "the next text starts to count anew";
}

TEST(JobVariableExpander, AnArgumentCountsItsOwnReplacements) {
  JobExpansion bed;
  bed.setVariable("x", "y");
  const std::string sixty = repeated("$(x)", 60);
  EXPECT_EQ(bed(sixty + "$(Length:" + sixty + ")"), std::string(60, 'y') + "60");
  EXPECT_EQ(bed.state, VariableSuccess);
  EXPECT_EQ(bed("[$(Length:" + repeated("$(x)", 100) + ")]"), "[0]");
  EXPECT_EQ(bed.state, VariableSuccess) << "the state of an argument is not looked at";
  EXPECT_EQ(bed.takeReports().size(), 1U);
}

TEST(JobVariableExpander, AFaultInAFunctionBecomesNothingAndTheRestGoesOn) {
  JobExpansion bed;
  EXPECT_EQ(bed("[$(Equal:a)|$(Before:abc:x)|$(Not:a)]"), "[||False]");
  EXPECT_EQ(bed.state, VariableSuccess);
  EXPECT_EQ(bed.takeReports(), (Texts{"Too few variable arguments !\r\n"
                                      "  [variable] Equal\r\n"
                                      "  [value] $(Equal:a)",
                                      "Incorrect number format !\r\n"
                                      "  [variable] Before\r\n"
                                      "  [value] x\r\n"
                                      "  [script] $(Before:abc:x)"}));
  EXPECT_EQ(bed.results("$(Equal:a)"), (Texts{"Invalid ()"}));
}

TEST(JobVariableExpander, MoreArgumentsThanNeededAreIgnored) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Equal:a:b:c)"), "False");
  EXPECT_EQ(bed("$(Equal:a:a:$(Path:Bad))"), "True");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableExpander, ReportsShowTheNameThatWasCalled) {
  JobExpansion bed;
  bed.setVariable("Kind", "Equal");
  bed("$($(Kind):a)");
  EXPECT_EQ(bed.takeReports(), (Texts{"Too few variable arguments !\r\n"
                                      "  [variable] Equal\r\n"
                                      "  [value] $($(Kind):a)"}));
  EXPECT_EQ(bed.diary().size(), 2 * 4U + 1) << "two calls and one error line";
}

TEST(JobVariableExpander, TheReportIsAlsoALineOfTheLog) {
  JobExpansion bed;
  bed("$(Equal:a)");
  EXPECT_EQ(bed.diary(),
            (Texts{"#Begin:Variable#1", "@Executor>Variable#1|$ $(Equal:a)",
                   "#Error|$ TooFewVariableArguments [variable] Equal [value] $(Equal:a)",
                   "@Variable#1>Executor|$ Invalid ()", "#End:Variable#1"}));
}

TEST(JobVariableExpander, TheCallIsLoggedAsItStandsAtItsMoment) {
  JobExpansion bed;
  bed.setVariable("x", "False");
  bed.setVariable("y", "$(Not:$(x))");
  bed("a$(y)b");
  EXPECT_EQ(bed.diary(),
            (Texts{"#Begin:Variable#1", "@Executor>Variable#1|$ $(y)",
                   "@Variable#1>Executor|$ Success ($(Not:$(x)))", "#End:Variable#1",
                   "#Begin:Variable#2", "@Executor>Variable#2|$ $(Not:$(x))", "#Begin:Variable#3",
                   "@Variable#2>Variable#3|$ $(x)", "@Variable#3>Variable#2|$ Success (False)",
                   "#End:Variable#3", "@Variable#2>Executor|$ Success (True)", "#End:Variable#2"}));
}

TEST(JobVariableExpander, ANameIsExpandedBeforeItsCallBegins) {
  JobExpansion bed;
  bed.setVariable("n", "Not");
  bed("$($(n):)");
  EXPECT_EQ(bed.diary(), (Texts{"#Begin:Variable#1", "@Executor>Variable#1|$ $(n)",
                                "@Variable#1>Executor|$ Success (Not)", "#End:Variable#1",
                                "#Begin:Variable#2", "@Executor>Variable#2|$ $($(n):)",
                                "@Variable#2>Executor|$ Success (True)", "#End:Variable#2"}));
}

TEST(JobVariableExpander, RecordsNameTheirCaller) {
  JobExpansion bed;
  bed.setVariable("x", "1");
  JobVariableExpander(JobExecutorPair::command(7)).expand("$(x)"_text);
  const std::string log = bed.log();
  EXPECT_NE(log.find("@Command#7>Variable#"), std::string::npos) << log;
  EXPECT_NE(log.find(">Command#7:"), std::string::npos) << log;
}

TEST(JobVariableExpander, EachCallTakesTheNextNumber) {
  JobExpansion bed;
  bed.setVariable("x", "1");
  bed("$(x)$(NoSuchName)$(Not:$(x))");
  Texts begins;
  for (const std::string& line : bed.diary())
    if (line.rfind("#Begin:", 0) == 0) begins.push_back(line);
  EXPECT_EQ(begins, (Texts{"#Begin:Variable#1", "#Begin:Variable#2", "#Begin:Variable#3",
                           "#Begin:Variable#4"}));
  const std::string log = bed.log();
  std::vector<int> numbers;
  const std::string begin = "#Begin:Variable#";
  for (std::size_t i = log.find(begin); i != std::string::npos; i = log.find(begin, i + 1))
    numbers.push_back(std::stoi(log.substr(i + begin.size())));
  ASSERT_EQ(numbers.size(), 4U);
  for (std::size_t i = 1; i < numbers.size(); ++i) EXPECT_EQ(numbers[i], numbers[0] + int(i));
  EXPECT_GE(numbers[0], 1);
}

TEST(JobVariableExpander, WithoutItsLetterNothingIsLogged) {
  JobExpansion bed;
  JobFacts::instance().logCategories = "CPV"_text;
  EXPECT_EQ(bed("$(Not:$(Not:a))"), "True");
  EXPECT_TRUE(bed.diary().empty());
}

TEST(JobVariableExpander, WhoExpandsStoresTheState) {
  JobExpansion bed;
  JobVariableStore& store = JobVariableStore::instance();
  JobVariableExpander expander(JobExecutorPair::executor());
  EXPECT_EQ(expander.expandAndStore("a$()"_text), "a$()"_text);
  EXPECT_EQ(store.lastState, VariableInvalid);
  EXPECT_EQ(expander.expandAndStore("$(Equal:a)b"_text), "b"_text);
  EXPECT_EQ(store.lastState, VariableSuccess);
  bed.setVariable("x", "$(x)");
  EXPECT_EQ(expander.expandAndStore("a$(x)"_text), RawString());
  EXPECT_EQ(store.lastState, VariableOverflow);
  EXPECT_EQ(expander.expandAndStore("plain"_text), "plain"_text);
  EXPECT_EQ(store.lastState, VariableSuccess);
}

TEST(JobVariableExpander, KnowsWhatIsDefined) {
  JobExpansion bed;
  JobVariableExpander expander(JobExecutorPair::executor());
  EXPECT_TRUE(expander.isDefined("Cond"_text));
  EXPECT_TRUE(expander.isDefined("Missing"_text));
  EXPECT_FALSE(expander.isDefined("missing"_text));
  bed.setVariable("missing", "");
  EXPECT_TRUE(expander.isDefined("missing"_text));
}

TEST(JobVariableExpander, WorksOnATableOfItsOwn) {
  JobExpansion bed;
  JobVariableList table;
  table.set("Not"_text, "mine"_text);
  JobVariableExpander expander(JobExecutorPair::executor(), table);
  EXPECT_EQ(expander.expand("$(Not:a) $(Cond:a:b)"_text).text, "mine "_text);
  expander.expandAndStore("$()"_text);
  EXPECT_EQ(table.lastState, VariableInvalid);
}

TEST(JobVariableExpander, KeepsTheEncodingOfTheText) {
  JobExpansion bed;
  bed.setVariable("x", "abc");
  JobVariableExpander expander(JobExecutorPair::executor());
  const RawString wide = expander.expand(raw("<$(Not:$(x)):$(x)>").shareAs(7)).text;
  EXPECT_EQ(wide.encoding(), RawLayer::EncodingWide);
  EXPECT_EQ(wide, "<False:abc>"_text);
  // 0x83 0x5C is one character in Shift-JIS.
  const RawString japanese =
      expander.expand(RawString::fromBytes(RawLayer::EncodingShiftJis, "\x83\x5C$(x)", 6)).text;
  EXPECT_EQ(japanese.encoding(), RawLayer::EncodingShiftJis);
  EXPECT_EQ(japanese, RawString::fromBytes(RawLayer::EncodingShiftJis,
                                           "\x83\x5C"
                                           "abc",
                                           5));
}

TEST(JobVariableExpander, ADerivedExpanderMayAnswerForTheTable) {
  class Derived : public JobVariableExpander {
   public:
    using JobVariableExpander::JobVariableExpander;
    JobVariableResult evaluate(const RawString& name, JobVariableArgument& argument) override {
      if (name.equals("fail"_text)) argument.failure = VariableUnknown;
      return {VariableInvalid, RawString::concat("<"_text, name, ">"_text)};
    }
  };
  JobExpansion bed;
  Derived expander(JobExecutorPair::executor());
  const JobVariableResult result = expander.expand("a $(b) $(c:d)"_text);
  EXPECT_EQ(result.state, VariableSuccess);
  EXPECT_EQ(result.text, "a <b> <c>"_text);
  const JobVariableResult failed = expander.expand("$(b)$(fail)$(c)"_text);
  EXPECT_EQ(failed.state, VariableUnknown);
  EXPECT_EQ(failed.text, "<b>$(fail)$(c)"_text);
}

TEST(JobVariableExpander, CallsNestDeep) {
  JobExpansion bed;
  JobFacts::instance().logCategories = RawString();
  EXPECT_EQ(bed(nested(JobVariableExpander::NestingLimit)), "True");
  EXPECT_EQ(bed(nested(JobVariableExpander::NestingLimit - 1)), "False");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableExpander, CallsNestedTooDeepEndInOverflow) {
  JobExpansion bed;
  JobFacts::instance().logCategories = RawString();
  EXPECT_EQ(bed("a" + nested(JobVariableExpander::NestingLimit + 1)), "");
  EXPECT_EQ(bed.state, VariableOverflow);
  EXPECT_EQ(bed.takeReports(), (Texts{"Too many variable expansions !\r\n  [value] $(Not:True)"}));
  EXPECT_EQ(bed(nested(20000)), "");
  EXPECT_EQ(bed.state, VariableOverflow);
  EXPECT_EQ(bed.takeReports().size(), 1U);
  EXPECT_EQ(bed("$(Not:a)"), "False") << "the same table serves on";
}

TEST(JobVariableExpander, AVariableThatReadsItselfEndsInOverflow) {
  JobExpansion bed;
  JobFacts::instance().logCategories = RawString();
  bed.setVariable("one", "$(Not:$(one))");
  EXPECT_EQ(bed("$(one)"), "");
  EXPECT_EQ(bed.state, VariableOverflow);
  EXPECT_EQ(bed.takeReports().size(), 1U);
  // Each level could try many times: the first overflow ends them all.
  bed.setVariable("many", "$(Length:" + repeated("$(many)", 50) + ")$(many)");
  EXPECT_EQ(bed("$(Cond:$(many):$(many):$(many)) $(many)"), "");
  EXPECT_EQ(bed.state, VariableOverflow);
  EXPECT_EQ(bed.takeReports().size(), 1U);
}

TEST(JobVariableExpander, OneExpanderServesAgainAfterAnOverflow) {
  JobExpansion bed;
  JobFacts::instance().logCategories = RawString();
  bed.setVariable("one", "$(Not:$(one))");
  JobVariableExpander expander(JobExecutorPair::executor());
  EXPECT_EQ(expander.expand("$(one)"_text).state, VariableOverflow);
  EXPECT_EQ(expander.expand("$(Not:a)"_text).text, "False"_text);
  EXPECT_EQ(expander.expand("$(Not:a)"_text).state, VariableSuccess);
}
