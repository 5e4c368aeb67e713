// Questions, forms and messages of scripts in the real launcher: what they show, how they are
// answered, and what the script and the log have of it.
#include "launcher/ScriptLauncher.h"

namespace {

class ScriptQuestion : public ScriptLauncher {
 protected:
  static std::string ask(const std::string& lines) { return block("AskMessage", lines); }
  // A question whose answer the script reads.
  static std::string askAndRead(const std::string& lines) {
    return button("Ask", ask(lines) + reading("Result") + Behind);
  }
  static std::string form(const std::string& lines) { return block("InputText", lines); }
  bool waitForAnswer(const std::string& answer) {
    return launcher.waitForLog("|$ " + answer + "\r\n") &&
           launcher.waitForLog("Success (" + answer + ")") && launcher.waitForLog(BehindRan);
  }
  // The run has failed without a report; its command and its button say so.
  void expectSilentFailure() {
    EXPECT_TRUE(launcher.waitForLog("|$ Failed\r\n", 2));
    EXPECT_EQ(launcher.countInLog(BehindRan), 0);
    EXPECT_EQ(launcher.countInLog("#Error"), 0);
    EXPECT_TRUE(launcher.visibleWindows(QuestionClass).empty());
  }
  // The children of a dialog from left to right and from top to bottom.
  static std::vector<HWND> partsOf(HWND dialog) {
    std::vector<HWND> parts;
    EnumChildWindows(
        dialog,
        [](HWND window, LPARAM parameter) -> BOOL {
          reinterpret_cast<std::vector<HWND>*>(parameter)->push_back(window);
          return TRUE;
        },
        reinterpret_cast<LPARAM>(&parts));
    return parts;
  }
  // The row of answers: the lowest part.
  static HWND answersOf(HWND dialog) {
    const std::vector<HWND> parts = partsOf(dialog);
    const auto lowest = std::max_element(parts.begin(), parts.end(), [](HWND a, HWND b) {
      return LauncherWindow::screenRect(a).top < LauncherWindow::screenRect(b).top;
    });
    return lowest == parts.end() ? nullptr : *lowest;
  }
  static bool has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }
};

// Field n with its lines.
std::string field(int32_t number, const std::vector<std::string>& lines) {
  std::string all;
  for (const std::string& line : lines) all += std::to_string(number) + ":" + line + "\r\n";
  return all;
}

} // namespace

// --- AskMessage

TEST_F(ScriptQuestion, EnterGivesTheFirstAnswer) {
  openWith(askAndRead("Parameter=Go on ?\r\nButton=Start,Stop\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  EXPECT_EQ(WindowTest::textOf(question), L"Tarvellon");
  EXPECT_TRUE(has(utf8Of(textsOf(question)), "Go on ?"));
  EXPECT_TRUE(launcher.waitForLog("|$ (Ask)Go on ?\r\n"));
  ASSERT_TRUE(answer(question, {VK_RETURN}));
  EXPECT_TRUE(waitForAnswer("Start"));
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptQuestion, ArrowAndEnterGiveTheSecondOfYesAndNo) {
  openWith(askAndRead("Parameter=Go on ?\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  ASSERT_TRUE(answer(question, {VK_RIGHT, VK_RETURN}));
  EXPECT_TRUE(waitForAnswer("No"));
}

TEST_F(ScriptQuestion, TheMouseAnswers) {
  openWith(askAndRead("Parameter=Go on ?\r\nButton=One,Two,Six\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  const HWND row = answersOf(question);
  ASSERT_NE(row, nullptr);
  const SIZE size = LauncherWindow::clientSize(row);
  LauncherWindow::pointAt(row, size.cx / 2, size.cy / 2);
  ASSERT_TRUE(launcher.settle());
  LauncherWindow::press(row, size.cx / 2, size.cy / 2);
  ASSERT_TRUE(launcher.waitUntilGone(question));
  EXPECT_TRUE(waitForAnswer("Two")) << launcher.run.log();
}

TEST_F(ScriptQuestion, CommasAndSlashesPartLabelsButNotInsideQuotes) {
  const std::string lines = "Parameter=Which ?\r\nButton=\"A, B/C\"/Next,Last\r\n";
  openWith(askAndRead(lines));
  const char* answers[] = {"A, B/C", "Next", "Last"};
  for (size_t index = 0; index < 3; ++index) {
    const HWND question = dialogAfterPress(QuestionClass);
    ASSERT_NE(question, nullptr);
    std::vector<uint16_t> steps(index, VK_RIGHT);
    steps.push_back(VK_RETURN);
    ASSERT_TRUE(answer(question, steps));
    EXPECT_TRUE(waitForAnswer(answers[index])) << answers[index];
    ASSERT_TRUE(isBack());
  }
}

TEST_F(ScriptQuestion, AbortByEndsTheRunSilently) {
  openWith(askAndRead("Parameter=Go on ?\r\nButton=Start,Stop\r\nAbortBy=Stop\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  ASSERT_TRUE(answer(question, {VK_RIGHT, VK_RETURN}));
  expectSilentFailure();
  EXPECT_EQ(launcher.countInLog("|$ Stop\r\n"), 1) << "the question's record has the answer";
  ASSERT_TRUE(isBack());
  const HWND again = dialogAfterPress(QuestionClass);
  ASSERT_NE(again, nullptr);
  ASSERT_TRUE(answer(again, {VK_RETURN}));
  EXPECT_TRUE(waitForAnswer("Start"));
}

TEST_F(ScriptQuestion, ALabelInAnotherCaseIsNotAbortBy) {
  openWith(askAndRead("Parameter=Go on ?\r\nButton=Start,STOP\r\nAbortBy=Stop\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  ASSERT_TRUE(answer(question, {VK_RIGHT, VK_RETURN}));
  EXPECT_TRUE(waitForAnswer("STOP"));
}

TEST_F(ScriptQuestion, EscapeIsNoAnswer) {
  openWith(askAndRead("Parameter=Go on ?\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  ASSERT_TRUE(answer(question, {VK_ESCAPE}));
  expectSilentFailure();
  EXPECT_TRUE(launcher.waitForLog("|$ \r\n")) << "the empty answer";
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptQuestion, ACloseIsNoAnswer) {
  openWith(askAndRead("Parameter=Go on ?\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  PostMessageW(question, WM_CLOSE, 0, 0);
  ASSERT_TRUE(launcher.waitUntilGone(question));
  expectSilentFailure();
}

TEST_F(ScriptQuestion, WithoutAParameterThereIsAReport) {
  openWith(button("Ask", ask("Button=Yes\r\n") + Behind));
  const HWND report = dialogAfterPress(QuestionClass);
  ASSERT_NE(report, nullptr);
  const std::string text = utf8Of(textsOf(report));
  EXPECT_TRUE(has(text, "Required parameter is missing !")) << text;
  EXPECT_TRUE(has(text, "[command] AskMessage")) << text;
  EXPECT_TRUE(has(text, "[parameter] Parameter")) << text;
  ASSERT_TRUE(answer(report, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog("|$ Failed\r\n", 2));
  EXPECT_EQ(launcher.countInLog(BehindRan), 0);
}

TEST_F(ScriptQuestion, StandsBesideTheLauncher) {
  openWith(askAndRead("Parameter=Go on ?\r\n"));
  moveTo(100, 120);
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  const RECT main = LauncherWindow::screenRect(launcher.window());
  EXPECT_EQ(LauncherWindow::screenRect(question).left, main.right - 7);
  EXPECT_EQ(LauncherWindow::screenRect(question).top, main.top);
  ASSERT_TRUE(answer(question, {VK_ESCAPE}));
}

// --- PutMessage

TEST_F(ScriptQuestion, AMessageShowsItsParameterLineAndCountsAsAnError) {
  openWith(button("Tell", block("PutMessage", "Parameter=All is well\r\n") + Behind));
  const HWND message = dialogAfterPress(QuestionClass);
  ASSERT_NE(message, nullptr);
  const std::string text = utf8Of(textsOf(message));
  EXPECT_TRUE(has(text, "All is well")) << text;
  EXPECT_TRUE(has(text, "[parameter] PutMessage")) << text;
  ASSERT_TRUE(answer(message, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog(BehindRan)) << "it does not fail";
  EXPECT_EQ(launcher.countInLog("#Error"), 1);
  EXPECT_EQ(launcher.countInLog("$ Failed"), 0);
}

TEST_F(ScriptQuestion, AMessageClosedByEscapeGoesOnAllTheSame) {
  openWith(button("Tell", block("PutMessage", "Parameter=All is well\r\n") + Behind));
  const HWND message = dialogAfterPress(QuestionClass);
  ASSERT_NE(message, nullptr);
  ASSERT_TRUE(answer(message, {VK_ESCAPE}));
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
}

TEST_F(ScriptQuestion, AnEmptyMessageIsAFault) {
  openWith(button("Tell", block("PutMessage", "Parameter=\r\n") + Behind));
  const HWND report = dialogAfterPress(QuestionClass);
  ASSERT_NE(report, nullptr);
  const std::string text = utf8Of(textsOf(report));
  EXPECT_TRUE(has(text, "[command] Parameter")) << text;
  EXPECT_TRUE(has(text, "[value] PutMessage")) << text;
  ASSERT_TRUE(answer(report, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog("|$ Failed\r\n", 2));
}

// --- InputText

TEST_F(ScriptQuestion, TypedTextsReachTheVariables) {
  openWith(button("Form", form("Parameter=New entry\r\n" +
                               field(0, {"Variable=Name", "Label=Name", "NoHint=True"}) +
                               field(1, {"Variable=Note", "Initial=old", "NoHint=True"})) +
                              reading("Name") + reading("Note") + reading("Result") + Behind));
  const HWND shown = dialogAfterPress(FormClass);
  ASSERT_NE(shown, nullptr);
  EXPECT_TRUE(has(utf8Of(textsOf(shown)), "New entry"));
  EXPECT_TRUE(launcher.waitForLog("|$ (Input)New entry\r\n"));
  ASSERT_TRUE(answer(shown, {'A', 'D', 'A', VK_TAB, VK_END, 'E', 'R', VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_TRUE(launcher.waitForLog("Success (ada)"));
  EXPECT_TRUE(launcher.waitForLog("Success (older)"));
  EXPECT_TRUE(launcher.waitForLog("Success (True)"));
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptQuestion, ACancelledFormEndsTheRunSilently) {
  openWith(button("Form", form(field(0, {"Variable=Name"})) + Behind));
  const HWND shown = dialogAfterPress(FormClass);
  ASSERT_NE(shown, nullptr);
  ASSERT_TRUE(answer(shown, {'A', VK_ESCAPE}));
  expectSilentFailure();
  EXPECT_TRUE(launcher.close());
}

TEST_F(ScriptQuestion, NotAbortTurnsACancelIntoAResult) {
  openWith(button("Form", block("Define", "Name=before\r\n") +
                              form("NotAbort=True\r\n" + field(0, {"Variable=Name"})) +
                              reading("Result") + reading("Name") + Behind));
  const HWND shown = dialogAfterPress(FormClass);
  ASSERT_NE(shown, nullptr);
  ASSERT_TRUE(answer(shown, {'A', VK_ESCAPE}));
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_TRUE(launcher.waitForLog("Success (False)"));
  EXPECT_TRUE(launcher.waitForLog("Success (before)")) << "no field is set";
  EXPECT_EQ(launcher.countInLog("|$ Failed\r\n"), 1) << "of the form alone";
}

TEST_F(ScriptQuestion, FieldsEndAtTheFirstGap) {
  openWith(button("Form", form("Parameter=Letters\r\n" +
                               field(0, {"Variable=A", "Label=A", "NoHint=True"}) +
                               field(2, {"Variable=C", "NoHint=True"})) +
                              Behind));
  const HWND shown = dialogAfterPress(FormClass);
  ASSERT_NE(shown, nullptr);
  // The box of the one field, with its label, the prompt's and the two buttons.
  EXPECT_EQ(partsOf(shown).size(), 5U);
  ASSERT_TRUE(answer(shown, {'X', VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
}

TEST_F(ScriptQuestion, ReadOnlyFieldsKeepTheirTexts) {
  openWith(
      button("Form", form(field(0, {"Variable=Fixed", "Initial=fixed", "ReadOnly=x", "NoHint=1"}) +
                          field(1, {"Variable=Free", "ReadOnly=False", "NoHint=1"})) +
                         reading("Fixed") + reading("Free") + Behind));
  const HWND shown = dialogAfterPress(FormClass);
  ASSERT_NE(shown, nullptr);
  ASSERT_TRUE(answer(shown, {'A', VK_TAB, 'B', VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog(BehindRan));
  EXPECT_TRUE(launcher.waitForLog("Success (fixed)"));
  EXPECT_TRUE(launcher.waitForLog("Success (b)"));
}

TEST_F(ScriptQuestion, HintsOfTheScriptStandInTheMenu) {
  openWith(button("Form", form(field(0, {"Variable=Name", "Hints=Alice, \"Bob\" ,Alice,Carol"})) +
                              reading("Name") + Behind));
  const HWND shown = dialogAfterPress(FormClass);
  ASSERT_NE(shown, nullptr);
  keys({VK_DOWN});
  const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
  ASSERT_NE(menu, nullptr);
  keys({VK_UP, VK_UP, VK_RETURN}); // the last but one
  ASSERT_TRUE(launcher.waitUntilGone(menu));
  ASSERT_NE(dialog(FormClass), nullptr);
  ASSERT_TRUE(answer(shown, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog("Success (Bob)"));
}

TEST_F(ScriptQuestion, WhatWasTypedBeforeIsOfferedNewestFirstAndOnce) {
  openWith(button("Form", form(field(0, {"Variable=Name"})) + reading("Name") + Behind));
  // "one" twice: it stands in front and once.
  const std::vector<std::vector<uint16_t>> entries{
      {'O', 'N', 'E', VK_RETURN}, {'T', 'W', 'O', VK_RETURN}, {'O', 'N', 'E', VK_RETURN}};
  int32_t runs = 0;
  for (const auto& each : entries) {
    const HWND shown = dialogAfterPress(FormClass);
    ASSERT_NE(shown, nullptr);
    ASSERT_TRUE(answer(shown, each));
    ASSERT_TRUE(launcher.waitForLog(BehindRan, ++runs));
    ASSERT_TRUE(isBack());
  }
  // The first, the second, and around to the first again.
  const char* expected[] = {"Success (one)", "Success (two)", "Success (one)"};
  const int32_t before[] = {2, 1, 3};
  for (size_t steps = 1; steps <= 3; steps += 2) {
    const HWND shown = dialogAfterPress(FormClass);
    ASSERT_NE(shown, nullptr);
    keys({VK_DOWN});
    const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
    ASSERT_NE(menu, nullptr);
    keys(std::vector<uint16_t>(steps, VK_DOWN));
    keys({VK_RETURN});
    ASSERT_TRUE(launcher.waitUntilGone(menu));
    ASSERT_NE(dialog(FormClass), nullptr);
    ASSERT_TRUE(answer(shown, {VK_RETURN}));
    ASSERT_TRUE(launcher.waitForLog(BehindRan, ++runs));
    EXPECT_EQ(launcher.countInLog(expected[steps - 1]), before[steps - 1] + 1);
    ASSERT_TRUE(isBack());
  }
}

TEST_F(ScriptQuestion, AHistoryBelongsToThePositionOfTheField) {
  openWith(button("One", form(field(0, {"Variable=Name"})) + Behind) +
           button("Two", form(field(0, {"Variable=Other"})) + reading("Other") + Behind));
  const HWND first = dialogAfterPress(FormClass, 0);
  ASSERT_NE(first, nullptr);
  ASSERT_TRUE(answer(first, {'A', 'D', 'A', VK_RETURN}));
  ASSERT_TRUE(launcher.waitForLog(BehindRan));
  ASSERT_TRUE(isBack());
  const HWND second = dialogAfterPress(FormClass, 1);
  ASSERT_NE(second, nullptr);
  keys({VK_DOWN});
  const HWND menu = launcher.waitForClass(LauncherWindow::MenuClass);
  ASSERT_NE(menu, nullptr);
  keys({VK_DOWN, VK_RETURN});
  ASSERT_TRUE(launcher.waitUntilGone(menu));
  ASSERT_NE(dialog(FormClass), nullptr);
  ASSERT_TRUE(answer(second, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog("Success (ada)"));
}

TEST_F(ScriptQuestion, AFormWithoutFieldsOpens) {
  openWith(button("Form", form("Parameter=Nothing to fill in\r\n") + reading("Result") + Behind));
  pressButton();
  const HWND shown = launcher.waitForClass(FormClass); // no part of it has the focus
  ASSERT_NE(shown, nullptr);
  EXPECT_TRUE(has(utf8Of(textsOf(shown)), "Nothing to fill in"));
  PostMessageW(shown, WM_CLOSE, 0, 0);
  ASSERT_TRUE(launcher.waitUntilGone(shown));
  expectSilentFailure();
}

TEST_F(ScriptQuestion, AFailedExpansionInAFieldOpensNoForm) {
  openWith(button("Form", form(field(0, {"Variable=Name", "Initial=$(Calc"})) + Behind));
  const HWND report = dialogAfterPress(QuestionClass);
  ASSERT_NE(report, nullptr);
  EXPECT_TRUE(has(utf8Of(textsOf(report)), "Unbalanced variable block !"));
  ASSERT_TRUE(answer(report, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForLog("|$ Failed\r\n", 2));
  EXPECT_TRUE(launcher.visibleWindows(FormClass).empty());
  EXPECT_EQ(launcher.countInLog("(Input)"), 0);
}

// --- The launcher's end

TEST_F(ScriptQuestion, AQuitWaitsForTheQuestionsOfItsRun) {
  openWith(button("Leave", "QuitLauncher\r\n" + ask("Parameter=Go on ?\r\n") +
                               form(field(0, {"Variable=Name"})) + Behind));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  ASSERT_TRUE(answer(question, {VK_RETURN}));
  const HWND shown = dialog(FormClass);
  ASSERT_NE(shown, nullptr);
  EXPECT_TRUE(launcher.isRunning());
  ASSERT_TRUE(answer(shown, {VK_RETURN}));
  EXPECT_TRUE(launcher.waitForEnd());
  EXPECT_EQ(launcher.exitCode(), 0U);
  EXPECT_EQ(launcher.countInLog(BehindRan), 1);
  EXPECT_EQ(launcher.countInLog("|$ Terminate\r\n"), 1);
}

TEST_F(ScriptQuestion, AnEndOfTheSessionThatMeetsAQuestionIsLost) {
  openWith(askAndRead("Parameter=Go on ?\r\n"));
  const HWND question = dialogAfterPress(QuestionClass);
  ASSERT_NE(question, nullptr);
  DWORD_PTR result = 0;
  SendMessageTimeoutW(launcher.window(), WM_ENDSESSION, TRUE, 0, SMTO_NORMAL, 10000, &result);
  ASSERT_TRUE(answer(question, {VK_RETURN}));
  EXPECT_TRUE(waitForAnswer("Yes"));
  EXPECT_TRUE(launcher.close());
}
