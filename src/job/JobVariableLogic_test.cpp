#include "job/JobVariableLogic.h"

#include "JobExpansion.h"

using namespace JobLayer;

namespace {

// Whether each of the calls is reported once as having too few arguments, with state Invalid.
void expectTooFew(JobExpansion& bed, const Texts& calls) {
  for (const std::string& call : calls) {
    EXPECT_EQ(bed.results(call), (Texts{"Invalid ()"})) << call;
    const Texts reports = bed.takeReports();
    ASSERT_FALSE(reports.empty()) << call;
    for (const std::string& report : reports) {
      EXPECT_EQ(report.rfind("Too few variable arguments !\r\n", 0), 0U) << report;
      EXPECT_NE(report.find("[value] " + call), std::string::npos) << report;
    }
  }
}

} // namespace

TEST(JobVariableLogic, NotIsTrueForWhatTestsFalse) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Not:)"), "True");
  EXPECT_EQ(bed("$(Not:False)"), "True");
  EXPECT_EQ(bed("$(Not:fALSE)"), "True");
  EXPECT_EQ(bed("$(Not:True)"), "False");
  EXPECT_EQ(bed("$(Not:0)"), "False");
  EXPECT_EQ(bed("$(Not: )"), "False");
}

TEST(JobVariableLogic, EqualComparesInExactCase) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Equal:abc:abc)"), "True");
  EXPECT_EQ(bed("$(Equal:abc:Abc)"), "False");
  EXPECT_EQ(bed("$(Equal:abc:abcd)"), "False");
  EXPECT_EQ(bed("$(Equal:1:01)"), "False");
}

TEST(JobVariableLogic, EqualNoCaseFoldsAsciiLetters) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(EqualNoCase:aBc:AbC)"), "True");
  EXPECT_EQ(bed("$(EqualNoCase:abc:abd)"), "False");
  EXPECT_EQ(bed("$(EqualNoCase:[:{)"), "False") << "only letters fold";
  EXPECT_EQ(bed("$(EqualNoCase:\xC3\xA4:\xC3\x84)"), "False") << "only ASCII folds";
}

TEST(JobVariableLogic, EqualReadsBothTextsInAnyCase) {
  JobExpansion bed;
  bed.setVariable("a", "1");
  bed.setVariable("b", "2");
  EXPECT_EQ(bed.results("$(Equal:$(a):$(b))"),
            (Texts{"Success (1)", "Success (2)", "Success (False)"}));
  EXPECT_EQ(bed.results("$(EqualNoCase:$(a):$(b))").size(), 3U);
}

TEST(JobVariableLogic, NumbersCompareAsSigned64Bit) {
  JobExpansion bed;
  struct {
    const char* a;
    const char* b;
    int order;
  } pairs[] = {{"1", "2", -1},         {"2", "1", 1},
               {"2", "2", 0},          {"-1", "1", -1},
               {"01", "1", 0},         {"+5", "5", 0},
               {"-0", "0", 0},         {"10", "9", 1},
               {"4294967296", "1", 1}, {"9223372036854775807", "-9223372036854775808", 1}};
  const auto word = [](bool flag) { return flag ? "True" : "False"; };
  for (const auto& pair : pairs) {
    const std::string rest = std::string(":") + pair.a + ":" + pair.b + ")";
    EXPECT_EQ(bed("$(<" + rest), word(pair.order < 0)) << rest;
    EXPECT_EQ(bed("$(>" + rest), word(pair.order > 0)) << rest;
    EXPECT_EQ(bed("$(<=" + rest), word(pair.order <= 0)) << rest;
    EXPECT_EQ(bed("$(>=" + rest), word(pair.order >= 0)) << rest;
    EXPECT_EQ(bed("$(==" + rest), word(pair.order == 0)) << rest;
    EXPECT_EQ(bed("$(!=" + rest), word(pair.order != 0)) << rest;
  }
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableLogic, WhatIsNoNumberIsReportedOnce) {
  JobExpansion bed;
  for (const char* name : {"<", ">", "<=", ">=", "==", "!="}) {
    const std::string call = std::string("$(") + name + ":x:y)";
    EXPECT_EQ(bed.results(call), (Texts{"Invalid ()"}));
    EXPECT_EQ(bed.takeReports(), (Texts{std::string("Incorrect number format !\r\n  [variable] ") +
                                        name + "\r\n  [value] x\r\n  [script] " + call}));
    bed(std::string("$(") + name + ":1:)");
    EXPECT_EQ(bed.takeReports().size(), 1U);
  }
}

TEST(JobVariableLogic, TooFewArgumentsAreReported) {
  JobExpansion bed;
  expectTooFew(bed, {"$(Not)", "$(Equal)", "$(Equal:a)", "$(EqualNoCase)", "$(EqualNoCase:a)",
                     "$(<)", "$(<:1)", "$(>:1)", "$(<=:1)", "$(>=:1)", "$(==:1)", "$(!=:1)",
                     "$(IsDefined)", "$(Cond)", "$(CondDef)"});
  bed("$(Equal)");
  EXPECT_EQ(bed.takeReports().size(), 2U) << "both are read in any case";
}

TEST(JobVariableLogic, AndReadsUpToTheFirstFalse) {
  JobExpansion bed;
  bed.setVariable("t", "yes");
  bed.setVariable("f", "False");
  EXPECT_EQ(bed("$(&&)"), "True");
  EXPECT_EQ(bed("$(&&:a)"), "True");
  EXPECT_EQ(bed("$(&&:)"), "False");
  EXPECT_EQ(bed("$(&&:a:b:c)"), "True");
  EXPECT_EQ(bed.results("$(&&:$(t):$(f):$(t))"),
            (Texts{"Success (yes)", "Success (False)", "Success (False)"}));
  EXPECT_EQ(bed("$(&&:False:$(Path:Bad))"), "False");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableLogic, OrReadsUpToTheFirstTrue) {
  JobExpansion bed;
  bed.setVariable("t", "yes");
  bed.setVariable("f", "False");
  EXPECT_EQ(bed("$(||)"), "False");
  EXPECT_EQ(bed("$(||:)"), "False");
  EXPECT_EQ(bed("$(||:0)"), "True");
  EXPECT_EQ(bed("$(||:False::false)"), "False");
  EXPECT_EQ(bed.results("$(||:$(f):$(t):$(f))"),
            (Texts{"Success (False)", "Success (yes)", "Success (True)"}));
  EXPECT_EQ(bed("$(||:a:$(Path:Bad))"), "True");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableLogic, IsDefinedKnowsVariablesAndBuiltIns) {
  JobExpansion bed;
  bed.setVariable("mine", "");
  EXPECT_EQ(bed("$(IsDefined:mine)"), "True");
  EXPECT_EQ(bed("$(IsDefined:Mine)"), "False");
  EXPECT_EQ(bed("$(IsDefined:Cond)"), "True");
  EXPECT_EQ(bed("$(IsDefined:)"), "False");
  bed.setVariable("name", "mine");
  EXPECT_EQ(bed("$(IsDefined:$(name))"), "True");
}

TEST(JobVariableLogic, CondTakesOneBranch) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Cond:True:a:b)"), "a");
  EXPECT_EQ(bed("$(Cond:0:a:b)"), "a");
  EXPECT_EQ(bed("$(Cond:False:a:b)"), "b");
  EXPECT_EQ(bed("$(Cond::a:b)"), "b");
  EXPECT_EQ(bed("$(Cond:x:$(Not:):$(Path:Bad))"), "True");
  EXPECT_EQ(bed("$(Cond::$(Path:Bad):$(Not:))"), "True");
  EXPECT_TRUE(bed.takeReports().empty()) << "the other branch is not read";
}

TEST(JobVariableLogic, CondMissesABranchOnlyWhenItIsChosen) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(Cond:True:a)"), "a");
  EXPECT_TRUE(bed.takeReports().empty());
  expectTooFew(bed, {"$(Cond:False:a)", "$(Cond:True)"});
}

TEST(JobVariableLogic, CondDefAsksWhetherTheNameIsDefined) {
  JobExpansion bed;
  bed.setVariable("mine", "");
  EXPECT_EQ(bed("$(CondDef:mine:a:b)"), "a");
  EXPECT_EQ(bed("$(CondDef:Not:a:b)"), "a");
  EXPECT_EQ(bed("$(CondDef:other:$(Path:Bad):b)"), "b");
  EXPECT_EQ(bed("$(CondDef:mine:a)"), "a");
  EXPECT_TRUE(bed.takeReports().empty());
  expectTooFew(bed, {"$(CondDef:other:a)"});
}

TEST(JobVariableLogic, IsKeySeeksEveryWordInTheKeyState) {
  JobExpansion bed;
  bed.setVariable("KeyState", "RButton,LShift");
  EXPECT_EQ(bed("$(IsKey:LShift:RButton)"), "True");
  EXPECT_EQ(bed("$(IsKey:lshift)"), "True") << "in any case";
  EXPECT_EQ(bed("$(IsKey:LButton)"), "False");
  EXPECT_EQ(bed("$(IsKey:RButton:LControl)"), "False");
  EXPECT_EQ(bed("$(IsKey:Shift)"), "True") << "as a part of the text";
  EXPECT_EQ(bed("$(IsKey:Button,L)"), "True");
  EXPECT_EQ(bed("$(IsKey:RButton,LShift,)"), "False");
  EXPECT_EQ(bed("$(IsKey)"), "True");
  EXPECT_EQ(bed("$(IsKey:)"), "True");
}

TEST(JobVariableLogic, WithoutAKeyStateNoKeyIsDown) {
  JobExpansion bed;
  EXPECT_EQ(bed("$(IsKey:LShift)"), "False");
  EXPECT_EQ(bed("$(IsKey)"), "True");
  EXPECT_TRUE(bed.takeReports().empty());
}

TEST(JobVariableLogic, IsKeyReadsAllItsWords) {
  JobExpansion bed;
  bed.setVariable("KeyState", "Drop");
  bed.setVariable("a", "x");
  bed.setVariable("b", "y");
  EXPECT_EQ(bed.results("$(IsKey:$(a):$(b))"),
            (Texts{"Success (x)", "Success (y)", "Success (Drop)", "Success (False)"}));
}
