// The launcher's entries in the system menu of a window, read back as the platform has them.
#include "app/GuiTMenuExecution.h"
#include "app/GuiTitleMenu.h"
#include "app/LauncherOptions.h"
#include "raw/RawLanguage.h"

#include "TestFolder.h"
#include "TestText.h"
#include "window/WindowTest.h"

using namespace AppLayer;
using RawLayer::RawLanguage;

namespace {

class MenuDialog : public WinLayer::WinDialog {
 public:
  MenuDialog() : titleMenu(*this) {
    className = raw("TitleMenuTest");
    style = WS_POPUP | WS_SYSMENU;
    rect = {100, 100, 300, 200};
  }
  GuiTMenuExecution titleMenu;
};

class GuiTitleMenuWindow : public WindowTest::Fixture {
 protected:
  void SetUp() override {
    Fixture::SetUp();
    RawLanguage::instance().setSelection(RawString());
  }
  void TearDown() override {
    dialog.reset();
    // The other tests have the built-in texts.
    RawLanguage::instance().setPath(folder.write("none.ini", "[Default]\r\n"));
    RawLanguage::instance().setSelection(RawString());
    RawLanguage::instance().loadMap();
    RawLanguage::instance().loadSection();
    RawLanguage::instance().setPath(RawString());
    Fixture::TearDown();
  }
  void speak(const std::string& file, const std::string& selection) const {
    RawLanguage& language = RawLanguage::instance();
    language.setPath(folder.write("LanguageFile.ini", file));
    language.setSelection(raw(selection));
    language.loadMap();
    language.loadSection();
  }
  // With so many manuals.
  HMENU openWith(int32_t manuals) {
    folder.makeFolder("Docs");
    for (int32_t i = 0; i < manuals; ++i)
      folder.write("Docs/Book" + std::to_string(10 + i) + ".man", "");
    LauncherOptions& options = LauncherOptions::instance();
    options.path = options.readPath = folder.write(
        "options.ini", "[Manual]\r\nManual=" + bytesOf(folder.file("Docs")) + "\\*.man\r\n");
    dialog = std::make_unique<MenuDialog>();
    dialog->Create();
    return opened();
  }
  [[nodiscard]] HMENU opened() const {
    const HMENU menu = GetSystemMenu(dialog->window, FALSE);
    SendMessageW(dialog->window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu),
                 MAKELPARAM(0, TRUE));
    return menu;
  }
  static std::wstring textAt(HMENU menu, int position) {
    wchar_t text[200] = {};
    GetMenuStringW(menu, static_cast<UINT>(position), text, 199, MF_BYPOSITION);
    return text;
  }
  static UINT stateAt(HMENU menu, int position) {
    return GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION);
  }
  static bool isEnabled(HMENU menu, int position) {
    return (stateAt(menu, position) & (MF_DISABLED | MF_GRAYED)) == 0;
  }
  static void expectEntry(HMENU menu, int position, UINT id, const wchar_t* text) {
    EXPECT_EQ(GetMenuItemID(menu, position), id);
    EXPECT_EQ(textAt(menu, position), text);
  }

  TestFolder folder;
  std::unique_ptr<MenuDialog> dialog;
};

constexpr const char* Languages = "[LangMap]\r\nen=65000\r\nja=65001\r\n\r\n"
                                  "[ja]\r\nTitleMenu_ViewHelp=\xE8\xAA\xAC\xE6\x98\x8E\r\n";

} // namespace

TEST_F(GuiTitleMenuWindow, EntriesStandAboveThoseOfThePlatform) {
  const HMENU menu = openWith(1);
  expectEntry(menu, 0, 0x100C, L"Version 1.37.2024.0907");
  expectEntry(menu, 2, 0x100D, L"View help.");
  expectEntry(menu, 3, 0x100E, L"Move to primary screen.");
  expectEntry(menu, 5, 0x1033, L"Select language.");
  expectEntry(menu, 6, 0x100F, L"Open gui profile.");
  expectEntry(menu, 7, 0x1010, L"Select window font.");
  expectEntry(menu, 8, 0x1011, L"Select menu font.");
  expectEntry(menu, 9, 0x1012, L"Select tip font.");
  expectEntry(menu, 10, 0x1013, L"Open log folder.");
  for (const int line : {1, 4, 11}) EXPECT_TRUE(stateAt(menu, line) & MF_SEPARATOR) << line;
  for (const int entry : {0, 2, 3, 6, 7, 8, 9, 10}) EXPECT_TRUE(isEnabled(menu, entry)) << entry;
  EXPECT_FALSE(isEnabled(menu, 5)) << "no language to choose";
  bool hasClose = false;
  for (int i = 12; i < GetMenuItemCount(menu); ++i)
    hasClose = hasClose || GetMenuItemID(menu, i) == SC_CLOSE;
  EXPECT_TRUE(hasClose);
}

TEST_F(GuiTitleMenuWindow, IsBuiltOnce) {
  const int count = GetMenuItemCount(openWith(0));
  EXPECT_GT(count, 12);
  EXPECT_EQ(GetMenuItemCount(opened()), count);
}

TEST_F(GuiTitleMenuWindow, WithoutAManualHelpIsDisabledAndTheVersionIsNot) {
  const HMENU menu = openWith(0);
  expectEntry(menu, 2, 0x100D, L"View help.");
  EXPECT_FALSE(isEnabled(menu, 2));
  EXPECT_TRUE(isEnabled(menu, 0));
}

TEST_F(GuiTitleMenuWindow, OfManyManualsThePopupHoldsTheFirstThirty) {
  const HMENU popup = GetSubMenu(openWith(31), 2);
  ASSERT_NE(popup, nullptr);
  ASSERT_EQ(GetMenuItemCount(popup), 30);
  expectEntry(popup, 0, 0x1014, L"Book10.man");
  expectEntry(popup, 29, 0x1031, L"Book39.man");
}

TEST_F(GuiTitleMenuWindow, OneLanguageIsNoChoice) {
  speak("[LangMap]\r\nja=65001\r\n\r\n[ja]\r\nX=y\r\n", "ja");
  const HMENU menu = openWith(0);
  expectEntry(menu, 5, 0x1033, L"Select language.");
  EXPECT_FALSE(isEnabled(menu, 5));
}

TEST_F(GuiTitleMenuWindow, TheUsersLanguageIsCheckedAndTranslatesTheTexts) {
  speak(Languages, "ja");
  const HMENU menu = openWith(1);
  expectEntry(menu, 2, 0x100D, L"\x8AAC\x660E");
  const HMENU popup = GetSubMenu(menu, 5);
  ASSERT_NE(popup, nullptr);
  ASSERT_EQ(GetMenuItemCount(popup), 3);
  expectEntry(popup, 0, 0x1033, L"(Auto)");
  expectEntry(popup, 1, 0x1034, L"en");
  expectEntry(popup, 2, 0x1035, L"ja");
  EXPECT_FALSE(stateAt(popup, 0) & MF_CHECKED);
  EXPECT_FALSE(stateAt(popup, 1) & MF_CHECKED);
  EXPECT_TRUE(stateAt(popup, 2) & MF_CHECKED);
}

TEST_F(GuiTitleMenuWindow, WithoutAChoiceTheAutomaticOneIsChecked) {
  speak(Languages, "");
  const HMENU popup = GetSubMenu(openWith(0), 5);
  ASSERT_NE(popup, nullptr);
  EXPECT_TRUE(stateAt(popup, 0) & MF_CHECKED);
  EXPECT_FALSE(stateAt(popup, 2) & MF_CHECKED);
}
