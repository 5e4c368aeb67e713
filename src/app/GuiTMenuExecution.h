// GuiTMenuExecution: the launcher's entries in the system menu of its main dialog: version, help,
// moving to the primary screen, language, gui profile, fonts and log folder. The entries are put in
// once, at the first opening, and stay. Language and fonts are written to the gui profile and take
// effect by a restart, which the dialog is told to make.
//
// A member of the dialog, which must outlive it; main thread.
#pragma once

#include "app/GuiTitleMenu.h"
#include "app/HelpCatalog.h"
#include "win/WinDialog.h"
#include "win/WinMenuHandle.h"
#include "win/WinTMenuExecution.h"

namespace AppLayer {

class GuiTMenuExecution : public WinLayer::WinTMenuExecution {
 public:
  explicit GuiTMenuExecution(WinLayer::WinDialog& dialog); // becomes a hook of the dialog
  ~GuiTMenuExecution() override;

  void OnMenuOpening() override;
  void OnSystemCommand(WPARAM command) override;

 private:
  void insertEntry(UINT position, const GuiTitleEntry& entry);
  void moveToPrimaryScreen();
  void selectLanguage(uint32_t id);
  void selectFont(const WinLayer::WinFont& current, const RawString& section);

  WinLayer::WinDialog& dialog_;
  HelpCatalog help_;
  WinLayer::WinMenuHandle helpMenu_;
  RawParameterList languages_;
  WinLayer::WinMenuHandle languageMenu_;
  bool built_ = false;
};

} // namespace AppLayer
