// Error reports of the real program.
#include "program/ProgramRun.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

// A report in one-shot mode, as the user gets it.
ProgramDialog reportOf(const std::string& lines) {
  ProgramRun program;
  program.writeProfile("[Action:A]\r\n" + lines);
  EXPECT_EQ(program.run("-a A"), 1U);
  EXPECT_EQ(program.dialogs().size(), 1U);
  return program.dialogs().empty() ? ProgramDialog{} : program.dialogs().front();
}

} // namespace

TEST(Report, IsAnInfoDialogInTheMiddleOfTheWorkArea) {
  const ProgramDialog report = reportOf("Nonsense\r\n");
  EXPECT_EQ(report.className, "Class_InfoDialog");
  EXPECT_EQ(report.caption, "Tarvellon");
  EXPECT_EQ(report.text, "No such command !\r\n  [command] Nonsense");
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  EXPECT_NEAR(report.place.left + report.place.right, work.left + work.right, 2);
  EXPECT_NEAR(report.place.top + report.place.bottom, work.top + work.bottom, 2);
}

TEST(Report, ShowsEveryLineOfItsText) {
  const ProgramDialog report = reportOf("PopupWindow {\r\nParameter=nobody has this name\r\n}\r\n");
  EXPECT_EQ(report.className, "Class_InfoDialog");
  EXPECT_EQ(report.text.rfind("Missing target window !\r\n  [command] PopupWindow", 0), 0U)
      << report.text;
}

TEST(Report, ATextInAnyScriptIsShown) {
  ProgramRun program;
  program.writeProfile("[Action:A]\r\nPutMessage {\r\nParameter=\xE6\x97\xA5\xE6\x9C\xAC "
                       "\xC3\xA9\xC3\xBC\r\n}\r\n");
  EXPECT_EQ(program.run("-a A"), 0U);
  ASSERT_EQ(program.dialogs().size(), 1U);
  EXPECT_EQ(program.dialogs()[0].className, "Class_InfoDialog");
  EXPECT_EQ(program.dialogs()[0].text, "\xE6\x97\xA5\xE6\x9C\xAC \xC3\xA9\xC3\xBC\r\n"
                                       "  [parameter] PutMessage");
}

TEST(Report, StopsTheScriptUntilItIsAnswered) {
  ProgramRun program;
  program.writeProfile("[Action:A]\r\nPutMessage {\r\nParameter=One\r\n}\r\n"
                       "PutMessage {\r\nParameter=Two\r\n}\r\n");
  EXPECT_EQ(program.run("-a A"), 0U);
  ASSERT_EQ(program.dialogs().size(), 2U); // one after the other
  EXPECT_EQ(program.dialogs()[0].text, "One\r\n  [parameter] PutMessage");
  EXPECT_EQ(program.dialogs()[1].text, "Two\r\n  [parameter] PutMessage");
}

TEST(Report, BeforeTheProfileIsAcceptedThePlatformsBoxSpeaks) {
  ProgramRun program;
  program.writeProfile("");
  EXPECT_EQ(program.run("-h"), 0U);
  ASSERT_EQ(program.dialogs().size(), 1U);
  EXPECT_EQ(program.dialogs()[0].className, "#32770");
}
