// Scripts that reach the outside, run by the real program: programs started, folders opened, the
// clipboard, windows, files and processes.
#include "program/ProgramRun.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

std::string action(const std::string& lines) {
  std::string text = "[Action:A]\r\n";
  for (const char unit : lines) text += unit == '\n' ? std::string("\r\n") : std::string(1, unit);
  return text + "\r\n";
}

// Runs the action's lines; the exit code.
uint32_t runLines(ProgramRun& program, const std::string& lines) {
  program.writeProfile(action(lines));
  return program.run("-a A");
}

std::string clipboardText(UINT format) {
  std::string text;
  for (int tries = 0; tries < 50 && !OpenClipboard(nullptr); ++tries) Sleep(20);
  if (HANDLE data = GetClipboardData(format)) {
    const void* units = GlobalLock(data);
    text = format == CF_TEXT ? static_cast<const char*>(units)
                             : utf8Of(static_cast<const wchar_t*>(units));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

// Waits for a top-level window of the class; null after ten seconds.
HWND waitForWindow(const wchar_t* className) {
  for (int i = 0; i < 500; ++i) {
    if (HWND window = FindWindowW(className, nullptr)) return window;
    Sleep(20);
  }
  return nullptr;
}

void closeAll(const wchar_t* className) {
  for (int i = 0; i < 100; ++i) {
    HWND window = FindWindowW(className, nullptr);
    if (!window) return;
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (HANDLE handle = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process)) {
      TerminateProcess(handle, 0);
      WaitForSingleObject(handle, 2000);
      CloseHandle(handle);
    }
    Sleep(20);
  }
}

bool waitForFile(const ProgramRun& program, const std::string& name) {
  for (int i = 0; i < 500 && !program.hasFile(name); ++i) Sleep(20);
  return program.hasFile(name);
}

TEST(Script, ShellStartsARealProgramAndDoesNotWaitForIt) {
  ProgramRun program;
  const std::string file = program.path("made.txt");
  EXPECT_EQ(runLines(program, "Shell {\nCommand=cmd.exe\nParameter=/c echo hello>\"" + file +
                                  "\"\nShowStatus=Hide\nWait=WaitForDone\nTimeout=-1\n}\n"
                                  "If {\nCondition=$(Not:$(Equal:$(ExitCode):0))\n"
                                  "AbortExecution\n}\n"),
            0u);
  EXPECT_TRUE(waitForFile(program, "made.txt"));
}

TEST(Script, ShellTellsZeroAlsoForAProgramThatFails) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "Shell {\nCommand=cmd.exe\nParameter=/c exit 7\nShowStatus=Hide\n"
                              "Wait=WaitForDone\nTimeout=-1\n}\n"
                              "If {\nCondition=$(Equal:$(ExitCode):0)\n}\nElse {\n"
                              "AbortExecution\n}\n"),
            0u);
}

TEST(Script, ShellUsesTheDirectoryAndTheEnvironment) {
  ProgramRun program;
  program.folder().makeFolder("work");
  EXPECT_EQ(runLines(program, "Shell {\nCommand=%ComSpec%\nParameter=/c echo x>here.txt\n"
                              "Directory=" +
                                  program.path("work") + "\nShowStatus=Hide\n}\n"),
            0u);
  EXPECT_TRUE(waitForFile(program, "work/here.txt"));
}

TEST(Script, AMissingProgramStopsTheRunWithoutADialog) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "Shell {\nCommand=no_such_program.exe\n}\nNoSuchCommand\n"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_FALSE(program.logHas("NoSuchCommand]"));
}

TEST(Script, ShellWithNothingShowsItsReport) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "Shell\n"), 1u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text,
            "Required parameter is missing !\r\n  [command] Command\r\n  [value] Shell");
}

TEST(Script, TheClipboardTakesPlainTextNarrowAndOtherTextWide) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "ToClipboard {\nParameter=plain $(Code:65)\n}\n"), 0u);
  EXPECT_EQ(clipboardText(CF_TEXT), "plain A");
  EXPECT_EQ(runLines(program, "ToClipboard {\nParameter=$(Code:26085)$(Code:128512)\n}\n"), 0u);
  EXPECT_EQ(clipboardText(CF_UNICODETEXT), "\xE6\x97\xA5\xF0\x9F\x98\x80");
}

TEST(Script, TheClipboardComesBackThroughItsFunction) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "ToClipboard {\nParameter=a b\n}\n"
                              "If {\nCondition=$(Equal:$(Clipboard):a b)\n}\n"
                              "Else {\nAbortExecution\n}\n"),
            0u);
}

TEST(Script, OpenFolderOpensTheNearestFolderThatExists) {
  closeAll(L"ExplorerWClass");
  closeAll(L"CabinetWClass");
  ProgramRun program;
  program.folder().makeFolder("deep");
  EXPECT_EQ(runLines(program, "OpenFolder {\nParameter=" + program.path("deep") + "\\gone\\x\n}\n"),
            0u);
  HWND window = waitForWindow(L"ExplorerWClass");
  if (!window) window = waitForWindow(L"CabinetWClass");
  EXPECT_NE(window, nullptr);
  closeAll(L"ExplorerWClass");
  closeAll(L"CabinetWClass");
}

TEST(Script, OpenFolderWithoutAnyFolderReportsTheOriginalText) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "OpenFolder {\nParameter=q:\\no\\such\n}\n"), 1u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "Unexpected parameter !\r\n  [command] OpenFolder\r\n"
                                       "  [parameter] Parameter\r\n  [value] q:\\no\\such");
}

TEST(Script, WindowsAreFoundAndBroughtToTheFront) {
  closeAll(L"Notepad");
  ProgramRun program;
  EXPECT_EQ(runLines(program, "Shell {\nCommand=notepad.exe\n}\n"), 0u);
  HWND notepad = waitForWindow(L"Notepad");
  ASSERT_NE(notepad, nullptr);
  ShowWindow(notepad, SW_MINIMIZE);
  const std::string popup = "If {\nCondition=$(IsWindow::Notepad)\n}\nElse {\nAbortExecution\n}\n"
                            "PopupWindow {\nParameter=$(Window:*Notepad*:Notepad)\n}\n";
  EXPECT_EQ(runLines(program, popup), 0u);
  EXPECT_FALSE(IsIconic(notepad));
  EXPECT_EQ(runLines(program, popup), 0u);
  EXPECT_EQ(GetForegroundWindow(), notepad);
  EXPECT_EQ(runLines(program, "If {\nCondition=$(IsProcess:NOTEPAD.*)\n}\n"
                              "Else {\nAbortExecution\n}\n"),
            0u);
  closeAll(L"Notepad");
  EXPECT_EQ(runLines(program, "If {\nCondition=$(IsWindow::Notepad)\nAbortExecution\n}\n"), 0u);
}

TEST(Script, ADeadWindowIsReported) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "PopupWindow {\nParameter=1\n}\n"), 1u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "Missing target window !\r\n  [command] PopupWindow\r\n"
                                       "  [parameter] Parameter\r\n  [value] 1");
}

TEST(Script, FilesAreFoundByPatternsPartByPart) {
  ProgramRun program;
  program.folder().makeFolder("sub1");
  program.writeFile("sub1/a.txt", "");
  program.writeFile("sub1/b.txt", "");
  program.writeFile("sub1/c.log", "");
  program.folder().makeFolder("sub1/folder");
  const RawLayer::RawString folder = program.folder().path();
  const std::string base(folder.text(), static_cast<std::size_t>(folder.length()));
  EXPECT_EQ(runLines(program, "Define {\nBase=" + base +
                                  "\n}\n"
                                  "If {\nCondition=$(&&:$(IsFile:$(Base)\\sub*\\b.*):"
                                  "$(Equal:$(FileCount:$(Base)\\sub?\\*.TXT):2):"
                                  "$(Equal:$(FolderCount:$(Base)\\sub1\\*):1):"
                                  "$(IsMissing:$(File:$(Base)\\none*\\x)):"
                                  "$(Equal:$(BodyEx:$(File:$(Base)\\s*\\*.log)):c.log))\n}\n"
                                  "Else {\nAbortExecution\n}\n"),
            0u);
}

TEST(Script, FunctionsOfTheSystemAnswer) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "Define {\nAll=$(Path:Desktop)|$(Path:Temp)|$(Path:User)|"
                              "$(Path:HostName)|$(Path:UserName)|$(Path:Launcher)|"
                              "$(Path:ConfigFile)\n}\nIf {\nCondition=$(All)\n}\n"),
            0u);
  EXPECT_TRUE(program.logHas("(" + program.path("Tarvellon.exe") + ")"));
  EXPECT_TRUE(program.logHas("(" + program.path("Tarvellon.ini") + ")"));
  EXPECT_TRUE(program.logHas("(" + program.path("Temp") + ")"));
}

TEST(Script, AFaultInAFunctionShowsItsReportAndTheRunGoesOn) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "Define {\nX=$(Equal:a)\n}\nIf {\nCondition=$(X)\n}\n"), 0u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "Too few variable arguments !\r\n  [variable] Equal\r\n"
                                       "  [value] $(Equal:a)");
}

TEST(Script, QuestionsAndFormsEndAOneShotRunInSilence) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "AskMessage {\nParameter=Go ?\n}\n"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_EQ(runLines(program, "InputText {\n0:Variable=x\n}\n"), 1u);
  EXPECT_EQ(runLines(program, "InputText {\nNotAbort=True\n0:Variable=x\n}\n"), 0u);
  EXPECT_EQ(runLines(program, "Menu {\nMenuItem {\nTitle=a\n}\n}\n"), 1u);
  EXPECT_EQ(runLines(program, "PickupMenu {\na=1\n}\n"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
  EXPECT_EQ(runLines(program, "QuitLauncher\nRebootLauncher\n"), 0u);
}

TEST(Script, AMessageIsShownAndLogged) {
  ProgramRun program;
  EXPECT_EQ(runLines(program, "PutMessage {\nParameter=Good $(Code:26085)\n}\n"), 0u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "Good \xE6\x97\xA5\r\n  [parameter] PutMessage");
  EXPECT_TRUE(program.logHas("|$ Good \xE6\x97\xA5 [parameter] PutMessage\r\n"));
}

TEST(Script, MessagesComeFromTheLanguageFile) {
  ProgramRun program;
  program.writeFile("Tarvellon.ini",
                    "[Common]\r\nProgram=Tarvellon\r\nLanguage=ja\r\n" + action("Foo\n"));
  program.writeFile("LanguageFile.ini", "\xEF\xBB\xBF[LangMap]\r\nja=1041\r\n\r\n[ja]\r\n"
                                        "ToolMessage_NoSuchCommand=\xE7\x84\xA1\xE3\x81\x84\r\n");
  EXPECT_EQ(program.run("-a A"), 1u);
  ASSERT_EQ(program.dialogs().size(), 1u);
  EXPECT_EQ(program.dialogs()[0].text, "\xE7\x84\xA1\xE3\x81\x84\r\n  [command] Foo");
}

TEST(Script, AMissingLanguageIsWrittenWithAllTexts) {
  ProgramRun program;
  program.writeFile("Tarvellon.ini",
                    "[Common]\r\nProgram=Tarvellon\r\nLanguage=xx\r\n" + action("Foo\n"));
  program.writeFile("LanguageFile.ini", "");
  EXPECT_EQ(program.run("-a A"), 1u);
  const std::string file = program.readFile("LanguageFile.ini");
  EXPECT_NE(file.find("[xx]\r\n"), std::string::npos) << file;
  EXPECT_NE(file.find("ToolMessage_NoSuchCommand=No such command !\r\n"), std::string::npos)
      << file;
}

} // namespace
