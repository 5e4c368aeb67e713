// The launcher's entries in the system menu of its window: opened by the right mouse key on a free
// place, chosen by keys, known by what they do.
#include "launcher/LauncherProcess.h"
#include "launcher/LauncherWindow.h"

#include <fstream>
#include <map>
#include <vector>

namespace {

// How many presses of the arrow lead to each entry; lines are stepped over.
enum Entry : int32_t {
  EntryVersion = 1,
  EntryHelp,
  EntryMove,
  EntryLanguage,
  EntryGuiProfile,
  EntryWindowFont,
  EntryMenuFont,
  EntryTipFont,
  EntryLogFolder,
};

constexpr const wchar_t* PlatformDialog = L"#32770";
constexpr const char* TwoLanguages =
    "[LangMap]\r\nqq=65000\r\nja=65001\r\n\r\n[qq]\r\n\r\n[ja]\r\n\r\n";
constexpr const char* Sections = "[Option]\r\nViewSelector=True\r\n[Selector:One]\r\nTitle=One\r\n"
                                 "[Button:Hello]\r\nTitle=Hello\r\n";

std::map<std::string, std::string> sectionOf(const std::string& file, const std::string& name) {
  std::map<std::string, std::string> values;
  const size_t start = file.find("[" + name + "]\r\n");
  if (start == std::string::npos) return values;
  size_t at = file.find("\r\n", start) + 2;
  for (size_t end = 0; at < file.size() && file[at] != '['; at = end + 2) {
    end = file.find("\r\n", at);
    const std::string line = file.substr(at, end - at);
    const size_t equal = line.find('=');
    if (equal != std::string::npos) values[line.substr(0, equal)] = line.substr(equal + 1);
    if (end == std::string::npos) break;
  }
  return values;
}

// Every text of the launcher, as a translator gets it.
const std::map<std::string, std::string>& englishTexts() {
  static const std::map<std::string, std::string> texts = {
      {"ButtonMenu_DeleteItems", "Delete selected buttons."},
      {"ButtonMenu_InsertSeparator", "Insert separator."},
      {"ButtonMenu_MoveDownItems", "Move down selected buttons."},
      {"ButtonMenu_MoveUpItems", "Move up selected buttons."},
      {"CommonDialog_CancelButton", "Cancel"},
      {"CommonDialog_CheckAllButton", "Check\\nAll"},
      {"CommonDialog_FinishButton", "Finish"},
      {"CommonDialog_HiddenButton", "Hidden"},
      {"CommonDialog_HintSide", "hint"},
      {"CommonDialog_InputTextPrompt", "Input text ?"},
      {"CommonDialog_OpenSide", "open"},
      {"CommonDialog_UncheckAllButton", "Clear\\nAll"},
      {"EditBar_Cancel", "Cancel edit."},
      {"EditBar_Copy", "Copy to clipboard."},
      {"EditBar_Delete", "Delete text."},
      {"EditBar_IME", "Open IME."},
      {"EditBar_InsertTab", "Insert tab code."},
      {"EditBar_Paste", "Paste from clipboard."},
      {"EditBar_Register", "Register selection."},
      {"EditBar_Select", "Select all text."},
      {"EditBar_Undo", "Undo text."},
      {"SelectorMenu_DeleteItems", "Delete selected items."},
      {"SelectorMenu_InsertSeparator", "Insert separator."},
      {"SelectorMenu_MoveDownItems", "Move down selected items."},
      {"SelectorMenu_MoveUpItems", "Move up selected items."},
      {"SelectorMenu_ReverseSortItems", "Reverse selected selected items."},
      {"SelectorMenu_SortItems", "Sort selected items."},
      {"SystemMessage_BadFormatProfile", "Bad format profile !!"},
      {"SystemMessage_CannotAccessTemp", "Cannot access temp directory (%s) !!"},
      {"TitleMenu_MoveToPrimaryScreen", "Move to primary screen."},
      {"TitleMenu_OpenGuiProfile", "Open gui profile."},
      {"TitleMenu_OpenLogFolder", "Open log folder."},
      {"TitleMenu_SelectLanguage", "Select language."},
      {"TitleMenu_SelectMenuFont", "Select menu font."},
      {"TitleMenu_SelectTipFont", "Select tip font."},
      {"TitleMenu_SelectWindowFont", "Select window font."},
      {"TitleMenu_ViewHelp", "View help."},
      {"ToolMessage_IncorrectNumberFormat", "Incorrect number format !"},
      {"ToolMessage_InvalidVariableArgument", "Invalid variable argument !"},
      {"ToolMessage_MissingTargetWindow", "Missing target window !"},
      {"ToolMessage_NoSuchCommand", "No such command !"},
      {"ToolMessage_NoSuchDefinedAction", "No such defined action !"},
      {"ToolMessage_NoSuchDefinedName", "No such defined name !"},
      {"ToolMessage_OutOfMenuScope", "Out of menu scope !"},
      {"ToolMessage_OutOfRangeNumber", "Number is out of range !"},
      {"ToolMessage_RequiredParameterIsEmpty", "Required parameter is empty !"},
      {"ToolMessage_RequiredParameterIsMissing", "Required parameter is missing !"},
      {"ToolMessage_TooFewVariableArguments", "Too few variable arguments !"},
      {"ToolMessage_TooManyVariableExpansions", "Too many variable expansions !"},
      {"ToolMessage_UnbalancedSectionBlocks", "Unbalanced section blocks !"},
      {"ToolMessage_UnbalancedVariableBlock", "Unbalanced variable block !"},
      {"ToolMessage_UnexpectedParameter", "Unexpected parameter !"},
      {"ToolMessage_UserAborted", "User aborted !"},
      {"ToolMessage_VariableNameIsMissing", "Variable name is missing !"},
  };
  return texts;
}

constexpr const char* StoredPlace = "[MainDialog]\r\nWindowRect_L=40\r\nWindowRect_T=50\r\n";

// A file type that one program opens, for as long as this lives.
class FileType {
 public:
  FileType(const std::wstring& extension, const std::string& program) : extension_(extension) {
    set(extension_, Name);
    set(std::wstring(Name) + L"\\shell\\open\\command", L"\"" + wideOf(program) + L"\" \"%1\"");
  }
  ~FileType() {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, extension_.c_str());
    RegDeleteTreeW(HKEY_CLASSES_ROOT, Name);
  }
  FileType(const FileType&) = delete;
  FileType& operator=(const FileType&) = delete;

 private:
  static constexpr const wchar_t* Name = L"TarvellonCheck";
  static void set(const std::wstring& key, const std::wstring& value) {
    EXPECT_EQ(RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, value.c_str(),
                              static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
  }
  std::wstring extension_;
};

struct TitleSearch {
  const wchar_t* part;
  HWND found;
};

BOOL CALLBACK compareTitle(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<TitleSearch*>(parameter);
  wchar_t title[300] = {};
  if (IsWindowVisible(window)) InternalGetWindowText(window, title, 299);
  if (std::wstring(title).find(search.part) != std::wstring::npos) search.found = window;
  return search.found ? FALSE : TRUE;
}

HWND windowWithTitle(const wchar_t* part) {
  TitleSearch search{part, nullptr};
  EnumWindows(compareTitle, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

class TitleMenu : public ::testing::Test {
 protected:
  bool openWith(const std::string& sections, const std::string& languages = {}) {
    launcher.configure(sections);
    if (!languages.empty()) launcher.run.writeFile("LanguageFile.ini", languages);
    return launcher.open();
  }
  HWND openMenu() {
    if (!launcher.bringToFront()) return nullptr;
    std::vector<HWND> menus;
    const auto isOpen = [&] {
      menus = launcher.visibleWindows(LauncherWindow::MenuClass);
      return !menus.empty();
    };
    // A window that has only just come to the front may miss a press.
    for (int32_t attempt = 0; attempt < 5 && menus.empty(); ++attempt) {
      LauncherWindow::rightPress(launcher.window(), 5, 6);
      WindowTest::pumpUntil(isOpen, WindowTest::Limit / 10);
    }
    return menus.empty() ? nullptr : menus.front();
  }
  void choose(Entry entry) {
    const HWND menu = openMenu();
    ASSERT_NE(menu, nullptr);
    for (int32_t i = 0; i < entry; ++i) WindowTest::pressKey(VK_DOWN);
    WindowTest::pressKey(VK_RETURN);
    ASSERT_TRUE(launcher.waitUntilGone(menu));
  }
  // The automatic one is language 0. By the mouse: keys get lost while the second menu comes up.
  void chooseLanguage(int32_t number, int32_t count) {
    HWND menu = nullptr;
    HWND languages = nullptr;
    const auto isOpen = [&] {
      for (HWND found : launcher.visibleWindows(LauncherWindow::MenuClass))
        if (found != menu) languages = found;
      return languages != nullptr;
    };
    // A menu that has only just come may miss a key: then once more from the start.
    for (int32_t attempt = 0; attempt < 5 && !languages; ++attempt) {
      if (menu) widthOf(menu);
      menu = openMenu();
      ASSERT_NE(menu, nullptr);
      for (int32_t i = 0; i < EntryLanguage; ++i) WindowTest::pressKey(VK_DOWN);
      WindowTest::pressKey(VK_RIGHT);
      WindowTest::pumpUntil(isOpen, WindowTest::Limit / 10);
    }
    ASSERT_NE(languages, nullptr);
    ASSERT_TRUE(launcher.settle());
    const SIZE size = LauncherWindow::clientSize(languages);
    const auto isGone = [menu] { return !IsWindow(menu) || !IsWindowVisible(menu); };
    // As a user would: once more while the menu is still there.
    for (int32_t attempt = 0; attempt < 5 && !isGone(); ++attempt) {
      LauncherWindow::press(languages, size.cx / 2, size.cy * (2 * number + 1) / (2 * count));
      WindowTest::pumpUntil(isGone, WindowTest::Limit / 10);
    }
    ASSERT_TRUE(launcher.waitUntilGone(menu));
  }
  // Of an open menu, which is closed then; 0 for none.
  LONG widthOf(HWND menu) {
    if (!menu) return 0;
    const RECT area = LauncherWindow::screenRect(menu);
    WindowTest::pressKey(VK_ESCAPE);
    EXPECT_TRUE(launcher.waitUntilGone(menu));
    return area.right - area.left;
  }
  // A viewer beside the program that tells by its command line what it shows: the launcher again.
  void installViewer() {
    std::error_code error;
    std::filesystem::copy_file(launcher.run.path("Tarvellon.exe"), launcher.run.path("Zenvik.exe"),
                               error);
    ASSERT_FALSE(error);
    launcher.run.writeFile("Zenvik.ini", "[Common]\r\nProgram=Tarvellon\r\n");
  }
  // The launcher is gone behind it.
  void expectViewed(Entry entry, const std::string& name) {
    HANDLE first = nullptr;
    ASSERT_TRUE(DuplicateHandle(GetCurrentProcess(), launcher.process(), GetCurrentProcess(),
                                &first, 0, FALSE, DUPLICATE_SAME_ACCESS));
    choose(entry);
    const bool isShown = launcher.takeSuccessor();
    EXPECT_EQ(WaitForSingleObject(first, 0), static_cast<DWORD>(WAIT_TIMEOUT)) << "nobody waits";
    TerminateProcess(first, 0);
    WaitForSingleObject(first, WindowTest::Limit);
    CloseHandle(first);
    ASSERT_TRUE(isShown);
    const std::string line = commandLineOf(launcher.process());
    EXPECT_NE(line.find("Zenvik.exe"), std::string::npos) << line;
    EXPECT_NE(line.find("\"" + launcher.run.path(name) + "\""), std::string::npos) << line;
  }
  // The old process has ended, and a new one has come.
  ::testing::AssertionResult restarts() {
    const DWORD before = launcher.processId();
    if (!launcher.waitForEnd()) return ::testing::AssertionFailure() << "the old one runs still";
    if (!launcher.takeSuccessor()) return ::testing::AssertionFailure() << "no new one";
    return launcher.processId() != before ? ::testing::AssertionSuccess()
                                          : ::testing::AssertionFailure() << "the same process";
  }
  [[nodiscard]] std::map<std::string, std::string> stored(const std::string& section) const {
    return sectionOf(launcher.configuration(), section);
  }

  LauncherWindow launcher;
};

} // namespace

// --- The menu

TEST_F(TitleMenu, OpensByTheRightKeyOnAFreePlaceAndClosesByEscape) {
  ASSERT_TRUE(openWith(Sections));
  const HWND menu = openMenu();
  ASSERT_NE(menu, nullptr);
  WindowTest::pressKey(VK_ESCAPE);
  EXPECT_TRUE(launcher.waitUntilGone(menu));
  EXPECT_TRUE(launcher.settle());
  EXPECT_TRUE(launcher.isRunning());
}

TEST_F(TitleMenu, MovesTheWindowToTheMiddleOfThePrimaryScreen) {
  ASSERT_TRUE(openWith(std::string(StoredPlace) + Sections));
  const std::string configured = launcher.configuration();
  const RECT before = LauncherWindow::screenRect(launcher.window());
  ASSERT_EQ(before.left, 40);
  choose(EntryMove);
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  const LONG width = before.right - before.left;
  const LONG height = before.bottom - before.top;
  EXPECT_TRUE(waitUntil([&] {
    const RECT now = LauncherWindow::screenRect(launcher.window());
    return now.left == area.left + (area.right - area.left - width) / 2 &&
           now.top == area.top + (area.bottom - area.top - height) / 2 &&
           now.right - now.left == width && now.bottom - now.top == height;
  }));
  EXPECT_EQ(launcher.configuration(), configured) << "a move alone writes nothing";
}

// --- Language

TEST_F(TitleMenu, AChosenLanguageIsStoredAndComesWithANewProcess) {
  ASSERT_TRUE(openWith(Sections, TwoLanguages));
  chooseLanguage(2, 3);
  ASSERT_TRUE(restarts());
  EXPECT_EQ(stored("UserSelection")["Language"], "ja");
  EXPECT_EQ(stored("Language").size(), 0U);
  // The same again restarts as well.
  chooseLanguage(2, 3);
  ASSERT_TRUE(restarts());
  EXPECT_EQ(stored("UserSelection")["Language"], "ja");
  // And the automatic one.
  chooseLanguage(0, 3);
  ASSERT_TRUE(restarts());
  const auto selection = stored("UserSelection");
  ASSERT_EQ(selection.count("Language"), 1U);
  EXPECT_EQ(selection.at("Language"), "");
}

TEST_F(TitleMenu, WithOneLanguageThereIsNothingToChoose) {
  ASSERT_TRUE(
      openWith(std::string(StoredPlace) + Sections, "[LangMap]\r\nja=65001\r\n\r\n[ja]\r\n\r\n"));
  const HWND menu = openMenu();
  ASSERT_NE(menu, nullptr);
  for (int32_t i = 0; i < EntryLanguage; ++i) WindowTest::pressKey(VK_DOWN);
  WindowTest::pressKey(VK_RIGHT);
  WindowTest::pressKey(VK_RETURN); // of an entry that is disabled
  WindowTest::pressKey(VK_ESCAPE);
  ASSERT_TRUE(launcher.waitUntilGone(menu));
  ASSERT_TRUE(launcher.settle());
  // A later command has been served, so the first one would have been.
  choose(EntryMove);
  ASSERT_TRUE(
      waitUntil([this] { return LauncherWindow::screenRect(launcher.window()).left > 40; }));
  EXPECT_TRUE(launcher.isRunning());
  EXPECT_TRUE(stored("UserSelection").empty());
}

TEST_F(TitleMenu, AFreshSectionOfTheLanguageFileHoldsEveryText) {
  launcher.run.writeFile("LanguageFile.ini", "");
  launcher.run.writeFile(
      "Tarvellon.ini", std::string("[Common]\r\nProgram=Tarvellon\r\nLanguage=xx\r\n") + Sections);
  ASSERT_TRUE(launcher.open());
  EXPECT_EQ(sectionOf(launcher.run.readFile("LanguageFile.ini"), "xx"), englishTexts());
  ASSERT_TRUE(launcher.close());
  EXPECT_EQ(sectionOf(launcher.run.readFile("LanguageFile.ini"), "xx"), englishTexts());
}

TEST_F(TitleMenu, TheLanguageFileBesideTheProgramIsComplete) {
  std::ifstream stream(TARVELLON_LANGUAGES, std::ios::binary);
  const std::string file{std::istreambuf_iterator<char>(stream), {}};
  EXPECT_EQ(sectionOf(file, "LangMap"),
            (std::map<std::string, std::string>{{"en", "1033"}, {"ja", "1041"}}));
  EXPECT_EQ(sectionOf(file, "en"), englishTexts());
  const auto japanese = sectionOf(file, "ja");
  EXPECT_EQ(japanese.size(), englishTexts().size());
  for (const auto& [key, text] : englishTexts()) {
    const auto found = japanese.find(key);
    ASSERT_NE(found, japanese.end()) << key;
    EXPECT_FALSE(found->second.empty()) << key;
    EXPECT_NE(found->second, text) << key;
    EXPECT_EQ(found->second.find("%s") != std::string::npos, text.find("%s") != std::string::npos);
  }
  // Nothing is missing, so nothing is written.
  launcher.run.writeFile("LanguageFile.ini", file);
  launcher.run.writeFile(
      "Tarvellon.ini", std::string("[Common]\r\nProgram=Tarvellon\r\nLanguage=ja\r\n") + Sections);
  ASSERT_TRUE(launcher.open());
  const HWND menu = openMenu();
  ASSERT_NE(menu, nullptr);
  WindowTest::pressKey(VK_ESCAPE);
  ASSERT_TRUE(launcher.waitUntilGone(menu));
  ASSERT_TRUE(launcher.close());
  EXPECT_EQ(launcher.run.readFile("LanguageFile.ini"), file);
}

// Each of the three menus is as wide as its texts, so a longer one shows from outside.
TEST_F(TitleMenu, TheLanguageFileChangesTheTextsOfAllMenus) {
  const std::string longer(60, 'W');
  std::vector<LONG> widths;
  for (const bool isLonger : {false, true}) {
    std::string texts = "[Default]\r\n";
    if (isLonger)
      for (const char* key :
           {"TitleMenu_ViewHelp", "ButtonMenu_InsertSeparator", "SelectorMenu_InsertSeparator"})
        texts += std::string(key) + "=" + longer + "\r\n";
    ASSERT_TRUE(openWith(Sections, "[LangMap]\r\nqq=65000\r\n\r\n" + texts));
    widths.push_back(widthOf(openMenu()));
    for (const HWND box : {launcher.selectors(), launcher.buttons()}) {
      // The selector has run at the start once. A press right after a menu may get lost.
      const bool isButton = box == launcher.buttons();
      const auto hasRun = [&] {
        return isButton ? launcher.countInLog("|$ (Button)Hello\r\n") >= 1
                        : launcher.countInLog("|$ (Selector)One\r\n") >= 2;
      };
      for (int32_t attempt = 0; attempt < 5 && !hasRun(); ++attempt) {
        LauncherWindow::press(box, 5, 8);
        WindowTest::pumpUntil(hasRun, WindowTest::Limit / 10);
      }
      ASSERT_TRUE(hasRun());
      ASSERT_TRUE(launcher.settle());
      WindowTest::pressKey(VK_RIGHT);
      widths.push_back(widthOf(launcher.waitForClass(LauncherWindow::MenuClass)));
    }
    ASSERT_TRUE(launcher.close());
  }
  ASSERT_EQ(widths.size(), 6U);
  for (size_t menu = 0; menu < 3; ++menu) {
    EXPECT_GT(widths[menu], 0);
    EXPECT_GT(widths[menu + 3], widths[menu] + 100) << menu;
  }
}

// --- Fonts

TEST_F(TitleMenu, ACancelledFontChangesNothing) {
  ASSERT_TRUE(openWith(Sections));
  const std::string before = launcher.configuration();
  for (const Entry entry : {EntryWindowFont, EntryMenuFont, EntryTipFont}) {
    choose(entry);
    const HWND dialog = launcher.waitForClass(PlatformDialog);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), launcher.window());
    WindowTest::pressKey(VK_ESCAPE);
    ASSERT_TRUE(launcher.waitUntilGone(dialog));
    ASSERT_TRUE(launcher.settle());
  }
  EXPECT_EQ(launcher.configuration(), before);
  EXPECT_TRUE(launcher.isRunning());
}

TEST_F(TitleMenu, AChosenFontIsStoredInASectionOfItsOwnAndRestarts) {
  const std::map<Entry, std::string> sections = {
      {EntryWindowFont, "WindowFont"}, {EntryMenuFont, "MenuFont"}, {EntryTipFont, "TipFont"}};
  ASSERT_TRUE(openWith(Sections));
  for (const auto& [entry, section] : sections) {
    ASSERT_TRUE(stored(section).empty());
    choose(entry);
    const HWND dialog = launcher.waitForClass(PlatformDialog);
    ASSERT_NE(dialog, nullptr);
    WindowTest::pressKey(VK_RETURN);
    ASSERT_TRUE(restarts());
    const auto font = stored(section);
    EXPECT_EQ(font.size(), 14U) << launcher.configuration();
    for (const char* key : {"Height", "Width", "Escapement", "Orientation", "Weight", "Italic",
                            "Underline", "StrikeOut", "Charset", "OutPrecision", "ClipPrecision",
                            "Quality", "PitchFamily", "FaceName"})
      EXPECT_EQ(font.count(key), 1U) << key;
  }
}

// --- Documents and folders

TEST_F(TitleMenu, TheVersionLineShowsTheReadmeEvenWithoutAHelpFile) {
  installViewer();
  launcher.run.writeFile("ReadMe_Tarvellon.txt", "");
  ASSERT_TRUE(openWith(std::string("[Manual]\r\nManual=*.none\r\n") + Sections));
  expectViewed(EntryVersion, "ReadMe_Tarvellon.txt");
}

TEST_F(TitleMenu, HelpShowsTheOnlyHelpFile) {
  installViewer();
  launcher.run.writeFile("ReadMe_Book.md", "");
  ASSERT_TRUE(openWith(Sections));
  expectViewed(EntryHelp, "ReadMe_Book.md");
}

TEST_F(TitleMenu, TheGuiProfileOpensByItsAssociation) {
  installViewer();
  launcher.run.writeFile("Look.tarvelloncheck", "[WindowParameter]\r\nMargin=4\r\n");
  const FileType type(L".tarvelloncheck", launcher.run.path("Zenvik.exe"));
  launcher.run.writeFile(
      "Tarvellon.ini",
      std::string("[Common]\r\nProgram=Tarvellon\r\nGuiProfile=Look.tarvelloncheck\r\n") +
          Sections);
  ASSERT_TRUE(launcher.open());
  expectViewed(EntryGuiProfile, "Look.tarvelloncheck");
}

TEST_F(TitleMenu, TheLogFolderOpens) {
  ASSERT_TRUE(openWith("[Option]\r\nLogFolder=Diary_of_this_check\r\n[Button:A]\r\n"));
  choose(EntryLogFolder);
  HWND folder = nullptr;
  EXPECT_TRUE(waitUntil([&] {
    folder = windowWithTitle(L"Diary_of_this_check");
    return folder != nullptr;
  }));
  if (folder) PostMessageW(folder, WM_CLOSE, 0, 0);
  EXPECT_TRUE(waitUntil([] { return !windowWithTitle(L"Diary_of_this_check"); }));
}
