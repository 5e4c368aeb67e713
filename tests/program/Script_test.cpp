// Scripts that reach the outside, run by the real program: programs started, folders opened, the
// clipboard, windows, files and processes.
#include "program/ProgramRun.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
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
  EXPECT_EQ(runLines(program, "Define {\nRoot=" + base +
                                  "\n}\n"
                                  "If {\nCondition=$(&&:$(IsFile:$(Root)\\sub*\\b.*):"
                                  "$(Equal:$(FileCount:$(Root)\\sub?\\*.TXT):2):"
                                  "$(Equal:$(FolderCount:$(Root)\\sub1\\*):1):"
                                  "$(IsMissing:$(File:$(Root)\\none*\\x)):"
                                  "$(Equal:$(BodyEx:$(File:$(Root)\\s*\\*.log)):c.log))\n}\n"
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

// A script whose report a user sees.
struct Report {
  const char* lines;
  const char* text;
  uint32_t code = 1;
};

TEST(Script, EveryFaultShowsItsReportOnce) {
  const Report reports[] = {
      {"Foo\nBar\n", "No such command !\r\n  [command] Foo"},
      {"action {\nName=A\n}\n", "No such command !\r\n  [command] action"},
      {"If\n", "Required parameter is missing !\r\n  [command] Condition\r\n  [value] If"},
      {"While\n", "Required parameter is missing !\r\n  [command] While\r\n"
                  "  [parameter] Condition"},
      {"While {\nCondition=$(None)\n}\n", "Required parameter is empty !\r\n  [command] While\r\n"
                                          "  [parameter] Condition\r\n  [value] $(None)"},
      {"For {\nBegin=x\nEnd=1\nAdd=1\n}\n", "Incorrect number format !\r\n  [command] For\r\n"
                                            "  [parameter] Begin\r\n  [value] x"},
      {"For {\nBegin=0\nEnd=1\nAdd=x\n}\n", "Incorrect number format !\r\n  [command] For\r\n"
                                            "  [parameter] Add\r\n  [value] x"},
      {"Foreach\n", "Required parameter is missing !\r\n  [command] Foreach\r\n"
                    "  [parameter] Parameter"},
      {"Action\n", "Required parameter is missing !\r\n  [command] Action\r\n  [parameter] Name"},
      {"Action {\nName=$(None)\n}\n", "Required parameter is empty !\r\n  [command] Action\r\n"
                                      "  [parameter] Name\r\n  [value] $(None)"},
      {"Action {\nName=a\n}\n", "No such defined action !\r\n  [command] Action\r\n"
                                "  [parameter] Name\r\n  [value] a"},
      {"Expand {\nN=$(\nDefine\n}\n", "Unbalanced variable block !\r\n  [value] $("},
      {"Expand {\nFoo\n}\n", "No such command !\r\n  [command] Foo"},
      {"OpenFile\n", "Required parameter is missing !\r\n  [command] Parameter\r\n"
                     "  [value] OpenFile"},
      {"OpenFolder\n", "Required parameter is missing !\r\n  [command] OpenFolder\r\n"
                       "  [parameter] Parameter"},
      {"ToClipboard {\nParameter=$(None)\n}\n",
       "Required parameter is empty !\r\n  [command] ToClipboard\r\n  [parameter] Parameter\r\n"
       "  [value] $(None)"},
      {"AskMessage\n", "Required parameter is missing !\r\n  [command] AskMessage\r\n"
                       "  [parameter] Parameter"},
      {"PutMessage\n", "Required parameter is missing !\r\n  [command] Parameter\r\n"
                       "  [value] PutMessage"},
      {"Pickup\n", "Required parameter is missing !\r\n  [command] Parameter\r\n  [value] Pickup"},
      {"InputText {\n0:Variable=$(\n}\n", "Unbalanced variable block !\r\n  [value] $("},
      {"MenuItem\n", "Out of menu scope !\r\n  [command] MenuItem"},
      {"Separator\n", "Out of menu scope !\r\n  [command] Separator"},
      {"If {\nCondition=$()\n}\n", "Variable name is missing !\r\n  [value] $()"},
      {"Define {\nx=$(x)\n}\nIf {\nCondition=$(x)\n}\n",
       "Too many variable expansions !\r\n  [value] $(x)"},
      {"If {\nCondition=$(<:1:b)\n}\n",
       "Incorrect number format !\r\n  [variable] <\r\n"
       "  [value] b\r\n  [script] $(<:1:b)",
       0},
      {"If {\nCondition=$(Before:abc:-1)\n}\n",
       "Number is out of range !\r\n  [variable] Before\r\n"
       "  [value] -1\r\n  [script] $(Before:abc:-1)",
       0},
      {"If {\nCondition=$(Path:Bad)\n}\n",
       "Invalid variable argument !\r\n  [variable] Path\r\n  [value] Bad", 0},
      {"If {\nCondition=$(Cond:False:a)\n}\n",
       "Too few variable arguments !\r\n  [variable] Cond\r\n"
       "  [value] $(Cond:False:a)",
       0},
  };
  for (const Report& report : reports) {
    ProgramRun program;
    EXPECT_EQ(runLines(program, report.lines), report.code) << report.lines;
    ASSERT_EQ(program.dialogs().size(), 1u) << report.lines;
    EXPECT_EQ(program.dialogs()[0].caption, "Tarvellon");
    EXPECT_EQ(program.dialogs()[0].text, report.text) << report.lines;
  }
}

TEST(Script, EveryFunctionAnswers) {
  ProgramRun program;
  program.folder().makeFolder("sub");
  program.writeFile("sub/one.txt", "");
  const std::pair<const char*, const char*> calls[] = {
      {"$(Not:False)", "True"},
      {"$(Equal:a:A)", "False"},
      {"$(EqualNoCase:a:A)", "True"},
      {"$(<:-1:1)", "True"},
      {"$(>:4294967296:1)", "True"},
      {"$(<=:2:2)", "True"},
      {"$(>=:1:2)", "False"},
      {"$(==:01:1)", "True"},
      {"$(!=:01:1)", "False"},
      {"$(&&:a:False:b)", "False"},
      {"$(||:False:a)", "True"},
      {"$(Calc:1-2*3-4)", "-9"},
      {"$(Length:abc)", "3"},
      {"$(Body:$(Sub)\\one.txt)", "one"},
      {"$(BodyEx:$(Sub)\\one.txt)", "one.txt"},
      {"$(Equal:$(Base:$(Sub)\\one.txt):$(Sub))", "True"},
      {"$(Extension:$(Sub)\\one.txt)", "txt"},
      {"$(Before:abc:2)", "ab"},
      {"$(After:abc:2)", "c"},
      {"$(Code:65)", "A"},
      {"$(IsMissing:$(File:$(Sub)\\none))", "True"},
      {"$(Equal:$(Path:ConfigFile):$(Base:$(Path:Launcher))\\Tarvellon.ini)", "True"},
      {"$(IsFile:$(Sub)\\o*)", "True"},
      {"$(IsFolder:$(Sub))", "True"},
      {"$(IsProcess:TARVELLON.exe)", "True"},
      {"$(IsWindow:no such window)", "False"},
      {"$(BodyEx:$(File:$(Sub)\\o*))", "one.txt"},
      {"$(FileCount:$(Sub)\\*.TXT)", "1"},
      {"$(BodyEx:$(Folder:$(Sub)))", "sub"},
      {"$(FolderCount:$(Base:$(Sub))\\s?b)", "1"},
      {"$(Process:tarvellon.*)", "Tarvellon.exe"},
      {"$(Window:no such window)", "none"},
      {"$(IsDefined:Sub)", "True"},
      {"$(Cond:0:a:b)", "a"},
      {"$(CondDef:None:a:b)", "b"},
      {"$(IsKey:LButton)", "True"},
      {"$(StripQuote:\"\"a\"b\"\")", "a\"b"},
      {"$(Replace:aab:ab:b)", "b"},
      {"$(Clipboard)", "clip"},
      {"$(KeyState)", "LButton"},
  };
  std::string lines = "Define {\nMissing=none\nSub=" + program.path("sub") +
                      "\n}\nToClipboard {\nParameter=clip\n}\n";
  for (const auto& [call, expected] : calls)
    lines += std::string("If {\nCondition=$(Not:$(Equal:") + call + ":" + expected +
             "))\nPutMessage {\nParameter=" + call + "\n}\nAbortExecution\n}\n";
  std::string button = action(lines);
  button.replace(0, button.find("\r\n"), "[Button:B]");
  program.writeProfile(button);
  EXPECT_EQ(program.run("-l B"), 0u);
  EXPECT_TRUE(program.logHas("|$ $(KeyState)\r\n"));
  for (const ProgramDialog& dialog : program.dialogs()) ADD_FAILURE() << dialog.text;
}

TEST(Script, LoopsActionsAndRewritesRunAsWritten) {
  ProgramRun program;
  program.writeProfile("[Action:Say]\r\nDefine {\r\nSaid=$(Who) $(Each)\r\n}\r\n" +
                       action("Foreach {\nParameter=x,\"y,z\"\nAction {\nName=Say\nWho=I\n}\n}\n"
                              "For {\nBegin=1\nEnd=3\nAdd=1\nBreak\n}\n"
                              "While {\nCondition=True\nBreak\n}\n"
                              "Pickup {\nParameter=k\nk=$(Said)!\n}\n"
                              "Expand {\nN=$(Pickup)\nDefine {\nAll=$(N)$(Counter)\n}\n}\n"
                              "If {\nCondition=$(Not:$(Equal:$(All):I y,z!1))\n"
                              "PutMessage {\nParameter=$(All)\n}\nAbortExecution\n}\n"));
  EXPECT_EQ(program.run("-a A"), 0u);
  for (const ProgramDialog& dialog : program.dialogs()) ADD_FAILURE() << dialog.text;
}

TEST(Script, OpenFileGoesByTheAssociation) {
  ProgramRun program;
  program.writeFile("make.bat", "@echo x>\"%~dp0made.txt\"\r\n");
  EXPECT_EQ(runLines(program, "OpenFile {\nParameter=" + program.path("make.bat") + "\n}\n"), 0u);
  EXPECT_TRUE(waitForFile(program, "made.txt"));
  EXPECT_EQ(runLines(program, "OpenFile {\nParameter=" + program.path("gone.bat") + "\n}\n"), 1u);
  EXPECT_TRUE(program.dialogs().empty());
}

// Nobody would answer the box that the platform shows for a crash.
void showNoCrashDialogs() {
  SetErrorMode(SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS); // children have it, too
  const HMODULE library = GetModuleHandleW(L"ntdll.dll");
  if (!GetProcAddress(library, "wine_get_version")) return;
  // Wine has a debugger of its own, with a switch of its own.
  const DWORD off = 0;
  RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\Wine\\WineDbg", L"ShowCrashDialog", REG_DWORD,
                  &off, sizeof off);
}

// Dies like a program whose thread jumps to nowhere, while its message waits for an answer.
TEST(Script, ACrashLeavesADumpInTheTemporaryFolder) {
  showNoCrashDialogs();
  ProgramRun program;
  program.writeProfile(action("PutMessage {\nParameter=x\n}\n"));
  HANDLE process = program.start("-a A");
  ASSERT_NE(process, nullptr);
  for (int i = 0; i < 500 && !program.logHas("#Error"); ++i) Sleep(20);
  ASSERT_TRUE(program.logHas("#Error"));
  const auto nowhere = reinterpret_cast<LPTHREAD_START_ROUTINE>(1);
  HANDLE thread = CreateRemoteThread(process, nullptr, 0, nowhere, nullptr, 0, nullptr);
  ASSERT_NE(thread, nullptr);
  EXPECT_EQ(WaitForSingleObject(process, 180000), WAIT_OBJECT_0);
  DWORD code = 0;
  GetExitCodeProcess(process, &code);
  EXPECT_EQ(code, 0xC0000005);
  TerminateProcess(process, 1);
  CloseHandle(thread);
  CloseHandle(process);

  std::vector<std::string> dumps;
  std::error_code error;
  const std::filesystem::path folder(wideOf(program.path("Temp\\Dump")));
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    dumps.push_back(utf8Of(entry.path().filename().wstring()));
  ASSERT_EQ(dumps.size(), 1u);
  const std::regex form("Tarvellon_Dump_[0-9]{8}_[0-9]{6}_[0-9]{3}\\.dmp");
  EXPECT_TRUE(std::regex_match(dumps[0], form)) << dumps[0];
  std::ifstream dump(folder / wideOf(dumps[0]), std::ios::binary);
  char mark[4] = {};
  dump.read(mark, sizeof mark);
  EXPECT_EQ(std::string(mark, sizeof mark), "MDMP");
}

} // namespace
