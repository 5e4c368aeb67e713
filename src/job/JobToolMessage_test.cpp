#include "job/JobToolMessage.h"

#include "raw/RawLanguage.h"

#include "JobTestBed.h"

using namespace JobLayer;

using Lines = std::vector<std::string>;

TEST(JobToolMessage, ShowsTheTextOfTheKeyAndALineForEachDetail) {
  JobTestBed bed;
  JobToolMessage::ReportCommandError("RequiredParameterIsMissing"_text, "Action"_text, "Name"_text,
                                     ""_text);
  EXPECT_EQ(bed.dialogs.captions, Lines{"Tarvellon"});
  EXPECT_EQ(bed.dialogs.reports, Lines{"Required parameter is missing !\r\n"
                                       "  [command] Action\r\n"
                                       "  [parameter] Name"});
}

TEST(JobToolMessage, LogsTheKeyWithItsDetailsInOneLine) {
  JobTestBed bed;
  JobToolMessage::ReportCommandError("IncorrectNumberFormat"_text, "For"_text, "Add"_text,
                                     "x"_text);
  EXPECT_EQ(bed.diary(), Lines{"#Error|$ IncorrectNumberFormat [command] For [parameter] Add "
                               "[value] x"});
}

TEST(JobToolMessage, LogsBeforeItShows) {
  JobTestBed bed;
  Lines seen;
  bed.dialogs.onReport = [&] { seen = bed.diary(); };
  JobToolMessage::ReportCommandError("NoSuchCommand"_text, "x"_text, ""_text, ""_text);
  EXPECT_EQ(seen, Lines{"#Error|$ NoSuchCommand [command] x"});
}

TEST(JobToolMessage, LogsWhateverTheCategoriesAre) {
  JobTestBed bed;
  JobFacts::instance().logCategories = ""_text;
  JobToolMessage::ReportCommandError("NoSuchCommand"_text, ""_text, ""_text, ""_text);
  EXPECT_EQ(bed.diary(), Lines{"#Error|$ NoSuchCommand"});
}

TEST(JobToolMessage, ReportsOfVariablesHaveTheirOwnTags) {
  JobTestBed bed;
  JobToolMessage::ReportVariableError("OutOfRangeNumber"_text, "Left"_text, "-1"_text,
                                      "$(Left:abc:-1)"_text);
  EXPECT_EQ(bed.dialogs.reports, Lines{"Number is out of range !\r\n"
                                       "  [variable] Left\r\n"
                                       "  [value] -1\r\n"
                                       "  [script] $(Left:abc:-1)"});
  EXPECT_EQ(bed.diary(), Lines{"#Error|$ OutOfRangeNumber [variable] Left "
                               "[value] -1 [script] $(Left:abc:-1)"});
}

TEST(JobToolMessage, EveryKeyHasItsText) {
  const std::pair<const char*, const char*> texts[] = {
      {"RequiredParameterIsMissing", "Required parameter is missing !"},
      {"RequiredParameterIsEmpty", "Required parameter is empty !"},
      {"UnexpectedParameter", "Unexpected parameter !"},
      {"UserAborted", "User aborted !"},
      {"NoSuchDefinedAction", "No such defined action !"},
      {"MissingTargetWindow", "Missing target window !"},
      {"OutOfMenuScope", "Out of menu scope !"},
      {"NoSuchCommand", "No such command !"},
      {"UnbalancedSectionBlocks", "Unbalanced section blocks !"},
      {"NoSuchDefinedName", "No such defined name !"},
      {"UnbalancedVariableBlock", "Unbalanced variable block !"},
      {"TooFewVariableArguments", "Too few variable arguments !"},
      {"IncorrectNumberFormat", "Incorrect number format !"},
      {"OutOfRangeNumber", "Number is out of range !"},
      {"TooManyVariableExpansions", "Too many variable expansions !"},
      {"VariableNameIsMissing", "Variable name is missing !"},
      {"InvalidVariableArgument", "Invalid variable argument !"},
  };
  for (const auto& [key, text] : texts) {
    JobToolMessage message;
    message.key = raw(key);
    EXPECT_EQ(bytesOf(message.dialogText()), text);
  }
}

TEST(JobToolMessage, AKeyWithoutATextShowsAsItself) {
  JobToolMessage message;
  message.key = "Good morning"_text;
  EXPECT_EQ(message.dialogText(), "Good morning"_text);
}

TEST(JobToolMessage, ALanguageFileReplacesTexts) {
  const TestFolder folder;
  RawLayer::RawLanguage& language = RawLayer::RawLanguage::instance();
  language.setPath(
      folder.write("LanguageFile.ini", "[Test]\r\nToolMessage_NoSuchCommand=Unbekannt:\\s\r\n"));
  language.setSelection("Test"_text);
  language.loadSection();
  JobToolMessage message;
  message.key = "NoSuchCommand"_text;
  message.add("[command]"_text, "x"_text);
  EXPECT_EQ(message.dialogText(), "Unbekannt: \r\n  [command] x"_text);
  message.key = "UserAborted"_text;
  EXPECT_EQ(message.dialogText(), "User aborted !\r\n  [command] x"_text);

  language.setPath(folder.write("Empty.ini", ""));
  language.loadSection();
  language.setPath(RawString());
  language.setSelection(RawString());
  message.key = "NoSuchCommand"_text;
  EXPECT_EQ(message.dialogText(), "No such command !\r\n  [command] x"_text);
}

TEST(JobToolMessage, LeavesOutEmptyValuesAndMoreThanTenLines) {
  JobToolMessage message;
  message.key = "NoSuchCommand"_text;
  message.add("[empty]"_text, RawString());
  EXPECT_EQ(message.count, 0);
  for (int i = 0; i < 11; ++i) message.add("[n]"_text, RawString::fromInt64(i));
  EXPECT_EQ(message.count, 10);
  EXPECT_EQ(message.logDetail(), "NoSuchCommand [n] 0 [n] 1 [n] 2 [n] 3 [n] 4 [n] 5 [n] 6 [n] 7 "
                                 "[n] 8 [n] 9"_text);
}

TEST(JobToolMessage, TheLogHasTheKeyAndNotItsText) {
  JobTestBed bed;
  JobToolMessage::ReportCommandError("Good morning"_text, ""_text, ""_text, "a\tb"_text);
  EXPECT_EQ(bed.diary(), Lines{"#Error|$ Good morning [value] a\tb"});
}
