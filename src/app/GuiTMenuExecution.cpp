#include "app/GuiTMenuExecution.h"

#include "app/GuiProfileFile.h"
#include "app/LauncherOptions.h"
#include "job/JobDialogs.h"
#include "raw/RawLanguage.h"
#include "raw/RawShell.h"

#include <commdlg.h>

namespace AppLayer {

using JobLayer::JobDialogs;
using RawLayer::RawLanguage;
using WinLayer::WinFont;
using WinLayer::WinMenuHandle;
using WinLayer::WinRect;

namespace {

void openByAssociation(const RawString& path) {
  RawLayer::RawShell(path).execute(RawString::emptyStatic(), RawString::emptyStatic());
}

// Loaded when it is needed, as it takes longer than the rest of a start, and from the system's
// folder alone. Never freed: the next choice uses it again.
decltype(ChooseFontW)* fontDialog() {
  const HMODULE library = LoadLibraryExW(L"comdlg32.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (!library) return nullptr;
  return reinterpret_cast<decltype(ChooseFontW)*>(
      reinterpret_cast<void*>(GetProcAddress(library, "ChooseFontW")));
}

// Lets the user change the font; false when it stays as it is.
bool chooseFont(HWND owner, WinFont& font) {
  CHOOSEFONTW choice{};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = owner;
  choice.lpLogFont = &font.description;
  choice.Flags = CF_INITTOLOGFONTSTRUCT | CF_EFFECTS | CF_FORCEFONTEXIST | CF_NOVERTFONTS;
  const auto show = fontDialog();
  return show && show(&choice) != FALSE;
}

void fillSubmenu(WinMenuHandle& menu, const std::vector<GuiTitleEntry>& entries) {
  for (const GuiTitleEntry& entry : entries)
    menu.appendText(entry.id, entry.text,
                    entry.isChecked ? WinMenuHandle::Checked : WinMenuHandle::Enabled);
}

} // namespace

GuiTMenuExecution::GuiTMenuExecution(WinLayer::WinDialog& dialog)
    : WinTMenuExecution(dialog), dialog_(dialog) {
  dialog_.addHook(*this);
}

GuiTMenuExecution::~GuiTMenuExecution() {
  dialog_.removeHook(*this);
}

void GuiTMenuExecution::OnMenuOpening() {
  if (built_) return;
  built_ = true;
  help_.load(LauncherOptions::instance());
  languages_ = RawLanguage::instance().languageMap();
  UINT position = 0;
  for (const GuiTitleEntry& entry :
       GuiTitleMenu::entries(help_.documents, languages_, RawLanguage::instance().selection()))
    insertEntry(position++, entry);
}

void GuiTMenuExecution::insertEntry(UINT position, const GuiTitleEntry& entry) {
  UINT flags = MF_BYPOSITION | (entry.isEnabled ? 0U : UINT{MF_DISABLED});
  UINT_PTR item = entry.id;
  if (entry.kind == GuiTitleEntry::Separator) flags |= MF_SEPARATOR;
  if (entry.kind == GuiTitleEntry::Submenu) {
    WinMenuHandle& popup = entry.id == GuiTitleMenu::ViewHelp ? helpMenu_ : languageMenu_;
    fillSubmenu(popup, entry.entries);
    flags |= MF_POPUP;
    item = reinterpret_cast<UINT_PTR>(popup.menu());
  }
  const RawString text = entry.text.shareAs(RawLayer::EncodingWide);
  InsertMenuW(menu_, position, flags, item, WinLayer::wideUnits(text));
}

void GuiTMenuExecution::OnSystemCommand(WPARAM command) {
  const auto id = static_cast<uint32_t>(command);
  switch (id) {
  case GuiTitleMenu::Version:
    return help_.open(help_.readme);
  case GuiTitleMenu::MoveToPrimaryScreen:
    return moveToPrimaryScreen();
  case GuiTitleMenu::OpenGuiProfile:
    return openByAssociation(GuiProfileFile::instance().path);
  case GuiTitleMenu::SelectWindowFont:
    return selectFont(dialog_.font ? *dialog_.font : WinFont::window(), "WindowFont"_text);
  case GuiTitleMenu::SelectMenuFont:
    return selectFont(WinFont::menu(), "MenuFont"_text);
  case GuiTitleMenu::SelectTipFont:
    return selectFont(WinFont::tip(), "TipFont"_text);
  case GuiTitleMenu::OpenLogFolder:
    return openByAssociation(LauncherOptions::instance().logFolder);
  default:
    if (GuiTitleMenu::isLanguageId(id)) return selectLanguage(id);
    // No path for what is no help file's either.
    return help_.open(GuiTitleMenu::helpFileOf(id, help_.documents));
  }
}

void GuiTMenuExecution::moveToPrimaryScreen() {
  RECT workArea{};
  if (!SystemParametersInfoW(SPI_GETWORKAREA, 0, &workArea, 0)) return;
  const WinRect place = GuiTitleMenu::centred(dialog_.windowRect(), WinLayer::rectOf(workArea));
  MoveWindow(dialog_.window, place.left, place.top, place.width(), place.height(), TRUE);
}

void GuiTMenuExecution::selectLanguage(uint32_t id) {
  GuiProfileFile::instance().writeValue("UserSelection"_text, "Language"_text,
                                        GuiTitleMenu::languageOf(id, languages_));
  dialog_.postCode(JobDialogs::CommandRestart);
}

// The windows keep their fonts; the restart brings the new one.
void GuiTMenuExecution::selectFont(const WinFont& current, const RawString& section) {
  WinFont chosen;
  chosen.description = current.description;
  if (!chooseFont(dialog_.window, chosen)) return;
  RawParameterList parameters;
  chosen.write(parameters);
  GuiProfileFile::instance().saveSection(parameters, section);
  dialog_.postCode(JobDialogs::CommandRestart);
}

} // namespace AppLayer
